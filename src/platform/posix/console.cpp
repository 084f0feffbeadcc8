#include "platform/console.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>

namespace platform {

namespace {

// A handler can reach nothing else.
volatile std::sig_atomic_t interrupted = 0;

constexpr std::array<int, 3> interruptions{SIGINT, SIGTERM, SIGHUP};

int numberOf(StandardStream stream) {
    switch (stream) {
        case StandardStream::Input:
            return STDIN_FILENO;
        case StandardStream::Output:
            return STDOUT_FILENO;
        case StandardStream::Error:
            break;
    }
    return STDERR_FILENO;
}

void setHandler(int signal, void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    // Interrupted calls are taken up again: the note is looked at between them.
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    ::sigaction(signal, &action, nullptr);
}

bool isIgnored(int signal) {
    struct sigaction action {};
    return ::sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

void note(int /*signal*/) {
    interrupted = 1;
    for (const int signal : interruptions) {
        setHandler(signal, SIG_DFL);
    }
}

}  // namespace

std::vector<std::string> programArguments(int count, char** arguments) {
    return {arguments + (count > 0 ? 1 : 0), arguments + count};
}

bool isTerminal(StandardStream stream) { return ::isatty(numberOf(stream)) == 1; }

int terminalColumns() {
    constexpr int usual = 80;
    struct winsize size {};
    const bool known = ::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return known ? size.ws_col : usual;
}

void prepareStandardStreams() {
    for (int number = STDIN_FILENO; number <= STDERR_FILENO; ++number) {
        if (::fcntl(number, F_GETFD) < 0 && errno == EBADF) {
            // The lowest free number is the closed one. For reading only, so that output that would
            // be lost is a failure.
            [[maybe_unused]] const int opened = ::open("/dev/null", O_RDONLY);
        }
    }
    setHandler(SIGPIPE, SIG_IGN);
}

void watchInterruptions() {
    interrupted = 0;
    for (const int signal : interruptions) {
        // What nohup has the process ignore stays ignored. An interruption counts in any case: a
        // shell without a terminal has its background jobs ignore it, and yet it may be sent.
        if (signal != SIGHUP || !isIgnored(signal)) {
            setHandler(signal, note);
        }
    }
}

bool wasInterrupted() { return interrupted != 0; }

}  // namespace platform
