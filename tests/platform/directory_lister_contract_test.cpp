// What a walk may rely on, whoever lists the folders: the machine's own lister and the one in
// memory that tests use.

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "base/text.h"
#include "platform/directory_lister.h"
#include "tests/platform/machine_parts.h"
#include "tests/support/fake_disk.h"
#include "tests/support/temporary_folder.h"

namespace platform {
namespace {

/// A drive "d:" and the lister that reads it. Names are given as "dir/name".
class Subject {
  public:
    virtual ~Subject() = default;
    virtual void addFolder(const std::string& name) = 0;
    virtual void addFile(const std::string& name, std::uint64_t size, FileTime lastWrite) = 0;
    virtual void remove(const std::string& name) = 0;
    virtual std::unique_ptr<DirectoryLister> lister() = 0;
};

class FakeSubject : public Subject {
  public:
    FakeSubject() { disk_.addFolder("d:\\"); }
    void addFolder(const std::string& name) override { disk_.addFolder(pathOf(name)); }
    void addFile(const std::string& name, std::uint64_t size, FileTime lastWrite) override {
        support::FakeEntry& file = disk_.addFile(pathOf(name), size);
        file.lastWrite = lastWrite;
        file.created = lastWrite;
    }
    void remove(const std::string& name) override { disk_.remove(pathOf(name)); }
    std::unique_ptr<DirectoryLister> lister() override {
        return std::make_unique<support::FakeDirectoryLister>(disk_);
    }

  private:
    static std::string pathOf(std::string name) {
        std::ranges::replace(name, '/', '\\');
        return "d:\\" + name;
    }

    support::FakeDisk disk_;
};

class MachineSubject : public Subject {
  public:
    explicit MachineSubject(ListerForm form) : form_(std::move(form)) {}
    void addFolder(const std::string& name) override { folder_.makeFolder(name); }
    void addFile(const std::string& name, std::uint64_t size, FileTime lastWrite) override {
        folder_.makeSparseFile(name, size);
        folder_.setModified(
            name, static_cast<std::int64_t>(lastWrite.ticks / 10'000'000) - 11'644'473'600);
    }
    void remove(const std::string& name) override { folder_.remove(name); }
    std::unique_ptr<DirectoryLister> lister() override {
        return form_.make([this](char letter) {
            return letter == 'd' ? std::optional(folder_.path()) : std::nullopt;
        });
    }

  private:
    support::TemporaryFolder folder_;
    ListerForm form_;
};

/// A name for the lister under test, and what makes its subject.
struct SubjectForm {
    std::string name;
    std::function<std::unique_ptr<Subject>()> make;
};

std::vector<SubjectForm> subjects() {
    std::vector<SubjectForm> forms{{"Fake", [] { return std::make_unique<FakeSubject>(); }}};
    for (const ListerForm& lister : machineListers()) {
        forms.push_back(
            {lister.name, [lister] { return std::make_unique<MachineSubject>(lister); }});
    }
    return forms;
}

class DirectoryListerContract : public testing::TestWithParam<SubjectForm> {
  protected:
    DirectoryListerContract() : subject_(GetParam().make()) {}

    static std::vector<FindData> all(Listing& listing) {
        std::vector<FindData> entries;
        FindData data;
        while (listing.next(data)) {
            entries.push_back(data);
        }
        return entries;
    }
    /// The names of a listing without "." and "..", in its order.
    static std::vector<std::string> names(DirectoryLister& lister, const std::string& pattern) {
        std::vector<std::string> result;
        const auto listing = lister.findFirst(pattern);
        if (!listing) {
            return {"(refused)"};
        }
        for (const FindData& data : all(*listing)) {
            if (data.cFileName != "." && data.cFileName != "..") {
                result.push_back(data.cFileName);
            }
        }
        return result;
    }
    static std::vector<std::string> sortedNames(DirectoryLister& lister,
                                                const std::string& pattern) {
        auto result = names(lister, pattern);
        std::ranges::sort(result);
        return result;
    }

    std::unique_ptr<Subject> subject_;
};

using Names = std::vector<std::string>;

TEST_P(DirectoryListerContract, ListsFoldersAndFilesOfOneFolderOnly) {
    subject_->addFolder("a");
    subject_->addFolder("b");
    subject_->addFile("f", 1, {});
    subject_->addFile("a/inside", 1, {});
    const auto lister = subject_->lister();
    EXPECT_EQ(sortedNames(*lister, "d:\\*"), (Names{"a", "b", "f"}));
    EXPECT_EQ(sortedNames(*lister, "d:\\a\\*"), Names{"inside"});
    EXPECT_EQ(sortedNames(*lister, "d:\\b\\*"), Names{});
}

TEST_P(DirectoryListerContract, DotAndDotDotAreListedAsFolders) {
    subject_->addFolder("a");
    const auto lister = subject_->lister();
    const auto listing = lister->findFirst("d:\\a\\*");
    ASSERT_TRUE(listing);
    Names found;
    for (const FindData& data : all(*listing)) {
        found.push_back(data.cFileName);
        EXPECT_EQ(lister->attributes("d:\\a\\" + data.cFileName) & fileAttributeDirectory,
                  fileAttributeDirectory);
    }
    std::ranges::sort(found);
    EXPECT_EQ(found, (Names{".", ".."}));
}

TEST_P(DirectoryListerContract, BothPassesSeeTheSameOrder) {
    for (int i = 0; i < 50; ++i) {
        subject_->addFile("name" + std::to_string(i * 7919 % 1000), 1, {});
    }
    const auto lister = subject_->lister();
    const Names first = names(*lister, "d:\\*");
    EXPECT_EQ(first.size(), 50U);
    EXPECT_EQ(names(*lister, "d:\\*"), first);
    EXPECT_EQ(names(*lister, "d:\\*"), first);
}

TEST_P(DirectoryListerContract, TheDirectoryBitTellsFoldersFromFiles) {
    subject_->addFolder("folder");
    subject_->addFile("file", 1, {});
    const auto lister = subject_->lister();
    const auto isFolder = [&](const char* path) {
        return (lister->attributes(path) & fileAttributeDirectory) != 0;
    };
    EXPECT_TRUE(isFolder("d:\\folder"));
    EXPECT_FALSE(isFolder("d:\\file"));
    names(*lister, "d:\\*");
    EXPECT_TRUE(isFolder("d:\\folder"));
    EXPECT_FALSE(isFolder("d:\\file"));
}

TEST_P(DirectoryListerContract, AttributesOfAMissingNameAreAllBits) {
    const auto lister = subject_->lister();
    EXPECT_EQ(lister->attributes("d:\\missing"), invalidFileAttributes);
    EXPECT_EQ(lister->attributes("d:\\missing\\deeper"), invalidFileAttributes);
    EXPECT_EQ(lister->attributes("q:\\missing"), invalidFileAttributes);
    EXPECT_EQ(lister->attributes(""), invalidFileAttributes);
    names(*lister, "d:\\*");
    EXPECT_EQ(lister->attributes("d:\\missing"), invalidFileAttributes);
}

TEST_P(DirectoryListerContract, SizesComeInTwoHalves) {
    const std::map<std::string, std::uint64_t> sizes = {
        {"0", 0},
        {"1", 1},
        {"2g-1", 0x7FFFFFFF},
        {"2g", 0x80000000},
        {"4g-1", 0xFFFFFFFF},
        {"4g", 0x100000000},
        {"big", 0x2345678901},
    };
    for (const auto& [name, size] : sizes) {
        subject_->addFile(name, size, {});
    }
    const auto lister = subject_->lister();
    const auto listing = lister->findFirst("d:\\*");
    ASSERT_TRUE(listing);
    std::size_t seen = 0;
    for (const FindData& data : all(*listing)) {
        const auto expected = sizes.find(data.cFileName);
        if (expected != sizes.end()) {
            EXPECT_EQ(data.nFileSizeLow, static_cast<std::uint32_t>(expected->second));
            EXPECT_EQ(data.nFileSizeHigh, static_cast<std::uint32_t>(expected->second >> 32));
            ++seen;
        }
    }
    EXPECT_EQ(seen, sizes.size());
}

TEST_P(DirectoryListerContract, TheLastWriteTimeIsTheFilesInUtc) {
    const FileTime before1970 = support::timeOf(1965, 7, 4, 1, 2, 3);
    const FileTime recent = support::timeOf(2001, 3, 7, 9, 5, 0);
    subject_->addFile("old", 1, before1970);
    subject_->addFile("new", 1, recent);
    const auto lister = subject_->lister();
    const auto listing = lister->findFirst("d:\\*");
    ASSERT_TRUE(listing);
    for (const FindData& data : all(*listing)) {
        if (data.cFileName == "old") {
            EXPECT_EQ(fileTimeToSystemTime(data.ftLastWriteTime), fileTimeToSystemTime(before1970));
        } else if (data.cFileName == "new") {
            EXPECT_EQ(fileTimeToSystemTime(data.ftLastWriteTime), fileTimeToSystemTime(recent));
        }
    }
}

TEST_P(DirectoryListerContract, WhatCannotBeListedIsRefused) {
    subject_->addFile("file", 1, {});
    const auto lister = subject_->lister();
    EXPECT_FALSE(lister->findFirst("d:\\missing\\*"));
    EXPECT_FALSE(lister->findFirst("d:\\file\\*"));
    EXPECT_FALSE(lister->findFirst("q:\\*"));
    EXPECT_FALSE(lister->findFirst("*"));
    EXPECT_FALSE(lister->findFirst(""));
    EXPECT_EQ(names(*lister, "d:\\*"), Names{"file"});
}

TEST_P(DirectoryListerContract, AFolderThatVanishedIsRefusedAndTheWalkGoesOn) {
    subject_->addFolder("a");
    subject_->addFile("b/f", 1, {});
    const auto lister = subject_->lister();
    EXPECT_EQ(sortedNames(*lister, "d:\\*"), (Names{"a", "b"}));
    subject_->remove("a");
    EXPECT_FALSE(lister->findFirst("d:\\a\\*"));
    EXPECT_EQ(names(*lister, "d:\\b\\*"), Names{"f"});
}

TEST_P(DirectoryListerContract, APatternChoosesNames) {
    subject_->addFile("a.txt", 1, {});
    subject_->addFile("B.TXT", 1, {});
    subject_->addFile("c.doc", 1, {});
    const auto lister = subject_->lister();
    EXPECT_EQ(sortedNames(*lister, "d:\\*.txt"), (Names{"B.TXT", "a.txt"}));
    EXPECT_EQ(sortedNames(*lister, "d:\\*.*").size(), 3U);
}

TEST_P(DirectoryListerContract, NamesInOtherScriptsAreUtf8) {
    subject_->addFile("日本語.txt", 1, {});
    subject_->addFile("naïve ж 😀", 1, {});
    subject_->addFile("Ærø/ø", 1, {});
    const auto lister = subject_->lister();
    EXPECT_EQ(sortedNames(*lister, "d:\\*"), (Names{"naïve ж 😀", "Ærø", "日本語.txt"}));
    EXPECT_EQ(names(*lister, "d:\\Ærø\\*"), Names{"ø"});
}

TEST_P(DirectoryListerContract, TwoListingsAtOnceDoNotDisturbEachOther) {
    for (const char* const name : {"a/1", "a/2", "a/3", "b/4", "b/5", "b/6"}) {
        subject_->addFile(name, 1, {});
    }
    const auto lister = subject_->lister();
    const auto first = lister->findFirst("d:\\a\\*");
    const auto second = lister->findFirst("d:\\b\\*");
    ASSERT_TRUE(first && second);
    Names found;
    FindData data;
    bool more = true;
    while (more) {
        more = false;
        for (Listing* const listing : {first.get(), second.get()}) {
            if (listing->next(data)) {
                more = true;
                found.push_back(data.cFileName);
            }
        }
    }
    std::erase_if(found, [](const std::string& name) { return name == "." || name == ".."; });
    std::ranges::sort(found);
    EXPECT_EQ(found, (Names{"1", "2", "3", "4", "5", "6"}));
}

TEST_P(DirectoryListerContract, AfterTheLastNameTheDataStaysAsItWas) {
    subject_->addFile("only", 5, {});
    const auto lister = subject_->lister();
    const auto listing = lister->findFirst("d:\\only*");
    ASSERT_TRUE(listing);
    FindData data;
    ASSERT_TRUE(listing->next(data));
    EXPECT_FALSE(listing->next(data));
    EXPECT_FALSE(listing->next(data));
    EXPECT_EQ(data.cFileName, "only");
    EXPECT_EQ(data.nFileSizeLow, 5U);
}

TEST_P(DirectoryListerContract, TypeNamesOfFoldersAndFilesDifferAndHave80CharactersAtMost) {
    subject_->addFolder("folder.pdf");
    subject_->addFile("file", 1, {});
    const auto lister = subject_->lister();
    std::vector<std::string> types;
    for (const char* const path : {"d:\\folder.pdf", "d:\\file"}) {
        const std::string type = lister->typeName(path);
        EXPECT_LE(base::utf16Length(type), 80U);
        types.emplace_back(type.c_str());  // without the padding
        EXPECT_NE(types.back(), "");
    }
    EXPECT_NE(types[0], types[1]);
}

INSTANTIATE_TEST_SUITE_P(Listers, DirectoryListerContract, testing::ValuesIn(subjects()),
                         [](const auto& lister) { return lister.param.name; });

}  // namespace
}  // namespace platform
