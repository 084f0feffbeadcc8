#pragma once

#include <string>

#include "base/program_state.h"

namespace platform {
class PrivateProfile;
class ShellServices;
}  // namespace platform

// Module ini: reads the settings file, in which the program remembers the current archive and the
// five recent ones. Called when the open-archive window is prepared. Fills the archive locations of
// the program's state and leaves the file alone.

namespace settings {

/// The settings file of the program: "settings", "vdln.ini" below the program folder, with the
/// machine's own separator. Worked out anew at every call, as the program folder may be moved.
std::string settingsPath(platform::ShellServices& shell);

/// Sets the current archive and the five recent ones to what the settings file says; what it does
/// not say is empty afterwards. A missing file is like one without keys.
void loadSettings(base::ProgramState& state, platform::ShellServices& shell,
                  platform::PrivateProfile& profile);

}  // namespace settings
