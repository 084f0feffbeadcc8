#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "base/media_info.h"
#include "base/scan_entry.h"
#include "jet/recordset.h"
#include "search/local_time.h"
#include "search/text_block.h"
#include "search/text_pool.h"

namespace search {

class CopyTable;

/// An entry of the index: its number, counted from 0 in the order of table `main`.
using Row = std::uint32_t;

/// Both tables of an archive, read once into columns, in the form in which they are searched. An
/// IndexLoader makes it; from then on it never changes, so that any number of threads may ask it.
/// What happens to the archive afterwards is not seen: load anew.
///
/// Texts are UTF-8 and valid as long as the index. "Folded" is the form of search/text_fold.h.
class Index {
  public:
    using PathId = TextPool::Id;
    using TypeId = TextPool::Id;
    using ExtensionId = TextPool::Id;
    using AnnotationId = std::uint32_t;

    /// A byte that no folded text holds. It stands behind every folded name and folded path in
    /// their blocks, so that nothing is found across the border of two.
    static constexpr char border = '\xFF';

    Index();
    Index(const Index&) = delete;
    Index& operator=(const Index&) = delete;
    ~Index();

    /// Number of entries.
    Row size() const { return static_cast<Row>(sizes_.size()); }

    // The name.
    std::string_view name(Row row) const { return slice(names_, nameStarts_, row); }
    std::string_view foldedName(Row row) const {
        return foldedNames_.view().substr(foldedStarts_[row],
                                          foldedStarts_[row + 1] - foldedStarts_[row] - 1);
    }
    /// All folded names, each followed by `border`, and where that of a row begins; one start more
    /// than there are rows.
    std::string_view foldedNameBlock() const { return foldedNames_.view(); }
    const std::vector<std::uint32_t>& foldedNameStarts() const { return foldedStarts_; }

    // The path of the folder that holds the entry, as stored: "7:\photos". Each is kept once.
    PathId pathId(Row row) const { return pathIds_[row]; }
    std::string_view path(Row row) const { return paths_[pathIds_[row]]; }
    PathId pathCount() const { return paths_.size(); }
    std::string_view pathText(PathId path) const { return paths_[path]; }
    std::string_view foldedPath(PathId path) const {
        return foldedPaths_.view().substr(
            foldedPathStarts_[path], foldedPathStarts_[path + 1] - foldedPathStarts_[path] - 1);
    }
    /// The folded path without the medium at its head: "\photos".
    std::string_view foldedPathOnMedium(PathId path) const;
    std::string_view foldedPathBlock() const { return foldedPaths_.view(); }
    const std::vector<std::uint32_t>& foldedPathStarts() const { return foldedPathStarts_; }
    /// Path, "\" and name.
    std::string wholePath(Row row) const;

    bool isFolder(Row row) const { return flags_[row] != 0; }
    /// As stored. Negative: not known exactly, 2 GiB or more.
    std::int32_t size(Row row) const { return sizes_[row]; }
    bool isSizeKnown(Row row) const { return sizes_[row] >= 0; }
    /// What is counted as the size: 2 GiB where it is not known exactly.
    std::int64_t leastSize(Row row) const {
        return sizes_[row] >= 0 ? sizes_[row] : std::int64_t{1} << 31;
    }

    LocalTime modified(Row row) const { return modified_[row]; }
    LocalTime created(Row row) const { return created_[row]; }
    /// As stored, also where that is no date.
    std::string modifiedText(Row row) const;
    std::string createdText(Row row) const;

    TypeId typeId(Row row) const { return typeIds_[row]; }
    std::string_view type(Row row) const { return types_[typeIds_[row]]; }
    const TextPool& types() const { return types_; }

    /// What stands behind the last "." of a file's name, folded; "" for folders, for names without
    /// one and for names that begin with their only one.
    ExtensionId extensionId(Row row) const { return extensionIds_[row]; }
    std::string_view extension(Row row) const { return extensions_[extensionIds_[row]]; }
    const TextPool& extensions() const { return extensions_; }
    /// Number of entries that have it.
    std::uint32_t extensionCount(ExtensionId extension) const {
        return extensionCounts_[extension];
    }

    // Keywords and notes. Equal ones are kept once; 0 is the entry without any.
    AnnotationId annotationId(Row row) const { return annotationIds_[row]; }
    AnnotationId annotationCount() const { return static_cast<AnnotationId>(annotations_.size()); }
    struct Annotation {
        TextPool::Id keywords = 0;
        TextPool::Id notes1 = 0;
        TextPool::Id notes2 = 0;
        friend bool operator==(const Annotation&, const Annotation&) = default;
    };
    const Annotation& annotation(AnnotationId id) const { return annotations_[id]; }
    /// Texts of keywords and notes by the numbers in Annotation; 0 is the empty one.
    const TextPool& annotationTexts() const { return annotationTexts_; }
    std::string_view keywords(Row row) const;
    std::string_view notes1(Row row) const;
    std::string_view notes2(Row row) const;
    /// The different keyword texts of the archive, without the empty one, in order.
    const std::vector<std::string_view>& knownKeywords() const { return knownKeywords_; }

    /// The media, in the order of table `media`; behind them those that only entries name, with
    /// their id alone.
    const std::vector<base::MediaInfo>& media() const { return media_; }
    /// Position of the entry's medium in media().
    std::uint32_t mediumPosition(Row row) const { return mediumPositions_[row]; }
    const base::MediaInfo& medium(Row row) const { return media_[mediumPositions_[row]]; }

    /// Where the row stands in the archive's file.
    jet::RowPlace place(Row row) const { return {pages_[row], slots_[row]}; }
    /// The whole entry as table `main` held it when it was read.
    base::ScanEntry entry(Row row) const;

    /// Which entries are copies of one another. Made on first use, piece by piece; see there.
    CopyTable& copies() const { return *copies_; }

    /// Bytes of memory in use, copies aside, and those of them that are the stored texts (names and
    /// paths, types, keywords, notes).
    std::size_t memory() const;
    std::size_t textMemory() const;

  private:
    friend class IndexBuilder;
    friend class IndexRelease;

    static std::string_view slice(const TextBlock& block, const std::vector<std::uint32_t>& starts,
                                  Row row) {
        return block.view().substr(starts[row], starts[row + 1] - starts[row]);
    }

    TextBlock names_;
    std::vector<std::uint32_t> nameStarts_{0};
    TextBlock foldedNames_;
    std::vector<std::uint32_t> foldedStarts_{0};

    std::vector<PathId> pathIds_;
    TextPool paths_;
    TextBlock foldedPaths_;
    std::vector<std::uint32_t> foldedPathStarts_{0};

    std::vector<std::uint8_t> flags_;  ///< 1: folder
    std::vector<std::int32_t> sizes_;
    std::vector<LocalTime> modified_;
    std::vector<LocalTime> created_;
    std::unordered_map<Row, std::string> oddModified_;  ///< texts that are no dates
    std::unordered_map<Row, std::string> oddCreated_;
    std::unordered_map<Row, std::string> oddKinds_;  ///< neither "folder" nor "file"

    std::vector<TypeId> typeIds_;
    TextPool types_;
    std::vector<ExtensionId> extensionIds_;
    TextPool extensions_;
    std::vector<std::uint32_t> extensionCounts_;
    std::vector<AnnotationId> annotationIds_;
    std::vector<Annotation> annotations_;
    TextPool annotationTexts_;
    std::vector<std::string_view> knownKeywords_;

    std::vector<std::uint32_t> mediumPositions_;
    std::vector<base::MediaInfo> media_;
    std::vector<std::uint32_t> pages_;
    std::vector<std::uint8_t> slots_;

    std::unique_ptr<CopyTable> copies_;
};

}  // namespace search
