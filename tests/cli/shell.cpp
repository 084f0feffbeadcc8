#include "tests/cli/shell.h"

#include <sys/wait.h>

#include <cstdlib>

namespace support {

ShellResult Shell::run(const std::string& command) {
    // Outside the folder that a test scans.
    TemporaryFolder streams;
    const std::string script = streams.makeFile(
        "script", "VDLN='" VDLN_PATH "'\nLC_ALL=C.UTF-8\nexport VDLN LC_ALL\ncd '" +
                      folder_.path() + "'\n" + command + "\n");
    const std::string line = "sh '" + script + "' >'" + streams.pathOf("out") + "' 2>'" +
                             streams.pathOf("err") + "' </dev/null";
    const int status = std::system(line.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, streams.read("out"), streams.read("err")};
}

}  // namespace support
