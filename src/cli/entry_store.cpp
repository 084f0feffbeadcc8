#include "cli/entry_store.h"

#include <algorithm>

#include "base/failure.h"

namespace cli {
namespace {

constexpr std::int64_t flushMilliseconds = 3000;
constexpr std::int64_t firstFlush = 500;
constexpr std::int64_t flushShare = 8;

}  // namespace

EntryStore::EntryStore(jet::Engine& engine, const base::ArchiveLocation& archive,
                       Observer& observer)
    : table_(engine, archive, "main"),
      writer_(table_.rows()),
      observer_(observer),
      nextFlush_(firstFlush) {
    table_.connection().setFlushPolicy({.rows = 0, .milliseconds = flushMilliseconds});
}

void EntryStore::begin() {
    // The engine makes sure of the archive when a row is begun, and writes none.
    table_.rows().addNew();
    table_.rows().cancelUpdate();
}

std::int64_t EntryStore::store(const base::ScanEntry& entry, scan::SizeFit fit) {
    try {
        writer_.write(entry, entry.mediaId);
    } catch (const base::EngineFailure& failure) {
        if (failure.fault() != base::EngineFault::Value) {
            throw;
        }
        observer_.entryLeftOut(entry, failure.text());
        return count();
    }
    if (fit == scan::SizeFit::Cut) {
        observer_.sizeCut(entry);
    }
    ++(entry.Folder == "folder" ? folders_ : files_);
    flushWhenDue();
    return count();
}

void EntryStore::flushWhenDue() {
    if (count() >= nextFlush_) {
        flush();
        nextFlush_ = count() + std::max(firstFlush, count() / flushShare);
    }
}

}  // namespace cli
