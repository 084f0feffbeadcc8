#include "scan/date_text.h"

#include <string_view>

namespace scan {
namespace {

void appendTwoDigits(std::string& text, unsigned number) {
    text.push_back(static_cast<char>('0' + number / 10 % 10));
    text.push_back(static_cast<char>('0' + number % 10));
}

/// A 16-bit year may have a fifth digit.
void appendYear(std::string& text, unsigned year) {
    if (year >= 10000) {
        text.push_back(static_cast<char>('0' + year / 10000));
    }
    appendTwoDigits(text, year / 100);
    appendTwoDigits(text, year);
}

}  // namespace

void setDateText(std::string& text, const platform::SystemTime& time) {
    text.clear();
    appendTwoDigits(text, time.wMonth);
    text.push_back('/');
    appendTwoDigits(text, time.wDay);
    text.push_back('/');
    appendYear(text, time.wYear);
    text.push_back(' ');
    appendTwoDigits(text, time.wHour);
    text.push_back(':');
    appendTwoDigits(text, time.wMinute);
    text.push_back(':');
    appendTwoDigits(text, time.wSecond);
}

std::string dateText(const platform::SystemTime& time) {
    std::string text;
    setDateText(text, time);
    return text;
}

}  // namespace scan
