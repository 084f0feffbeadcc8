// Any bytes as a query line: read, changed by the window's edits, run on a tiny index, and the
// whole line run within the hits of its first half.

#include <cstdint>
#include <string>

#include "search/completion.h"
#include "search/highlight.h"
#include "search/query_edit.h"
#include "tests/search/search_fixture.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const auto index = support::goldenIndex();
    const std::string line(reinterpret_cast<const char*>(data), size);
    search::SearchRun half(index, search::parseQuery(line.substr(0, size / 2), golden::now()));
    half.run(search::Budget::unlimited());
    search::SearchRun within(index, search::parseQuery(line, golden::now()), half);
    search::SearchRun anew(index, search::parseQuery(line, golden::now()));
    within.run(search::Budget::unlimited());
    anew.run(search::Budget::unlimited());
    if (within.found() != anew.found()) {
        __builtin_trap();
    }
    const search::Highlighter highlighter(anew.query());
    for (const search::Row row : anew.hits()) {
        highlighter.inName(index->name(row));
    }
    search::lineWith(line, "ext:jpg");
    search::lineWithout(line, "ext:jpg");
    search::completionsAt(*index, line, size, 10);
    return 0;
}
