#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <exception>
#include <functional>

namespace support {

/// What a child process can report besides failure.
enum class ChildResult : int { Passed = 0, Failed = 1, Refused = 77 };

/// Runs `work` in a process of its own, for what would change the test's own process for good (its
/// user, its mounts), and gives its result. Failed checks have to be printed by the work itself.
inline ChildResult inChildProcess(const std::function<ChildResult()>& work) {
    std::fflush(nullptr);
    const pid_t child = ::fork();
    if (child == 0) {
        ChildResult result = ChildResult::Failed;
        try {
            result = work();
        } catch (const std::exception& failure) {
            std::fprintf(stderr, "child: %s\n", failure.what());
        }
        std::fflush(nullptr);
        ::_exit(static_cast<int>(result));
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? static_cast<ChildResult>(WEXITSTATUS(status)) : ChildResult::Failed;
}

/// Gives up the rights of the superuser for good; true when the process has none now.
inline bool becomeOrdinaryUser() {
    constexpr uid_t nobody = 65534;
    return ::geteuid() != 0 || (::setgid(nobody) == 0 && ::setuid(nobody) == 0);
}

}  // namespace support
