#pragma once

#include <string>

namespace base {

/// One known keyword or note.
struct KeywordEntry {
    std::string text;    ///< exactly as found or typed
    std::string source;  ///< "archive": collected from an archive; "current": typed in this run

    friend bool operator==(const KeywordEntry&, const KeywordEntry&) = default;
};

}  // namespace base
