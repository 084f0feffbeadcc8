#pragma once

#include <string>
#include <vector>

#include "base/numbered_list.h"
#include "base/program_state.h"
#include "keywords/keywords.h"

namespace support {

inline base::ScanEntry entryWith(std::string keywords, std::string notes1 = {},
                                 std::string notes2 = {}) {
    base::ScanEntry entry;
    entry.FileName = "a";
    entry.Folder = "file";
    entry.mediaId = 1;
    entry.keywords = std::move(keywords);
    entry.Notes1 = std::move(notes1);
    entry.Notes2 = std::move(notes2);
    return entry;
}

template <typename Element>
base::NumberedList<Element> listOf(const std::vector<Element>& elements) {
    base::NumberedList<Element> list;
    list.growTo(0);
    list.elements() = elements;
    return list;
}

/// The texts of a known list; none where it was never filled.
inline std::vector<std::string> textsOf(const base::NumberedList<base::KeywordEntry>& list) {
    std::vector<std::string> texts;
    for (const base::KeywordEntry& entry : list.elements()) {
        texts.push_back(entry.text);
    }
    return texts;
}

inline std::vector<std::string> sourcesOf(const base::NumberedList<base::KeywordEntry>& list) {
    std::vector<std::string> sources;
    for (const base::KeywordEntry& entry : list.elements()) {
        sources.push_back(entry.source);
    }
    return sources;
}

/// Known texts as an archive gave them.
inline void know(base::NumberedList<base::KeywordEntry>& list,
                 const std::vector<std::string>& texts) {
    list.growTo(0);
    for (const std::string& text : texts) {
        list.append({text, "archive"});
    }
}

/// The columns of a record list of `rows` rows.
class RecordedColumns : public keywords::RecordColumns {
  public:
    struct Shown {
        std::int64_t position;
        keywords::RecordTexts texts;

        friend bool operator==(const Shown&, const Shown&) = default;
    };

    void showTexts(std::int64_t position, const keywords::RecordTexts& texts) override {
        if (position > rows) {
            throw base::SubscriptFailure("the list has no row " + std::to_string(position));
        }
        shown.push_back({position, texts});
    }

    std::int64_t rows = 100;
    std::vector<Shown> shown;
};

}  // namespace support
