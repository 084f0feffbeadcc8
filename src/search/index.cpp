#include "search/index.h"

#include "search/copies.h"

namespace search {
namespace {

template <typename Element>
std::size_t bytesOf(const std::vector<Element>& list) {
    return list.capacity() * sizeof(Element);
}

std::size_t bytesOf(const std::unordered_map<Row, std::string>& texts) {
    std::size_t bytes = texts.bucket_count() * sizeof(void*);
    for (const auto& [row, text] : texts) {
        bytes += sizeof(Row) + sizeof(std::string) + 2 * sizeof(void*) + text.capacity();
    }
    return bytes;
}

std::string textOr(const std::unordered_map<Row, std::string>& odd, Row row, LocalTime time) {
    if (time == unknownTime) {
        const auto found = odd.find(row);
        return found == odd.end() ? std::string() : found->second;
    }
    return archiveDateText(time);
}

}  // namespace

Index::Index() : copies_(std::make_unique<CopyTable>(*this)) {}
Index::~Index() = default;

std::string_view Index::foldedPathOnMedium(PathId path) const {
    const std::string_view folded = foldedPath(path);
    const std::size_t colon = folded.find(':');
    return colon == std::string_view::npos ? folded : folded.substr(colon + 1);
}

std::string Index::wholePath(Row row) const {
    std::string result(path(row));
    result += '\\';
    return result += name(row);
}

std::string Index::modifiedText(Row row) const { return textOr(oddModified_, row, modified_[row]); }
std::string Index::createdText(Row row) const { return textOr(oddCreated_, row, created_[row]); }

std::string_view Index::keywords(Row row) const {
    return annotationTexts_[annotations_[annotationIds_[row]].keywords];
}
std::string_view Index::notes1(Row row) const {
    return annotationTexts_[annotations_[annotationIds_[row]].notes1];
}
std::string_view Index::notes2(Row row) const {
    return annotationTexts_[annotations_[annotationIds_[row]].notes2];
}

base::ScanEntry Index::entry(Row row) const {
    base::ScanEntry entry;
    entry.FileName = name(row);
    entry.path = path(row);
    const auto odd = oddKinds_.find(row);
    entry.Folder = odd != oddKinds_.end() ? odd->second : isFolder(row) ? "folder" : "file";
    entry.Type = type(row);
    entry.Size = size(row);
    entry.DateCreated = createdText(row);
    entry.DateModified = modifiedText(row);
    entry.keywords = keywords(row);
    entry.Notes1 = notes1(row);
    entry.Notes2 = notes2(row);
    entry.mediaId = medium(row).mediaId;
    return entry;
}

std::size_t Index::memory() const {
    return names_.capacity() + bytesOf(nameStarts_) + foldedNames_.capacity() +
           bytesOf(foldedStarts_) + bytesOf(pathIds_) + paths_.memory() + foldedPaths_.capacity() +
           bytesOf(foldedPathStarts_) + bytesOf(flags_) + bytesOf(sizes_) + bytesOf(modified_) +
           bytesOf(created_) + bytesOf(oddModified_) + bytesOf(oddCreated_) + bytesOf(oddKinds_) +
           bytesOf(typeIds_) + types_.memory() + bytesOf(extensionIds_) + extensions_.memory() +
           bytesOf(extensionCounts_) + bytesOf(annotationIds_) + bytesOf(annotations_) +
           annotationTexts_.memory() + bytesOf(knownKeywords_) + bytesOf(mediumPositions_) +
           bytesOf(media_) + bytesOf(pages_) + bytesOf(slots_);
}

std::size_t Index::textMemory() const {
    return names_.size() + paths_.textSize() + types_.textSize() + annotationTexts_.textSize();
}

}  // namespace search
