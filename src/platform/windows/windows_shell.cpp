#include "platform/windows/windows_shell.h"

#include <string_view>

#include "platform/windows/system_failure.h"
#include "platform/windows/wide_text.h"
#include "platform/windows/windows_api.h"

namespace platform::windows {

namespace {

bool isWebAddress(std::string_view address) {
    return address.starts_with("http://") || address.starts_with("https://");
}

std::wstring executablePath() {
    constexpr std::size_t longestPath = 32768;
    std::wstring path(longestPath, L'\0');
    const DWORD length =
        ::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    if (length == 0 || length == path.size()) {
        failWith("the program's own path", ::GetLastError());
    }
    path.resize(length);
    return path;
}

}  // namespace

std::string WindowsShell::programFolder() {
    const std::wstring path = executablePath();
    return utf8Text(std::wstring_view(path).substr(0, path.find_last_of(L'\\')));
}

void WindowsShell::openWebPage(const std::string& address) {
    if (isWebAddress(address)) {
        ::ShellExecuteW(nullptr, L"open", wideText(address).c_str(), nullptr, nullptr,
                        SW_SHOWNORMAL);
    }
}

}  // namespace platform::windows
