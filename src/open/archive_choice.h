#pragma once

#include <cstdint>
#include <functional>

#include "base/archive_location.h"
#include "open/open_commands.h"

namespace base {
class MessageBox;
struct ProgramState;
}  // namespace base
namespace platform {
class PrivateProfile;
class ShellServices;
}  // namespace platform

namespace open {

/// Creates an empty archive; true when that is done. A failure counts as false.
using ArchiveCreator = std::function<bool(const base::ArchiveLocation&)>;

/// What happens when the user chooses an archive: the current archive and the recent ones of
/// base::ProgramState change, the settings are written, and the commands are run in their order.
/// Knows no window. Failures that are not named here pass to the caller and end the operation where
/// it stands.
class ArchiveChoice {
  public:
    /// Rows of the recent list: the recent archives, and behind them the current one.
    static constexpr int rowCount = 6;

    /// All must outlive this.
    ArchiveChoice(base::ProgramState& state, platform::ShellServices& shell,
                  platform::PrivateProfile& profile, base::MessageBox& messages,
                  ArchiveCreator createArchive, OpenCommands commands);

    /// Reads the current archive and the recent ones from the settings file.
    void loadSettings();
    /// Where a file dialog starts: the program's folder.
    std::string dialogFolder() const;
    base::ArchiveLocation currentArchive() const;
    /// The archive in a row of the recent list, 1 to rowCount.
    base::ArchiveLocation row(int position) const;

    /// Opens the recent archive of that number by exchanging it with the current one, or the
    /// current one again where the number is that of no recent archive.
    void openRecent(std::int16_t recentIndex);
    /// Makes `archive` the current one, whatever it is. The recent archives stay.
    void openExisting(const base::ArchiveLocation& archive);
    /// Creates `archive` and makes it the current one. Asks first where a file is in its place, and
    /// does nothing unless that may be erased. When the creation fails this is said, and the
    /// archive is the current one nevertheless.
    void createNew(const base::ArchiveLocation& archive);
    /// From now on no archive is open. The settings file still knows the one that was.
    void closeArchive();

    const OpenCommands& commands() const { return commands_; }

  private:
    void setCurrent(const base::ArchiveLocation& archive);
    void announceCurrent();
    void collectKeywords();
    bool makeRoom(const base::ArchiveLocation& archive);
    bool tryCreate(const base::ArchiveLocation& archive);

    base::ProgramState& state_;
    platform::ShellServices& shell_;
    platform::PrivateProfile& profile_;
    base::MessageBox& messages_;
    ArchiveCreator createArchive_;
    OpenCommands commands_;
};

}  // namespace open
