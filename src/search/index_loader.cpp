#include "search/index_loader.h"

#include <algorithm>

#include "archive/media_rows.h"

namespace search {
namespace {

/// Entries between two looks at the budget.
constexpr int entriesAtOnce = 1000;
/// The number of rows that a file claims is a guess until they have been read.
constexpr std::int64_t mostReserved = 16'000'000;

}  // namespace

IndexLoader::IndexLoader(jet::Engine& engine, const base::ArchiveLocation& archive)
    : table_(engine, archive, "main", jet::LockType::ReadOnly), reader_(table_.rows()) {
    readMedia(engine, archive);
    expected_ = std::max<std::int64_t>(0, table_.rows().recordCount());
    builder_.reserve(static_cast<std::size_t>(std::min(expected_, mostReserved)));
}

void IndexLoader::readMedia(jet::Engine& engine, const base::ArchiveLocation& archive) {
    archive::ArchiveTable table(engine, archive, "media", jet::LockType::ReadOnly);
    const archive::MediaFields fields(table.rows());
    for (; !table.rows().endOfFile(); table.rows().moveNext()) {
        builder_.addMedium(archive::readMedia(table.rows(), fields));
    }
    table.close();
}

bool IndexLoader::run(const Budget& budget) {
    if (index_) {
        return true;
    }
    jet::Recordset& rows = table_.rows();
    while (!rows.endOfFile()) {
        for (int i = 0; i < entriesAtOnce && !rows.endOfFile(); ++i) {
            reader_.read(entry_);
            builder_.addEntry(entry_, rows.place());
            rows.moveNext();
        }
        done_ = builder_.count();
        if (budget.isSpent()) {
            return false;
        }
    }
    table_.close();
    expected_ = done_;
    index_ = builder_.build();
    return true;
}

std::shared_ptr<const Index> loadIndex(jet::Engine& engine, const base::ArchiveLocation& archive) {
    IndexLoader loader(engine, archive);
    loader.run(Budget::unlimited());
    return loader.takeIndex();
}

}  // namespace search
