#pragma once

#include "base/program_state.h"

namespace base {
class MessageBox;
}
namespace platform {
class PrivateProfile;
class ShellServices;
}  // namespace platform

// Module writeini: writes the settings file. Called after an archive was created, opened or
// changed. Changes nothing of the program's state but the settings path.

namespace settings {

/// Writes the current archive and the five recent ones, in that order and just as they stand; an
/// empty entry becomes an empty value. A key that the platform fails to write is passed over in
/// silence. Any other failure ends the writing there, keeps the keys already written and shows one
/// message.
void saveSettings(base::ProgramState& state, platform::ShellServices& shell,
                  platform::PrivateProfile& profile, base::MessageBox& messages);

}  // namespace settings
