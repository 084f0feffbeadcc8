#include "search/index_builder.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "base/failure.h"
#include "base/text.h"
#include "search/copies.h"
#include "search/text_fold.h"

namespace search {
namespace {

/// Where the next text of a block begins.
std::uint32_t endOf(const TextBlock& block) {
    if (block.size() > UINT32_MAX) {
        throw base::OverflowFailure("the archive's names: there are more than 4 GiB of them");
    }
    return static_cast<std::uint32_t>(block.size());
}

std::string_view extensionOf(std::string_view foldedName) {
    const std::size_t dot = foldedName.rfind('.');
    return dot == std::string_view::npos || dot == 0 ? std::string_view()
                                                     : foldedName.substr(dot + 1);
}

}  // namespace

IndexBuilder::IndexBuilder() : index_(std::make_shared<Index>()) {
    index_->annotationTexts_.intern("");
    index_->annotations_.emplace_back();
    index_->extensions_.intern("");
    index_->extensionCounts_.resize(1);
}

void IndexBuilder::addMedium(const base::MediaInfo& medium) {
    const auto position = static_cast<std::uint32_t>(index_->media_.size());
    if (mediumPositions_.emplace(medium.mediaId, position).second) {
        index_->media_.push_back(medium);
    }
}

void IndexBuilder::reserve(std::size_t entries) {
    Index& index = *index_;
    index.nameStarts_.reserve(entries + 1);
    index.foldedStarts_.reserve(entries + 1);
    index.pathIds_.reserve(entries);
    index.flags_.reserve(entries);
    index.sizes_.reserve(entries);
    index.modified_.reserve(entries);
    index.created_.reserve(entries);
    index.typeIds_.reserve(entries);
    index.extensionIds_.reserve(entries);
    index.annotationIds_.reserve(entries);
    index.mediumPositions_.reserve(entries);
    index.pages_.reserve(entries);
    index.slots_.reserve(entries);
}

void IndexBuilder::addEntry(const base::ScanEntry& entry, jet::RowPlace place) {
    addName(entry);
    addPath(entry.path);
    addKind(entry);
    addDates(entry);
    addAnnotation(entry);
    addMediumOf(entry.mediaId);
    index_->pages_.push_back(place.page);
    index_->slots_.push_back(place.slot);
    // Last: the number of sizes is the number of entries.
    index_->sizes_.push_back(entry.Size);
}

void IndexBuilder::addName(const base::ScanEntry& entry) {
    Index& index = *index_;
    index.names_ += entry.FileName;
    index.nameStarts_.push_back(endOf(index.names_));
    appendFoldedTo(index.foldedNames_, entry.FileName);
    index.foldedStarts_.push_back(endOf(index.foldedNames_));
}

void IndexBuilder::appendFoldedTo(TextBlock& block, std::string_view text) {
    folded_.clear();
    appendFolded(text, {}, folded_);
    folded_ += Index::border;
    block += folded_;
}

void IndexBuilder::addPath(const std::string& path) {
    Index& index = *index_;
    // Neighbours mostly lie in the same folder.
    if (!index.pathIds_.empty() && index.paths_[index.pathIds_.back()] == path) {
        index.pathIds_.push_back(index.pathIds_.back());
        return;
    }
    const Index::PathId id = index.paths_.intern(path);
    if (id + 1 == index.foldedPathStarts_.size()) {
        appendFoldedTo(index.foldedPaths_, path);
        index.foldedPathStarts_.push_back(endOf(index.foldedPaths_));
    }
    index.pathIds_.push_back(id);
}

void IndexBuilder::addKind(const base::ScanEntry& entry) {
    Index& index = *index_;
    const bool isFolder = base::equalIgnoringCase(entry.Folder, "folder");
    if (entry.Folder != "folder" && entry.Folder != "file") {
        index.oddKinds_.emplace(index.size(), entry.Folder);
    }
    index.flags_.push_back(isFolder ? 1 : 0);
    index.typeIds_.push_back(index.types_.intern(entry.Type));
    addExtension(isFolder);
}

void IndexBuilder::addExtension(bool isFolder) {
    Index& index = *index_;
    const std::string_view name = index.foldedName(index.size());
    const Index::ExtensionId id = isFolder ? 0 : index.extensions_.intern(extensionOf(name));
    index.extensionIds_.push_back(id);
    index.extensionCounts_.resize(index.extensions_.size());
    ++index.extensionCounts_[id];
}

void IndexBuilder::addDates(const base::ScanEntry& entry) {
    Index& index = *index_;
    index.modified_.push_back(parseArchiveDate(entry.DateModified));
    index.created_.push_back(parseArchiveDate(entry.DateCreated));
    if (index.modified_.back() == unknownTime && !entry.DateModified.empty()) {
        index.oddModified_.emplace(index.size(), entry.DateModified);
    }
    if (index.created_.back() == unknownTime && !entry.DateCreated.empty()) {
        index.oddCreated_.emplace(index.size(), entry.DateCreated);
    }
}

void IndexBuilder::addAnnotation(const base::ScanEntry& entry) {
    Index& index = *index_;
    if (entry.keywords.empty() && entry.Notes1.empty() && entry.Notes2.empty()) {
        index.annotationIds_.push_back(0);
        return;
    }
    const std::string all =
        entry.keywords + Index::border + entry.Notes1 + Index::border + entry.Notes2;
    const auto next = static_cast<Index::AnnotationId>(index.annotations_.size());
    const auto [place, isNew] = annotationIds_.emplace(all, next);
    if (isNew) {
        index.annotations_.push_back({index.annotationTexts_.intern(entry.keywords),
                                      index.annotationTexts_.intern(entry.Notes1),
                                      index.annotationTexts_.intern(entry.Notes2)});
    }
    index.annotationIds_.push_back(place->second);
}

void IndexBuilder::addMediumOf(std::int32_t mediaId) {
    Index& index = *index_;
    if (!index.mediumPositions_.empty() &&
        index.media_[index.mediumPositions_.back()].mediaId == mediaId) {
        index.mediumPositions_.push_back(index.mediumPositions_.back());
        return;
    }
    if (!mediumPositions_.contains(mediaId)) {
        base::MediaInfo medium;
        medium.mediaId = mediaId;
        addMedium(medium);
    }
    index.mediumPositions_.push_back(mediumPositions_.at(mediaId));
}

/// The different keyword texts, in order.
void IndexBuilder::collectKeywords() {
    Index& index = *index_;
    std::vector<bool> isKnown(index.annotationTexts_.size());
    for (const Index::Annotation& annotation : index.annotations_) {
        if (annotation.keywords != 0 && !isKnown[annotation.keywords]) {
            isKnown[annotation.keywords] = true;
            index.knownKeywords_.push_back(index.annotationTexts_[annotation.keywords]);
        }
    }
    std::ranges::sort(index.knownKeywords_);
}

std::shared_ptr<Index> IndexBuilder::build() {
    Index& index = *index_;
    index.names_.shrinkToFit();
    index.foldedNames_.shrinkToFit();
    index.foldedPaths_.shrinkToFit();
    index.paths_.seal();
    index.types_.seal();
    index.extensions_.seal();
    index.annotationTexts_.seal();
    collectKeywords();
    return std::exchange(index_, nullptr);
}

}  // namespace search
