#pragma once

#include <istream>
#include <ostream>
#include <string>

namespace jet {
class Engine;
}
namespace platform {
class Platform;
}

namespace cli {

class Interruption;
class Messages;

/// All that a command has to do with the outside. main() builds it; a test builds another. The
/// references outlive every command.
struct Context {
    platform::Platform& platform;
    jet::Engine& engine;
    std::istream& in;
    std::ostream& out;   ///< results
    Messages& messages;  ///< all else that is to be read
    Interruption& interruption;
    bool inIsTerminal = false;
    bool outIsTerminal = false;
    std::string version;
};

}  // namespace cli
