#include "tests/support/other_process.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace support {

namespace {

constexpr int failed = 255;

}  // namespace

OtherProcess::OtherProcess(const std::function<int()>& run) : process_(::fork()) {
    if (process_ != 0) {
        return;
    }
    int code = failed;
    try {
        code = run();
    } catch (...) {
        code = failed;
    }
    endAtOnce(code);
}

OtherProcess::~OtherProcess() { wait(); }

int OtherProcess::wait() {
    const int process = std::exchange(process_, 0);
    if (process <= 0) {
        return failed;
    }
    int status = 0;
    while (::waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : failed;
}

void OtherProcess::endAtOnce(int code) { ::_exit(code); }

}  // namespace support
