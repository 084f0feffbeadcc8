#include <iostream>
#include <memory>
#include <string>

#include "cli/context.h"
#include "cli/interruption.h"
#include "cli/messages.h"
#include "cli/program.h"
#include "jet/engine.h"
#include "platform/console.h"
#include "platform/platform.h"

namespace {

/// The interruptions that the machine tells of.
class ConsoleInterruption : public cli::Interruption {
  public:
    void watch() override { platform::watchInterruptions(); }
    bool isRequested() const override { return platform::wasInterrupted(); }
};

}  // namespace

int main(int count, char** arguments) {
    using platform::StandardStream;
    platform::prepareStandardStreams();
    std::ios::sync_with_stdio(false);
    // Messages must not wait for results, nor results be written out before each message.
    std::cin.tie(nullptr);
    std::cerr.tie(nullptr);

    const std::unique_ptr<platform::Platform> machine = platform::createPlatform();
    jet::Engine engine(machine->files());
    cli::Messages messages(std::cerr, platform::isTerminal(StandardStream::Error),
                           platform::terminalColumns);
    ConsoleInterruption interruption;
    cli::Context context{*machine,
                         engine,
                         std::cin,
                         std::cout,
                         messages,
                         interruption,
                         platform::isTerminal(StandardStream::Input),
                         platform::isTerminal(StandardStream::Output),
                         VERDOLIN_VERSION};
    return static_cast<int>(cli::runProgram(platform::programArguments(count, arguments), context));
}
