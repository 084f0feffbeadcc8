#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include "platform/shell_services.h"

namespace platform {

/// The path of what lies beside the program, one step for each folder and the last for the file,
/// with the machine's own separators. Worked out anew at every call, as the program folder may be
/// moved.
inline std::string programFile(ShellServices& shell,
                               std::initializer_list<std::string_view> steps) {
    std::string path = shell.programFolder();
    for (const std::string_view step : steps) {
        path += shell.pathSeparator();
        path += step;
    }
    return path;
}

}  // namespace platform
