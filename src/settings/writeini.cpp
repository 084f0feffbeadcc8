#include "settings/writeini.h"

#include <exception>

#include "base/message_box.h"
#include "platform/private_profile.h"
#include "platform/shell_services.h"
#include "settings/ini.h"
#include "settings/settings_keys.h"

namespace settings {

namespace {

void writeLocations(base::ProgramState& state, platform::ShellServices& shell,
                    platform::PrivateProfile& profile) {
    state.settingsPath = settingsPath(shell);
    const auto write = [&](std::string_view key, const base::ArchiveLocation& location) {
        // Whether the platform managed to write does not matter: the next key may still go in.
        (void)profile.writeString(archivesSection, key, location.fullPath(), state.settingsPath);
    };
    write(currentKey, state.currentArchive());
    for (std::size_t number = 1; number < recentKeys.size(); ++number) {
        write(recentKeys[number], state.recentArchives[number]);
    }
}

}  // namespace

void saveSettings(base::ProgramState& state, platform::ShellServices& shell,
                  platform::PrivateProfile& profile, base::MessageBox& messages) {
    try {
        writeLocations(state, shell, profile);
    } catch (const std::exception&) {
        messages.show({"Error with Settings File",
                       "There is an error writing to your settings file.  Reinstall program",
                       base::MessageButtons::Ok});
    }
}

}  // namespace settings
