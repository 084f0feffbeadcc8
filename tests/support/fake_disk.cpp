#include "tests/support/fake_disk.h"

#include <algorithm>
#include <stdexcept>

#include "platform/path_rules.h"

namespace support {

namespace {

class FakeListing : public platform::Listing {
  public:
    FakeListing(FakeDisk& disk, std::string pattern,
                std::vector<std::shared_ptr<FakeEntry>> entries)
        : disk_(disk), pattern_(std::move(pattern)), entries_(std::move(entries)) {}

    bool next(platform::FindData& data) override {
        disk_.note("next", pattern_);
        if (position_ == entries_.size()) {
            return false;
        }
        const FakeEntry& entry = *entries_[position_++];
        data.ftCreationTime = entry.created;
        data.ftLastWriteTime = entry.lastWrite;
        data.nFileSizeHigh = static_cast<std::uint32_t>(entry.size >> 32);
        data.nFileSizeLow = static_cast<std::uint32_t>(entry.size);
        data.cFileName = entry.name + std::string(entry.padding, '\0') + entry.behindPadding;
        return true;
    }

  private:
    FakeDisk& disk_;
    std::string pattern_;
    std::vector<std::shared_ptr<FakeEntry>> entries_;
    std::size_t position_ = 0;
};

std::shared_ptr<FakeEntry> newFolder(std::string_view name) {
    auto folder = std::make_shared<FakeEntry>();
    folder->name = name;
    folder->folder = true;
    folder->typeName = "Folder";
    return folder;
}

FakeEntry* childOf(const FakeEntry& folder, std::string_view name) {
    const auto found = std::ranges::find(
        folder.children, name, [](const auto& child) { return std::string_view(child->name); });
    return found == folder.children.end() ? nullptr : found->get();
}

char letterOf(std::string_view path) {
    const auto letter = platform::driveLetterOf(path);
    if (!letter) {
        throw std::out_of_range("not a path with a drive: " + std::string(path));
    }
    return *letter;
}

}  // namespace

FakeEntry& FakeDisk::addFolder(std::string_view path) {
    std::shared_ptr<FakeEntry>& root = roots_[letterOf(path)];
    if (!root) {
        root = newFolder({});
    }
    FakeEntry* folder = root.get();
    for (const std::string_view name : platform::pathComponents(path)) {
        FakeEntry* child = childOf(*folder, name);
        if (child == nullptr) {
            folder->children.push_back(newFolder(name));
            child = folder->children.back().get();
        }
        folder = child;
    }
    return *folder;
}

FakeEntry& FakeDisk::addFile(std::string_view path, std::uint64_t size) {
    const platform::SplitPath split = platform::splitPath(path);
    FakeEntry& folder = addFolder(split.folder);
    auto file = std::make_shared<FakeEntry>();
    file->name = split.name;
    file->size = size;
    file->typeName = "File";
    folder.children.push_back(file);
    return *file;
}

void FakeDisk::remove(std::string_view path) {
    const platform::SplitPath split = platform::splitPath(path);
    if (split.name.empty()) {
        roots_.erase(letterOf(path));
        return;
    }
    std::erase_if(at(split.folder).children,
                  [&](const auto& child) { return child->name == split.name; });
}

FakeEntry* FakeDisk::find(std::string_view path) const {
    const auto letter = platform::driveLetterOf(path);
    const auto root = letter ? roots_.find(*letter) : roots_.end();
    if (root == roots_.end()) {
        return nullptr;
    }
    FakeEntry* entry = root->second.get();
    for (const std::string_view name : platform::pathComponents(path)) {
        if (entry != nullptr && name != ".") {
            entry = childOf(*entry, name);
        }
    }
    return entry;
}

FakeEntry& FakeDisk::at(std::string_view path) const {
    FakeEntry* const entry = find(path);
    if (entry == nullptr) {
        throw std::out_of_range("the fake disk has no " + std::string(path));
    }
    return *entry;
}

void FakeDisk::note(std::string_view operation, std::string_view path) {
    if (recording) {
        operations.push_back(std::string(operation) + " " + std::string(path));
    }
    if (beforeOperation) {
        beforeOperation(operation, path);
    }
}

std::unique_ptr<platform::Listing> FakeDirectoryLister::findFirst(std::string_view pattern) {
    ++disk_.listings[std::string(pattern)];
    disk_.note("findFirst", pattern);
    const platform::SplitPath split = platform::splitPath(pattern);
    const FakeEntry* const folder = disk_.find(split.folder);
    if (folder == nullptr || !folder->folder || !folder->listable) {
        return nullptr;
    }
    std::vector<std::shared_ptr<FakeEntry>> entries;
    if (disk_.listsDotEntries) {
        entries = {newFolder("."), newFolder("..")};
    }
    std::ranges::copy(folder->children, std::back_inserter(entries));
    std::erase_if(entries, [&](const auto& entry) {
        return !platform::matchesPattern(entry->name, split.name);
    });
    return std::make_unique<FakeListing>(disk_, std::string(pattern), std::move(entries));
}

std::uint32_t FakeDirectoryLister::attributes(std::string_view path) {
    disk_.note("attributes", path);
    const std::string_view name = platform::splitPath(path).name;
    if (name == "." || name == "..") {
        return platform::fileAttributeDirectory;
    }
    const FakeEntry* const entry = disk_.find(path);
    if (entry == nullptr || !entry->attributesKnown) {
        return platform::invalidFileAttributes;
    }
    return (entry->folder ? platform::fileAttributeDirectory : 0) | entry->extraAttributes;
}

std::string FakeDirectoryLister::typeName(std::string_view path) {
    disk_.note("typeName", path);
    const FakeEntry* const entry = disk_.find(path);
    return entry == nullptr ? std::string() : entry->typeName;
}

platform::FileTime FakeDirectoryLister::fileTimeToLocalFileTime(platform::FileTime time) {
    return {time.ticks + static_cast<std::uint64_t>(disk_.localOffset)};
}

platform::FileTime timeOf(int year, int month, int day, int hour, int minute, int second) {
    const auto field = [](int value) { return static_cast<std::uint16_t>(value); };
    return platform::systemTimeToFileTime(
        {field(year), field(month), field(day), field(hour), field(minute), field(second)});
}

}  // namespace support
