#pragma once

#include <memory>
#include <string>
#include <vector>

#include "search/index_builder.h"
#include "search/query_parser.h"
#include "search/search_run.h"
#include "tests/search/golden_archive.h"

namespace support {

/// An index of these entries, without an archive; the n-th stands in slot n of page 0.
inline std::shared_ptr<const search::Index> indexOf(
    const std::vector<base::ScanEntry>& entries, const std::vector<base::MediaInfo>& media = {}) {
    search::IndexBuilder builder;
    for (const base::MediaInfo& medium : media) {
        builder.addMedium(medium);
    }
    for (std::size_t i = 0; i < entries.size(); ++i) {
        builder.addEntry(entries[i],
                         {static_cast<std::uint32_t>(i / 100), static_cast<std::uint8_t>(i % 100)});
    }
    return builder.build();
}

inline std::shared_ptr<const search::Index> goldenIndex() {
    std::vector<base::ScanEntry> entries;
    for (const golden::Entry& entry : golden::entries()) {
        entries.push_back(golden::scanEntry(entry));
    }
    return indexOf(entries, golden::media());
}

inline std::string keyOf(search::Row row) { return std::string(golden::entries()[row].key); }

inline std::vector<std::string> wordsOf(std::string_view text) {
    std::vector<std::string> words;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find(' ', start), text.size());
        if (end > start) {
            words.emplace_back(text.substr(start, end - start));
        }
        start = end + 1;
    }
    return words;
}

}  // namespace support
