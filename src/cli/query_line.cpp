#include "cli/query_line.h"

#include <CLI/CLI.hpp>

#include "base/archive_location.h"
#include "base/failure.h"
#include "cli/context.h"
#include "cli/messages.h"
#include "platform/clock.h"
#include "platform/platform.h"
#include "search/copies.h"
#include "search/index_loader.h"
#include "search/query_parser.h"
#include "search/search_run.h"

namespace cli {
namespace {

search::LocalTime localNow(Context& context) {
    const platform::SystemTime now = context.platform.clock().localNow();
    return search::localTime(
        {now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond});
}

}  // namespace

void QueryLine::addTo(CLI::App& app, Needed needed) {
    app.add_option("QUERY", words_,
                   "What to look for, as in the search window; before a word that begins with -, "
                   "write --")
        ->required(needed == Needed::Yes)
        ->type_name("");
}

search::Query QueryLine::read(Context& context) const {
    std::string line;
    for (const std::string& word : words_) {
        line += (line.empty() ? "" : " ") + word;
    }
    search::Query query = search::parseQuery(line, localNow(context));
    for (const search::Notice& notice : query.notices) {
        if (notice.kind == search::Notice::Kind::Invalid) {
            throw base::InvalidArgumentFailure("query: " + notice.text);
        }
        context.messages.report("query: " + notice.text);
    }
    return query;
}

std::shared_ptr<const search::Index> readIndex(Context& context, const std::string& archive) {
    return search::loadIndex(context.engine, base::splitArchivePath(archive));
}

std::vector<search::Row> findRows(const std::shared_ptr<const search::Index>& index,
                                  const search::Query& query, bool needsCopies) {
    if (needsCopies) {
        index->copies().finish();
    }
    return search::findRows(index, query);
}

}  // namespace cli
