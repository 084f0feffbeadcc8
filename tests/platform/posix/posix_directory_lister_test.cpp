#include "platform/posix/posix_directory_lister.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "platform/posix/type_names.h"
#include "tests/platform/posix/child_process.h"
#include "tests/support/temporary_folder.h"

namespace platform::posix {
namespace {

using support::ChildResult;
using Names = std::vector<std::string>;

class PosixDirectoryListerTest : public testing::Test {
  protected:
    PosixDirectoryLister lister(std::size_t keptNames = PosixDirectoryLister::mostKept) {
        return {[this](char letter) {
                    return letter == 'd' ? std::optional(folder.path()) : std::nullopt;
                },
                typeNames, keptNames};
    }
    static Names sortedNames(DirectoryLister& lister, const std::string& path) {
        const auto listing = lister.findFirst(path + "*");
        if (!listing) {
            return {"(refused)"};
        }
        Names names;
        FindData data;
        while (listing->next(data)) {
            if (data.cFileName != "." && data.cFileName != "..") {
                names.push_back(data.cFileName);
            }
        }
        std::ranges::sort(names);
        return names;
    }
    static FindData dataOf(DirectoryLister& lister, const std::string& folder,
                           const std::string& name) {
        const auto listing = lister.findFirst(folder + "*");
        FindData data;
        while (listing && listing->next(data)) {
            if (data.cFileName == name) {
                return data;
            }
        }
        return {};
    }
    static bool isFolder(DirectoryLister& lister, const std::string& path) {
        return (lister.attributes(path) & fileAttributeDirectory) != 0;
    }

    /// The two passes and the descent of a walk; gives the paths of all entries, folders with a
    /// final separator.
    static void walk(DirectoryLister& lister, const std::string& path, Names& found) {
        Names folders;
        FindData data;
        if (const auto listing = lister.findFirst(path + "*")) {
            while (listing->next(data)) {
                const std::string name = data.cFileName;
                if (name != "." && name != ".." && isFolder(lister, path + name)) {
                    folders.push_back(name);
                    found.push_back(path + name + "\\");
                }
            }
        }
        if (const auto listing = lister.findFirst(path + "*")) {
            while (listing->next(data)) {
                if (!isFolder(lister, path + data.cFileName)) {
                    found.push_back(path + data.cFileName);
                }
            }
        }
        for (const std::string& name : folders) {
            walk(lister, path + name + "\\", found);
        }
    }
    Names walked(std::size_t keptNames = PosixDirectoryLister::mostKept) {
        PosixDirectoryLister reader = lister(keptNames);
        Names found;
        walk(reader, "d:\\", found);
        std::ranges::sort(found);
        return found;
    }

    support::TemporaryFolder folder;
    TypeNames typeNames;
};

TEST_F(PosixDirectoryListerTest, LinksAreFilesOfTypeLinkAndNeverFollowed) {
    folder.makeFile("real/inside.txt", "x");
    folder.makeLink("toFolder", "real");
    folder.makeLink("toFile.pdf", "real/inside.txt");
    folder.makeLink("toNothing", "missing");
    folder.makeLink("real/up", "..");
    PosixDirectoryLister reader = lister();
    EXPECT_EQ(sortedNames(reader, "d:\\"), (Names{"real", "toFile.pdf", "toFolder", "toNothing"}));
    for (const char* const link : {"d:\\toFolder", "d:\\toFile.pdf", "d:\\toNothing"}) {
        EXPECT_FALSE(isFolder(reader, link)) << link;
        EXPECT_EQ(reader.typeName(link), "Link") << link;
    }
    EXPECT_FALSE(reader.findFirst("d:\\toFolder\\*"));
    EXPECT_FALSE(reader.findFirst("d:\\real\\up\\*"));
    EXPECT_EQ(walked(), (Names{"d:\\real\\", "d:\\real\\inside.txt", "d:\\real\\up",
                               "d:\\toFile.pdf", "d:\\toFolder", "d:\\toNothing"}));
}

TEST_F(PosixDirectoryListerTest, ALinkInThePathOfAQuestionIsNotFollowed) {
    folder.makeFile("real/inside.txt", "x");
    folder.makeLink("link", "real");
    PosixDirectoryLister reader = lister();
    EXPECT_EQ(reader.attributes("d:\\link\\inside.txt"), invalidFileAttributes);
    EXPECT_NE(reader.attributes("d:\\real\\inside.txt"), invalidFileAttributes);
}

TEST_F(PosixDirectoryListerTest, TheRootOfADriveMayBeALink) {
    folder.makeFile("real/inside.txt", "x");
    const std::string link = folder.makeLink("link", "real");
    PosixDirectoryLister reader([&](char) { return std::optional(link); }, typeNames);
    EXPECT_EQ(sortedNames(reader, "d:\\"), Names{"inside.txt"});
}

TEST_F(PosixDirectoryListerTest, PipesAndSocketsAreFiles) {
    folder.makeFifo("pipe");
    PosixDirectoryLister reader = lister();
    EXPECT_EQ(sortedNames(reader, "d:\\"), Names{"pipe"});
    EXPECT_FALSE(isFolder(reader, "d:\\pipe"));
    EXPECT_EQ(reader.typeName("d:\\pipe"), "File");
    EXPECT_FALSE(reader.findFirst("d:\\pipe\\*"));
}

TEST_F(PosixDirectoryListerTest, FoldersHaveNoSizeAndLinksThatOfTheirTarget) {
    folder.makeFolder("folder");
    folder.makeLink("link", "12345678");
    PosixDirectoryLister reader = lister();
    EXPECT_EQ(dataOf(reader, "d:\\", "folder").nFileSizeLow, 0U);
    EXPECT_EQ(dataOf(reader, "d:\\", "link").nFileSizeLow, 8U);
}

TEST_F(PosixDirectoryListerTest, TheCreationTimeIsTheBirthTimeElseTheLastWrite) {
    const std::string path = folder.makeFile("old", "x");
    folder.setModified("old", 1'000'000'000);
    struct statx facts {};
    ASSERT_EQ(::statx(AT_FDCWD, path.c_str(), 0, STATX_BTIME, &facts), 0);
    PosixDirectoryLister reader = lister();
    const FindData data = dataOf(reader, "d:\\", "old");
    EXPECT_EQ(data.ftLastWriteTime, fileTimeFromUnix(1'000'000'000, 0));
    if ((facts.stx_mask & STATX_BTIME) != 0 && facts.stx_btime.tv_sec != 0) {
        EXPECT_EQ(data.ftCreationTime,
                  fileTimeFromUnix(facts.stx_btime.tv_sec, facts.stx_btime.tv_nsec));
    } else {
        EXPECT_EQ(data.ftCreationTime, data.ftLastWriteTime);
    }
}

TEST_F(PosixDirectoryListerTest, ABackslashInANameIsShownWide) {
    folder.makeFile("a\\b/c\\d.pdf", "123");
    PosixDirectoryLister reader = lister();
    EXPECT_EQ(sortedNames(reader, "d:\\"), Names{"a＼b"});
    EXPECT_TRUE(isFolder(reader, "d:\\a＼b"));
    EXPECT_EQ(sortedNames(reader, "d:\\a＼b\\"), Names{"c＼d.pdf"});
    EXPECT_EQ(dataOf(reader, "d:\\a＼b\\", "c＼d.pdf").nFileSizeLow, 3U);
    EXPECT_EQ(reader.typeName("d:\\a＼b\\c＼d.pdf"), "PDF document");
}

TEST_F(PosixDirectoryListerTest, ANameThatIsNotUtf8IsReadAsCodePage1252AndFound) {
    folder.makeFile(
        "caf\xE9/\xFC"
        "ber\x80.pdf",
        "123");
    PosixDirectoryLister reader = lister();
    EXPECT_EQ(sortedNames(reader, "d:\\"), Names{"café"});
    EXPECT_EQ(sortedNames(reader, "d:\\café\\"), Names{"über€.pdf"});
    EXPECT_FALSE(isFolder(reader, "d:\\café\\über€.pdf"));
    // Asked without a listing before, too.
    PosixDirectoryLister other = lister();
    EXPECT_NE(other.attributes("d:\\café\\über€.pdf"), invalidFileAttributes);
    EXPECT_EQ(sortedNames(other, "d:\\café\\"), Names{"über€.pdf"});
}

TEST_F(PosixDirectoryListerTest, FoldersThatAreShownAlikeAreEachEntered) {
    folder.makeFile("caf\xE9/1", "x");
    folder.makeFile("café/2", "x");
    folder.makeFile("a\\b/3", "x");
    folder.makeFile("a＼b/4", "x");
    for (const std::size_t kept : {PosixDirectoryLister::mostKept, std::size_t{3}}) {
        const Names found = walked(kept);
        if (kept > 4) {
            EXPECT_EQ(found, (Names{"d:\\a＼b\\", "d:\\a＼b\\", "d:\\a＼b\\3", "d:\\a＼b\\4",
                                    "d:\\café\\", "d:\\café\\", "d:\\café\\1", "d:\\café\\2"}));
        }
        EXPECT_EQ(found.size(), 8U);
    }
}

TEST_F(PosixDirectoryListerTest, NamesOfControlCharactersArePassedOnAsTheyAre) {
    folder.makeFile("line\nfeed\ttab", "x");
    folder.makeFile(" leading and trailing ", "x");
    folder.makeFile("-rf", "x");
    PosixDirectoryLister reader = lister();
    EXPECT_EQ(sortedNames(reader, "d:\\"),
              (Names{" leading and trailing ", "-rf", "line\nfeed\ttab"}));
}

TEST_F(PosixDirectoryListerTest, TheSecondListingIsAnsweredFromTheFirstAndTheThirdIsNot) {
    folder.makeFile("a", "x");
    PosixDirectoryLister reader = lister();
    EXPECT_EQ(sortedNames(reader, "d:\\"), Names{"a"});
    folder.makeFile("b", "x");
    EXPECT_EQ(sortedNames(reader, "d:\\"), Names{"a"});
    EXPECT_EQ(sortedNames(reader, "d:\\"), (Names{"a", "b"}));
}

TEST_F(PosixDirectoryListerTest, ANewListerKnowsNothingOfAnEarlierWalk) {
    folder.makeFile("a", "x");
    PosixDirectoryLister first = lister();
    EXPECT_EQ(sortedNames(first, "d:\\"), Names{"a"});
    folder.remove("a");
    PosixDirectoryLister second = lister();
    EXPECT_EQ(sortedNames(second, "d:\\"), Names{});
    EXPECT_EQ(second.attributes("d:\\a"), invalidFileAttributes);
}

TEST_F(PosixDirectoryListerTest, AFolderOfVeryManyNamesIsReadInParts) {
    Names expected;
    for (int i = 0; i < 1000; ++i) {
        const std::string name = "n" + std::to_string(10000 + i);
        if (i % 10 == 0) {
            folder.makeFile(name + "/inside", "x");
            expected.push_back("d:\\" + name + "\\");
            expected.push_back("d:\\" + name + "\\inside");
        } else {
            folder.makeFile(name, "x");
            expected.push_back("d:\\" + name);
        }
    }
    std::ranges::sort(expected);
    for (const std::size_t kept : {1, 2, 7, 100, 999, 1001, 1002, 1003, 5000}) {
        EXPECT_EQ(walked(kept), expected) << kept;
    }
}

TEST_F(PosixDirectoryListerTest, AnsweringInPartsTellsTypesAndAttributesOfEachName) {
    for (int i = 0; i < 20; ++i) {
        folder.makeFile("f" + std::to_string(i) + ".pdf", "x");
        folder.makeFolder("d" + std::to_string(i) + ".pdf");
    }
    PosixDirectoryLister reader = lister(3);
    const auto listing = reader.findFirst("d:\\*");
    ASSERT_TRUE(listing);
    FindData data;
    while (listing->next(data)) {
        const std::string path = "d:\\" + data.cFileName;
        const bool shouldBeFolder = data.cFileName[0] != 'f';
        EXPECT_EQ(isFolder(reader, path), shouldBeFolder) << path;
        EXPECT_EQ(reader.typeName(path), shouldBeFolder ? "Folder" : "PDF document") << path;
    }
}

TEST_F(PosixDirectoryListerTest, ATreeDeeperThanTheSystemsPathsIsWalkedToItsEnd) {
    // Made one step at a time, since no path to the bottom is short enough for the system.
    constexpr int depth = 300;
    const std::string name(60, 'x');
    const int start = ::open(".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    ASSERT_EQ(::chdir(folder.path().c_str()), 0);
    for (int i = 0; i < depth; ++i) {
        ASSERT_EQ(::mkdir(name.c_str(), 0755), 0);
        ASSERT_EQ(::mkdir("side", 0755), 0);
        ASSERT_EQ(::chdir(name.c_str()), 0);
    }
    ASSERT_EQ(::fchdir(start), 0);
    ::close(start);
    const Names found = walked();
    EXPECT_EQ(found.size(), 2U * depth);
}

TEST_F(PosixDirectoryListerTest, AWalkKeepsFewFoldersOpen) {
    std::string path = "deep";
    for (int i = 0; i < 200; ++i) {
        path += "/x";
    }
    folder.makeFolder(path);
    PosixDirectoryLister reader = lister();
    std::string walkPath = "d:\\deep\\";
    for (int i = 0; i < 200; ++i) {
        ASSERT_EQ(sortedNames(reader, walkPath), Names{"x"}) << i;
        walkPath += "x\\";
    }
    int open = 0;
    for ([[maybe_unused]] const auto& file : std::filesystem::directory_iterator("/proc/self/fd")) {
        ++open;
    }
    EXPECT_LT(open, 100);
    // Back up to a folder whose parents were closed on the way down.
    EXPECT_EQ(sortedNames(reader, "d:\\deep\\x\\x\\"), Names{"x"});
    EXPECT_EQ(sortedNames(reader, "d:\\deep\\x\\x\\x\\"), Names{"x"});
}

TEST_F(PosixDirectoryListerTest, JumpingAboutTheTreeFindsTheRightFolders) {
    folder.makeFile("a/b/c/1", "x");
    folder.makeFile("a/bb/c/2", "x");
    folder.makeFile("ab/b/c/3", "x");
    PosixDirectoryLister reader = lister();
    EXPECT_EQ(sortedNames(reader, "d:\\a\\b\\c\\"), Names{"1"});
    EXPECT_EQ(sortedNames(reader, "d:\\a\\bb\\c\\"), Names{"2"});
    EXPECT_EQ(sortedNames(reader, "d:\\ab\\b\\c\\"), Names{"3"});
    EXPECT_EQ(sortedNames(reader, "d:\\a\\"), (Names{"b", "bb"}));
    EXPECT_EQ(sortedNames(reader, "D:\\a\\b\\c\\"), Names{"1"});
    EXPECT_EQ(sortedNames(reader, "d:"), (Names{"a", "ab"}));
    EXPECT_EQ(sortedNames(reader, "d:\\a\\b\\c\\1\\2\\"), Names{"(refused)"});
    EXPECT_EQ(sortedNames(reader, "d:\\a\\..\\"), sortedNames(reader, "d:\\"));
}

TEST_F(PosixDirectoryListerTest, AFolderThatMayNotBeReadIsAnEntryAndIsRefused) {
    folder.setPermissions(".", 0755);
    folder.makeFile("closed/secret", "x");
    folder.setPermissions("closed", 0000);
    folder.makeFile("open/f", "x");
    const auto result = support::inChildProcess([&] {
        if (!support::becomeOrdinaryUser()) {
            return ChildResult::Refused;
        }
        const Names found = walked();
        const Names expected = {"d:\\closed\\", "d:\\open\\", "d:\\open\\f"};
        return found == expected ? ChildResult::Passed : ChildResult::Failed;
    });
    folder.setPermissions("closed", 0755);
    if (result == ChildResult::Refused) {
        GTEST_SKIP() << "this process can neither be refused nor become one that can";
    }
    EXPECT_EQ(result, ChildResult::Passed);
}

TEST_F(PosixDirectoryListerTest, AFolderThatMayBeListedButNotEnteredStillTellsItsKinds) {
    folder.setPermissions(".", 0755);
    folder.makeFile("half/file", "x");
    folder.makeFolder("half/folder");
    folder.makeLink("half/link", "file");
    folder.setPermissions("half", 0444);
    const auto result = support::inChildProcess([&] {
        if (!support::becomeOrdinaryUser()) {
            return ChildResult::Refused;
        }
        PosixDirectoryLister reader = lister();
        Names found;
        walk(reader, "d:\\", found);
        std::ranges::sort(found);
        const Names expected = {"d:\\half\\", "d:\\half\\file", "d:\\half\\folder\\",
                                "d:\\half\\link"};
        return found == expected ? ChildResult::Passed : ChildResult::Failed;
    });
    folder.setPermissions("half", 0755);
    if (result == ChildResult::Refused) {
        GTEST_SKIP() << "this process can neither be refused nor become one that can";
    }
    EXPECT_EQ(result, ChildResult::Passed);
}

TEST_F(PosixDirectoryListerTest, AFolderWithAnotherFileSystemOnItIsAnEntryAndNotEntered) {
    folder.makeFolder("mounted");
    folder.makeFile("plain/f", "x");
    const auto result = support::inChildProcess([&] {
        if (::unshare(CLONE_NEWNS) != 0 ||
            ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            ::mount("ram", folder.pathOf("mounted").c_str(), "tmpfs", 0, nullptr) != 0) {
            return ChildResult::Refused;
        }
        folder.makeFile("mounted/inside/f", "x");
        PosixDirectoryLister reader = lister();
        const bool refusedBelow = !reader.findFirst("d:\\mounted\\inside\\*");
        const Names expected = {"d:\\mounted\\", "d:\\plain\\", "d:\\plain\\f"};
        // As a drive of its own it is listed.
        PosixDirectoryLister own([&](char) { return std::optional(folder.pathOf("mounted")); },
                                 typeNames);
        const bool right = refusedBelow && walked() == expected &&
                           sortedNames(own, "d:\\") == Names{"inside"} &&
                           sortedNames(own, "d:\\inside\\") == Names{"f"};
        return right ? ChildResult::Passed : ChildResult::Failed;
    });
    if (result == ChildResult::Refused) {
        GTEST_SKIP() << "mounting needs rights that this process does not have";
    }
    EXPECT_EQ(result, ChildResult::Passed);
}

TEST_F(PosixDirectoryListerTest, ADriveThatVanishesInMidWalkIsRefusedFromThenOn) {
    folder.makeFile("drive/a/f", "x");
    folder.makeFile("drive/b/f", "x");
    PosixDirectoryLister reader([&](char) { return std::optional(folder.pathOf("drive")); },
                                typeNames);
    EXPECT_EQ(sortedNames(reader, "d:\\"), (Names{"a", "b"}));
    folder.remove("drive");
    EXPECT_FALSE(reader.findFirst("d:\\a\\*"));
    EXPECT_FALSE(reader.findFirst("d:\\b\\*"));
    EXPECT_EQ(reader.attributes("d:\\a\\f"), invalidFileAttributes);
}

TEST_F(PosixDirectoryListerTest, ARunningListingOutlivesItsFolder) {
    folder.makeFile("a/1", "x");
    folder.makeFile("a/2", "x");
    PosixDirectoryLister reader = lister();
    const auto listing = reader.findFirst("d:\\a\\*");
    ASSERT_TRUE(listing);
    folder.remove("a");
    int count = 0;
    FindData data;
    while (listing->next(data)) {
        ++count;
    }
    EXPECT_EQ(count, 4);
}

TEST_F(PosixDirectoryListerTest, LongNamesAreWhole) {
    std::string longest;
    for (int i = 0; i < 85; ++i) {
        longest += "日";
    }
    folder.makeFile(longest + "/" + std::string(255, 'x'), "1");
    // Each byte of this one becomes three when it is shown.
    folder.makeFile(std::string(255, '\x80'), "1");
    PosixDirectoryLister reader = lister();
    std::string euros;
    for (int i = 0; i < 255; ++i) {
        euros += "€";
    }
    EXPECT_EQ(sortedNames(reader, "d:\\"), (Names{euros, longest}));
    EXPECT_EQ(sortedNames(reader, "d:\\" + longest + "\\"), Names{std::string(255, 'x')});
    EXPECT_FALSE(isFolder(reader, "d:\\" + euros));
}

}  // namespace
}  // namespace platform::posix
