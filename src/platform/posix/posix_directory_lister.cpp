#include "platform/posix/posix_directory_lister.h"

#include <cerrno>
#include <utility>

#include "platform/path_rules.h"
#include "platform/posix/file_status.h"
#include "platform/posix/system_failure.h"
#include "platform/posix/type_names.h"

namespace platform::posix {

namespace {

constexpr std::uint32_t attributeOfFiles = 0x80;  // "normal": none of the special ones

void fillFindData(const FolderContents& contents, const FolderEntry& entry, FindData& data) {
    data.ftCreationTime = entry.created;
    data.ftLastWriteTime = entry.lastWrite;
    data.nFileSizeHigh = static_cast<std::uint32_t>(entry.size >> 32);
    data.nFileSizeLow = static_cast<std::uint32_t>(entry.size);
    data.cFileName.assign(contents.shownName(entry));
}

/// Delivers what has been read of a folder.
class KeptListing : public Listing {
  public:
    KeptListing(std::shared_ptr<FolderContents> contents, std::string_view pattern)
        : contents_(std::move(contents)), pattern_(pattern), takesAll_(pattern == "*") {}

    bool next(FindData& data) override {
        while (position_ < contents_->size() || readOn()) {
            const std::size_t index = position_++;
            const FolderEntry& entry = contents_->entry(index);
            if (takesAll_ || matchesPattern(contents_->shownName(entry), pattern_)) {
                contents_->delivered(index);
                fillFindData(*contents_, entry, data);
                return true;
            }
        }
        return false;
    }

  protected:
    /// Fetches more names in place of those delivered; false when there are none.
    virtual bool readOn() { return false; }

    FolderContents& contents() { return *contents_; }
    void startAgain() { position_ = 0; }

  private:
    std::shared_ptr<FolderContents> contents_;
    std::string pattern_;
    bool takesAll_;
    std::size_t position_ = 0;
};

/// Goes on reading a folder whose names are too many to be kept.
class LargeListing : public KeptListing {
  public:
    LargeListing(std::shared_ptr<FolderContents> firstPart, std::string_view pattern,
                 FileDescriptor folder, FolderReader reader, std::size_t partSize,
                 OpenFolders& folders)
        : KeptListing(std::move(firstPart), pattern),
          folder_(std::move(folder)),
          reader_(std::move(reader)),
          partSize_(partSize),
          folders_(folders) {}

  protected:
    bool readOn() override {
        if (ended_) {
            return false;
        }
        contents().clearNames();
        startAgain();
        ended_ = !reader_.fill(contents(), partSize_) || contents().complete;
        // A later listing has to read the folder anew: what is kept is only its last part.
        contents().complete = false;
        folders_.rememberOddFolders(contents(), OpenFolders::Part::Further);
        return contents().size() > 0;
    }

  private:
    FileDescriptor folder_;
    FolderReader reader_;
    std::size_t partSize_;
    OpenFolders& folders_;
    bool ended_ = false;
};

}  // namespace

PosixDirectoryLister::PosixDirectoryLister(OpenFolders::RootOf rootOf, TypeNames& typeNames,
                                           std::size_t keptNames)
    : folders_(std::move(rootOf)), typeNames_(typeNames), keptNames_(keptNames) {}

std::unique_ptr<Listing> PosixDirectoryLister::findFirst(std::string_view pattern) {
    const SplitPath split = splitPath(pattern);
    if (!split.folder.ends_with('\\')) {
        return listAnew(std::string(split.folder) + '\\', split.name);
    }
    if (kept_ && kept_->complete && !kept_->repeated && kept_->folder() == split.folder) {
        kept_->repeated = true;
        return std::make_unique<KeptListing>(kept_, split.name);
    }
    return listAnew(split.folder, split.name);
}

std::unique_ptr<Listing> PosixDirectoryLister::listAnew(std::string_view folder,
                                                        std::string_view pattern) {
    const int descriptor = folders_.open(folder);
    if (descriptor < 0) {
        refusal_ = errno;
        return nullptr;
    }
    FolderContents& contents = contentsToFill();
    contents.startFolder(folder);
    reader_.start(descriptor);
    if (!reader_.fill(contents, keptNames_) && contents.size() == 0) {
        refusal_ = errno;
        return nullptr;
    }
    folders_.rememberOddFolders(contents, OpenFolders::Part::First);
    if (contents.complete || contents.size() < keptNames_) {
        return std::make_unique<KeptListing>(kept_, pattern);
    }
    FileDescriptor goesOn = folders_.giveAway();
    return std::make_unique<LargeListing>(kept_, pattern, std::move(goesOn),
                                          std::exchange(reader_, FolderReader()), keptNames_,
                                          folders_);
}

/// The contents of the folder before, unless a running listing still delivers them.
FolderContents& PosixDirectoryLister::contentsToFill() {
    if (!kept_ || kept_.use_count() > 1) {
        kept_ = std::make_shared<FolderContents>();
    }
    return *kept_;
}

const FolderEntry* PosixDirectoryLister::keptEntry(std::string_view path) const {
    if (!kept_ || !path.starts_with(kept_->folder())) {
        return nullptr;
    }
    return kept_->find(path.substr(kept_->folder().size()));
}

EntryKind PosixDirectoryLister::kindOf(std::string_view path) {
    if (const FolderEntry* const entry = keptEntry(path)) {
        return entry->kind;
    }
    if (const auto place = folders_.placeOf(path)) {
        for (const std::string& name : place->names) {
            const FileStatus status = statusOf(place->parent.number(), name.c_str());
            if (status.errorNumber == 0) {
                return status.entry.kind;
            }
        }
    }
    return EntryKind::Unknown;
}

std::string PosixDirectoryLister::whyNotListed() const {
    return refusal_ == EXDEV ? std::string() : systemReason(refusal_);
}

std::uint32_t PosixDirectoryLister::attributes(std::string_view path) {
    switch (kindOf(path)) {
        case EntryKind::Folder:
            return fileAttributeDirectory;
        case EntryKind::File:
        case EntryKind::Link:
            return attributeOfFiles;
        case EntryKind::Unknown:
            break;
    }
    return invalidFileAttributes;
}

std::string PosixDirectoryLister::typeName(std::string_view path) {
    switch (kindOf(path)) {
        case EntryKind::Folder:
            return "Folder";
        case EntryKind::Link:
            return "Link";
        case EntryKind::File:
        case EntryKind::Unknown:
            break;
    }
    return std::string(typeNames_.ofFile(splitPath(path).name));
}

FileTime PosixDirectoryLister::fileTimeToLocalFileTime(FileTime time) {
    return localTime_.toLocal(time);
}

}  // namespace platform::posix
