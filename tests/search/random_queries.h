#pragma once

#include <array>
#include <random>
#include <string>
#include <vector>

#include "base/scan_entry.h"
#include "tests/search/golden_archive.h"

namespace support {

/// Archives and query lines by chance, out of few enough parts that they meet.
class RandomQueries {
  public:
    explicit RandomQueries(std::uint64_t seed) : random_(seed) {}

    std::size_t below(std::size_t count) {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(random_);
    }
    template <typename List>
    const auto& oneOf(const List& list) {
        return list[below(list.size())];
    }

    std::vector<base::ScanEntry> entries(std::size_t count) {
        std::vector<base::ScanEntry> result;
        for (std::size_t i = 0; i < count; ++i) {
            base::ScanEntry entry = golden::scanEntry(oneOf(golden::entries()));
            if (below(2) == 0) {
                entry.FileName = std::string(oneOf(words)) + std::string(oneOf(words)) +
                                 std::string(oneOf(ends));
            }
            if (below(4) == 0) {
                entry.keywords = oneOf(words);
                entry.Notes2 = below(2) == 0 ? std::string(oneOf(words)) : std::string();
            }
            if (below(3) == 0) {
                entry.path += "\\" + std::string(oneOf(words));
            }
            result.push_back(std::move(entry));
        }
        return result;
    }

    std::string line(int depth = 0) {
        std::string result;
        for (std::size_t i = 1 + below(3); i > 0; --i) {
            result += (result.empty() ? "" : below(4) == 0 ? " | " : " ") + term(depth);
        }
        return result;
    }

    std::string garbage() {
        std::string result;
        for (std::size_t i = below(12); i > 0; --i) {
            switch (below(4)) {
                case 0:
                    result += static_cast<char>(below(256));
                    break;
                case 1:
                    result += oneOf(signs);
                    break;
                case 2:
                    result += oneOf(words);
                    break;
                default:
                    result += oneOf(terms);
            }
        }
        return result;
    }

  private:
    std::string term(int depth) {
        const std::string before = below(5) == 0 ? "!" : "";
        if (depth < 3 && below(5) == 0) {
            return before + "(" + line(depth + 1) + ")";
        }
        if (below(2) == 0) {
            return before + std::string(oneOf(terms));
        }
        std::string word = std::string(below(3) == 0 ? oneOf(modifiers) : std::string_view()) +
                           std::string(oneOf(words));
        return before + (below(4) == 0 ? word.substr(0, 1 + below(word.size())) : word);
    }

    static constexpr std::array<std::string_view, 18> words{
        "holiday", "img", "Müller", "straße", "a",  "o",  "photos", "2004", "カ",
        "ガ",      "x",   "été",    "i",      "li", ".t", "doc",    "ss",   "Holi"};
    static constexpr std::array<std::string_view, 6> ends{".jpg", ".JPG", ".txt",
                                                          "",     ".",    ".tar.gz"};
    static constexpr std::array<std::string_view, 12> modifiers{
        "case:",   "accents:", "whole:", "start:",      "end:", "path:",
        "nopath:", "name:",    "kw:",    "case:start:", "dir:", "note:"};
    static constexpr std::array<std::string_view, 16> signs{
        "\"", "(", ")", "|", "!", "-", ":", "*", "?", "..", ";", " ", "\\", "/", ">", "\xFF"};
    static constexpr std::array<std::string_view, 34> terms{
        "ext:jpg",      "ext:jpg;txt",   "size:>1kb",  "size:0",       "size:<3gb",  "size:1..2048",
        "date:2019",    "date:<2004-06", "medium:1",   "medium:2..3",  "only:1",     "missing:2",
        "dup:",         "copies:1",      "copies:>2",  "folder:",      "file:",      "has:kw",
        "has:note",     "depth:1",       "depth:>1",   "len:>20",      "kind:cdrom", "type:video",
        "regex:^[a-m]", "*.jpg",         "img*",       "?o*",          "photos\\",   "scanned:2019",
        "created:2003", "\"am Strand\"", "path:1:\\p", "type:document"};

    std::mt19937_64 random_;
};

}  // namespace support
