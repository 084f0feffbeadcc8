#pragma once

#include <cstdint>
#include <string>

#include "archive/data.h"
#include "base/media_info.h"
#include "base/numbered_list.h"
#include "base/program_state.h"

namespace base {
class MessageBox;
}
namespace jet {
class Engine;
}

namespace save {

/// What one save window knows and does: the media of the current archive, read when the window is
/// made, and the two ways of storing the last scan. Knows no window. Failures pass; what was stored
/// or deleted before one stays so.
class SaveSession {
  public:
    /// All must outlive this.
    SaveSession(base::ProgramState& state, jet::Engine& engine, archive::Data& data,
                base::MessageBox& messages)
        : state_(state), engine_(engine), data_(data), messages_(messages) {}

    /// How many entries there are to store; 0 as long as nothing was scanned.
    std::int64_t entryCount() const;
    std::string scannedMediaText() const;

    bool hasCurrentArchive() const { return !state_.archiveName.empty(); }
    std::string currentArchiveText() const;
    static std::string noCurrentArchiveText() {
        return "No Current Archive.  You need to open one.";
    }

    /// Reads table `media` into saveMediaList. The first row cuts the list; a table without rows
    /// leaves it as it was.
    void initMedia();
    /// Number of the last medium. SubscriptFailure when no medium was ever read.
    std::int64_t lastMedium() const { return saveMediaList_.upperBound(); }
    /// The line that stands for medium `number`, from 1.
    std::string mediumText(std::int64_t number) const;

    /// Stores the scan as a new medium. Without an archive, this and saveUpdate() fail.
    void saveNew(archive::SaveProgress& progress);
    /// Lets the scan take the place of medium `number`. When the archive holds something else for
    /// that medium by now, the user is asked; "no" spares the row of the medium, and its records
    /// are replaced nevertheless.
    void saveUpdate(std::int64_t number, archive::SaveProgress& progress);
    /// Says that an update needs a medium to be selected.
    void requireSelection();

  private:
    /// EngineFailure (NotFound) when no archive is open.
    void requireArchive() const;

    base::ProgramState& state_;
    jet::Engine& engine_;
    archive::Data& data_;
    base::MessageBox& messages_;
    base::NumberedList<base::MediaInfo> saveMediaList_;
};

}  // namespace save
