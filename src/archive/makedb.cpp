#include "archive/makedb.h"

#include <string_view>

#include "archive/schema.h"
#include "jet/database.h"

namespace archive {
namespace {

/// General sort order, code page 1252.
constexpr std::string_view archiveLocale = ";LANGID=0x0409;CP=1252;COUNTRY=0";

}  // namespace

bool createArchive(jet::Engine& engine, const base::ArchiveLocation& archive,
                   jet::FileFormat format) {
    jet::CreateOptions options;
    options.format = format;
    jet::Database database =
        jet::Database::create(engine, archive.fullPath(), archiveLocale, options);
    database.append(mainTable());
    database.append(mediaTable());
    database.close();
    return true;
}

}  // namespace archive
