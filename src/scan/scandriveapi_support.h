#pragma once

#include <string>
#include <string_view>

// scandriveapi_support: what the walker needs besides the platform's headers.

namespace scan {

constexpr char pathSeparator = '\\';
/// The file pattern that takes in every name.
constexpr std::string_view matchAll = "*";

/// The part of `text` before its first NUL character; all of it when there is none.
std::string_view stripNulls(std::string_view text);

/// True for the names by which a folder lists itself and the one above it.
bool isDotName(std::string_view name);

/// Names in the order in which they were added, packed into one text: a folder may hold a great
/// many. A name holds no NUL character.
class NameList {
  public:
    void append(std::string_view name);
    bool empty() const { return packed_.empty(); }

    /// Calls `visit` with each name, a std::string_view good for that call.
    template <typename Visit>
    void forEach(Visit visit) const {
        std::string_view rest = packed_;
        while (!rest.empty()) {
            const std::size_t end = rest.find('\0');
            visit(rest.substr(0, end));
            rest.remove_prefix(end + 1);
        }
    }

  private:
    std::string packed_;  // a NUL behind each name
};

}  // namespace scan
