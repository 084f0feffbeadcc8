#include "archive/keyword_list.h"

#include <algorithm>
#include <vector>

#include "base/text.h"

namespace archive {
namespace {

/// As the program joins chosen keywords.
constexpr std::string_view between = ",";

std::string_view trimmed(std::string_view text) {
    while (text.starts_with(' ')) {
        text.remove_prefix(1);
    }
    while (text.ends_with(' ')) {
        text.remove_suffix(1);
    }
    return text;
}

std::vector<std::string_view> listOf(std::string_view keywords) {
    std::vector<std::string_view> list;
    for (std::size_t start = 0; start < keywords.size();) {
        const std::size_t end = std::min(keywords.find(',', start), keywords.size());
        const std::string_view keyword = trimmed(keywords.substr(start, end - start));
        if (!keyword.empty()) {
            list.push_back(keyword);
        }
        start = end + 1;
    }
    return list;
}

bool holds(const std::vector<std::string_view>& list, std::string_view keyword) {
    return std::ranges::any_of(
        list, [&](std::string_view each) { return base::equalIgnoringCase(each, keyword); });
}

}  // namespace

std::string withKeyword(std::string_view keywords, std::string_view keyword) {
    const std::string_view added = trimmed(keyword);
    if (added.empty() || holds(listOf(keywords), added)) {
        return std::string(keywords);
    }
    std::string result(trimmed(keywords));
    result += result.empty() ? "" : between;
    return result += added;
}

std::string withoutKeyword(std::string_view keywords, std::string_view keyword) {
    const std::vector<std::string_view> list = listOf(keywords);
    const std::string_view removed = trimmed(keyword);
    if (!holds(list, removed)) {
        return std::string(keywords);
    }
    std::string result;
    for (const std::string_view each : list) {
        if (!base::equalIgnoringCase(each, removed)) {
            result += result.empty() ? "" : between;
            result += each;
        }
    }
    return result;
}

}  // namespace archive
