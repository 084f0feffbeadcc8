#include "tests/support/other_process.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

namespace support {

namespace {

constexpr int failed = 255;

}  // namespace

class OtherProcess::Running {
  public:
    explicit Running(std::vector<std::string> command) {
        std::vector<char*> arguments;
        for (std::string& argument : command) {
            arguments.push_back(argument.data());
        }
        arguments.push_back(nullptr);
        if (::posix_spawn(&process_, arguments[0], nullptr, nullptr, arguments.data(), environ) !=
            0) {
            process_ = 0;
        }
    }
    int wait() const {
        if (process_ == 0) {
            return failed;
        }
        int status = 0;
        while (::waitpid(process_, &status, 0) < 0 && errno == EINTR) {
        }
        return WIFEXITED(status) ? WEXITSTATUS(status) : failed;
    }

  private:
    pid_t process_ = 0;
};

OtherProcess::OtherProcess(const std::vector<std::string>& command)
    : running_(std::make_unique<Running>(command)) {}

OtherProcess::~OtherProcess() { wait(); }

int OtherProcess::wait() {
    const auto running = std::move(running_);
    return running ? running->wait() : failed;
}

}  // namespace support
