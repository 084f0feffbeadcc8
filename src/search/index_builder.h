#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include "base/media_info.h"
#include "base/scan_entry.h"
#include "jet/recordset.h"
#include "search/index.h"

namespace search {

/// Puts an index together: all media first, then the entries, then build(). Also what a test takes
/// that needs no archive.
class IndexBuilder {
  public:
    IndexBuilder();

    /// Of media with the same id the first counts.
    void addMedium(const base::MediaInfo& medium);
    /// Room for so many entries, given once and only to save time.
    void reserve(std::size_t entries);
    /// base::OverflowFailure when all names together pass 4 GiB.
    void addEntry(const base::ScanEntry& entry, jet::RowPlace place);
    Row count() const { return index_->size(); }
    /// Nothing is added afterwards.
    std::shared_ptr<Index> build();

  private:
    void addName(const base::ScanEntry& entry);
    void addPath(const std::string& path);
    void addKind(const base::ScanEntry& entry);
    void addDates(const base::ScanEntry& entry);
    void addExtension(bool isFolder);
    void addAnnotation(const base::ScanEntry& entry);
    void addMediumOf(std::int32_t mediaId);
    void appendFoldedTo(TextBlock& block, std::string_view text);
    void collectKeywords();

    std::shared_ptr<Index> index_;
    std::unordered_map<std::int32_t, std::uint32_t> mediumPositions_;
    std::unordered_map<std::string, Index::AnnotationId> annotationIds_;
    std::string folded_;
};

}  // namespace search
