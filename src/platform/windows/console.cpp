#include "platform/console.h"

#include <fcntl.h>
#include <io.h>

#include <array>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "platform/windows/wide_text.h"
#include "platform/windows/windows_api.h"

namespace platform {

namespace {

// The system calls the handler on a thread of its own, and hands it nothing.
std::atomic<bool> interrupted = false;

UINT codePageBefore = 0;

DWORD numberOf(StandardStream stream) {
    switch (stream) {
        case StandardStream::Input:
            return STD_INPUT_HANDLE;
        case StandardStream::Output:
            return STD_OUTPUT_HANDLE;
        case StandardStream::Error:
            break;
    }
    return STD_ERROR_HANDLE;
}

HANDLE handleOf(StandardStream stream) { return ::GetStdHandle(numberOf(stream)); }

bool endsTheProcessSoon(DWORD event) {
    return event == CTRL_CLOSE_EVENT || event == CTRL_LOGOFF_EVENT || event == CTRL_SHUTDOWN_EVENT;
}

BOOL WINAPI note(DWORD event) {
    if (interrupted.exchange(true)) {
        return FALSE;
    }
    if (endsTheProcessSoon(event)) {
        // The system ends the process when this returns, or some seconds later.
        ::Sleep(INFINITE);
    }
    return TRUE;
}

void restoreCodePage() { ::SetConsoleOutputCP(codePageBefore); }

/// Texts are UTF-8. The console goes on after the program, so it gets its code page back.
void makeConsoleUtf8() {
    codePageBefore = ::GetConsoleOutputCP();
    if (codePageBefore != 0 && codePageBefore != CP_UTF8 &&
        ::SetConsoleOutputCP(CP_UTF8) != FALSE) {
        std::atexit(restoreCodePage);
    }
}

/// Lets the console obey the escape sequences of the progress line.
void obeyEscapes(StandardStream stream) {
    DWORD mode = 0;
    const HANDLE console = handleOf(stream);
    if (::GetConsoleMode(console, &mode) != FALSE) {
        ::SetConsoleMode(console,
                         mode | ENABLE_PROCESSED_OUTPUT | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
    }
}

struct FreeLocally {
    void operator()(wchar_t** memory) const { ::LocalFree(memory); }
};

}  // namespace

std::vector<std::string> programArguments([[maybe_unused]] int count,
                                          [[maybe_unused]] char** arguments) {
    int wideCount = 0;
    const std::unique_ptr<wchar_t*, FreeLocally> wide(
        ::CommandLineToArgvW(::GetCommandLineW(), &wideCount));
    std::vector<std::string> texts;
    for (int i = 1; wide && i < wideCount; ++i) {
        texts.push_back(windows::utf8Text(wide.get()[i]));
    }
    return texts;
}

bool isTerminal(StandardStream stream) {
    DWORD mode = 0;
    return ::GetConsoleMode(handleOf(stream), &mode) != FALSE;
}

int terminalColumns() {
    constexpr int usual = 80;
    CONSOLE_SCREEN_BUFFER_INFO facts{};
    const bool known =
        ::GetConsoleScreenBufferInfo(handleOf(StandardStream::Error), &facts) != FALSE;
    const int columns = facts.srWindow.Right - facts.srWindow.Left + 1;
    return known && columns > 0 ? columns : usual;
}

void prepareStandardStreams() {
    makeConsoleUtf8();
    obeyEscapes(StandardStream::Output);
    obeyEscapes(StandardStream::Error);
    // Results are the same bytes on every machine.
    for (std::FILE* const stream : {stdin, stdout, stderr}) {
        ::_setmode(::_fileno(stream), _O_BINARY);
    }
}

void watchInterruptions() {
    interrupted = false;
    ::SetConsoleCtrlHandler(note, TRUE);
}

bool wasInterrupted() { return interrupted; }

}  // namespace platform
