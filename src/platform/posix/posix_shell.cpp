#include "platform/posix/posix_shell.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "platform/posix/system_failure.h"

namespace platform::posix {

namespace {

constexpr const char* ownExecutable = "/proc/self/exe";

bool isWebAddress(std::string_view address) {
    return address.starts_with("http://") || address.starts_with("https://");
}

/// In the child between fork and exec: only calls that a forked process may make.
[[noreturn]] void becomeBrowser(const char* address) {
    ::setsid();
    // The second fork gives the browser to the system's first process, so that none is left to wait
    // for.
    if (::fork() != 0) {
        ::_exit(0);
    }
    const int nowhere = ::open("/dev/null", O_RDWR);
    for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        ::dup2(nowhere, standard);
    }
    ::execlp("xdg-open", "xdg-open", address, static_cast<char*>(nullptr));
    ::_exit(127);
}

}  // namespace

std::string PosixShell::programFolder() {
    std::error_code error;
    const std::filesystem::path executable = std::filesystem::read_symlink(ownExecutable, error);
    if (error) {
        failWith(ownExecutable, error.value());
    }
    return executable.parent_path().string();
}

void PosixShell::openWebPage(const std::string& address) {
    if (!isWebAddress(address)) {
        return;
    }
    const pid_t child = ::fork();
    if (child == 0) {
        becomeBrowser(address.c_str());
    }
    if (child > 0) {
        while (::waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
        }
    }
}

}  // namespace platform::posix
