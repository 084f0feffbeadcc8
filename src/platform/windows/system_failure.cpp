#include "platform/windows/system_failure.h"

#include <array>

#include "base/failure.h"
#include "platform/windows/wide_text.h"

namespace platform::windows {

namespace {

std::wstring wordsFor(DWORD errorNumber, DWORD language) {
    std::array<wchar_t, 512> words;
    const DWORD length = ::FormatMessageW(
        FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK,
        nullptr, errorNumber, language, words.data(), static_cast<DWORD>(words.size()), nullptr);
    return {words.data(), length};
}

}  // namespace

std::string systemReason(DWORD errorNumber) {
    std::wstring words = wordsFor(errorNumber, MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US));
    if (words.empty()) {
        words = wordsFor(errorNumber, 0);
    }
    words.erase(words.find_last_not_of(L". \r\n") + 1);
    return words.empty() ? "error " + std::to_string(errorNumber) : utf8Text(words);
}

void failWith(const std::string& subject, DWORD errorNumber) {
    throw base::FileFailure(subject + ": " + systemReason(errorNumber));
}

}  // namespace platform::windows
