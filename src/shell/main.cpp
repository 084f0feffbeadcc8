#include "base/program_state.h"
#include "jet/engine.h"
#include "platform/platform.h"
#include "shell/application.h"
#include "shell/desktop.h"
#include "shell/failure_boundary.h"
#include "shell/window_message_box.h"

int main(int argc, char** argv) {
    shell::Application application(argc, argv);
    shell::WindowMessageBox messages;
    shell::FailureBoundary boundary(messages);
    int result = 1;
    boundary.run([&] {
        const std::unique_ptr<platform::Platform> machine = platform::createPlatform();
        jet::Engine engine(machine->files());
        base::ProgramState state;
        shell::SystemFileDialogs fileDialogs;
        shell::Desktop desktop({state, *machine, engine, messages, fileDialogs, boundary,
                                [] { QCoreApplication::exit(); }});
        application.setBoundary(&boundary);
        desktop.showSplash();
        result = shell::Application::exec();
    });
    return result;
}
