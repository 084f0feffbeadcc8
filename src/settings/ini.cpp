#include "settings/ini.h"

#include "base/archive_location.h"
#include "platform/private_profile.h"
#include "platform/program_file.h"
#include "settings/settings_keys.h"

namespace settings {

namespace {

base::ArchiveLocation readLocation(platform::PrivateProfile& profile, std::string_view key,
                                   const std::string& path) {
    const std::string value =
        profile.getString(archivesSection, key, missingValue, valueBufferSize, path);
    return value == missingValue ? base::ArchiveLocation{} : base::splitArchivePath(value);
}

}  // namespace

std::string settingsPath(platform::ShellServices& shell) {
    return platform::programFile(shell, {"settings", "vdln.ini"});
}

void loadSettings(base::ProgramState& state, platform::ShellServices& shell,
                  platform::PrivateProfile& profile) {
    state.settingsPath = settingsPath(shell);
    const base::ArchiveLocation current = readLocation(profile, currentKey, state.settingsPath);
    state.archiveFolder = current.folder;
    state.archiveName = current.name;
    for (std::size_t number = 1; number < recentKeys.size(); ++number) {
        state.recentArchives[number] =
            readLocation(profile, recentKeys[number], state.settingsPath);
    }
}

}  // namespace settings
