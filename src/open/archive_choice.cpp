#include "open/archive_choice.h"

#include <exception>
#include <filesystem>
#include <string>
#include <system_error>
#include <utility>

#include "base/failure.h"
#include "base/file_path.h"
#include "base/message_box.h"
#include "base/program_state.h"
#include "open/archive_texts.h"
#include "platform/shell_services.h"
#include "settings/ini.h"
#include "settings/writeini.h"

namespace open {

namespace {

bool isRecent(int position) { return position >= 1 && position <= base::ProgramState::recentCount; }

/// Runs something when a scope ends, also by a failure.
class AtEnd {
  public:
    explicit AtEnd(const std::function<void()>& action) : action_(action) {}
    ~AtEnd() {
        if (action_) {
            action_();
        }
    }
    AtEnd(const AtEnd&) = delete;
    AtEnd& operator=(const AtEnd&) = delete;

  private:
    const std::function<void()>& action_;
};

}  // namespace

ArchiveChoice::ArchiveChoice(base::ProgramState& state, platform::ShellServices& shell,
                             platform::PrivateProfile& profile, base::MessageBox& messages,
                             ArchiveCreator createArchive, OpenCommands commands)
    : state_(state),
      shell_(shell),
      profile_(profile),
      messages_(messages),
      createArchive_(std::move(createArchive)),
      commands_(std::move(commands)) {}

void ArchiveChoice::loadSettings() { settings::loadSettings(state_, shell_, profile_); }

std::string ArchiveChoice::dialogFolder() const { return shell_.programFolder(); }

base::ArchiveLocation ArchiveChoice::currentArchive() const { return state_.currentArchive(); }

base::ArchiveLocation ArchiveChoice::row(int position) const {
    return isRecent(position) ? state_.recentArchives[static_cast<std::size_t>(position)]
                              : state_.currentArchive();
}

void ArchiveChoice::openRecent(std::int16_t recentIndex) {
    if (isRecent(recentIndex)) {
        base::ArchiveLocation& recent =
            state_.recentArchives[static_cast<std::size_t>(recentIndex)];
        setCurrent(std::exchange(recent, state_.currentArchive()));
    }
    announceCurrent();
    collectKeywords();
}

void ArchiveChoice::openExisting(const base::ArchiveLocation& archive) {
    setCurrent(archive);
    announceCurrent();
    collectKeywords();
}

void ArchiveChoice::createNew(const base::ArchiveLocation& archive) {
    if (!makeRoom(archive)) {
        return;
    }
    setCurrent(archive);
    if (tryCreate(archive)) {
        announceCurrent();
    } else {
        messages_.show(creationFailedMessage());
    }
}

void ArchiveChoice::closeArchive() { setCurrent({}); }

void ArchiveChoice::setCurrent(const base::ArchiveLocation& archive) {
    state_.archiveName = archive.name;
    state_.archiveFolder = archive.folder;
}

void ArchiveChoice::announceCurrent() {
    settings::saveSettings(state_, shell_, profile_, messages_);
    if (commands_.setMainCaption) {
        commands_.setMainCaption(mainCaption(state_.archiveName));
    }
}

void ArchiveChoice::collectKeywords() {
    const AtEnd hideProgress(commands_.hideProgress);
    if (commands_.initKeywords) {
        commands_.initKeywords();
    }
}

bool ArchiveChoice::makeRoom(const base::ArchiveLocation& archive) {
    const std::filesystem::path file = base::filePath(archive.fullPath());
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)) {
        return true;
    }
    if (messages_.show(eraseQuestion()) != base::MessageAnswer::Yes) {
        return false;
    }
    // That somebody else has deleted it meanwhile is as good.
    std::filesystem::remove(file, error);
    if (error) {
        throw base::FileFailure(archive.fullPath() +
                                ": the old archive cannot be erased: " + error.message());
    }
    return true;
}

bool ArchiveChoice::tryCreate(const base::ArchiveLocation& archive) {
    try {
        return createArchive_(archive);
    } catch (const std::exception&) {
        return false;
    }
}

}  // namespace open
