#include <array>
#include <cstdio>
#include <stdexcept>
#include <string>

#include "tests/jet/mdb_tools.h"

namespace jet_test {

std::string outputOf(const std::string& command) {
    FILE* const pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) {
        throw std::runtime_error("cannot run " + command);
    }
    std::string output;
    std::array<char, 65536> buffer;
    while (const std::size_t got = fread(buffer.data(), 1, buffer.size(), pipe)) {
        output.append(buffer.data(), got);
    }
    if (pclose(pipe) != 0) {
        throw std::runtime_error("this failed: " + command);
    }
    return output;
}

}  // namespace jet_test
