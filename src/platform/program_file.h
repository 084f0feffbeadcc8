#pragma once

#include <string>
#include <string_view>

#include "platform/shell_services.h"

namespace shell {

/// A file in a folder beside the program, with the machine's own separators. Worked out anew at
/// every call, as the program folder may be moved.
inline std::string programFile(platform::ShellServices& shell, std::string_view folder,
                               std::string_view name) {
    const char separator = shell.pathSeparator();
    return shell.programFolder() + separator + std::string(folder) + separator + std::string(name);
}

}  // namespace shell
