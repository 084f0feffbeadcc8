#include "platform/windows/windows_file_opener.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/windows/handle.h"
#include "platform/windows/native_path.h"
#include "platform/windows/wide_text.h"
#include "platform/windows/windows_api.h"
#include "tests/support/temporary_folder.h"

namespace platform::windows {
namespace {

using Mode = base::FileOpener::Mode;
using Refusal = base::FileOpener::Refusal;
using Lock = base::RandomAccessFile::Lock;
using File = std::unique_ptr<base::RandomAccessFile>;

class WindowsFileOpenerTest : public testing::Test {
  protected:
    File open(const std::string& path, Mode mode = Mode::ReadWrite) {
        auto opened = files.open(path, mode);
        EXPECT_TRUE(opened.file) << path << ": " << opened.reason;
        return std::move(opened.file);
    }
    Refusal refusal(const std::string& path, Mode mode = Mode::ReadWrite) {
        return files.open(path, mode).refusal;
    }
    static std::string contentOf(base::RandomAccessFile& file) {
        std::string content(100, '\0');
        content.resize(file.readAt(0, content.data(), content.size()));
        return content;
    }

    support::TemporaryFolder folder;
    WindowsFileOpener files;
};

TEST_F(WindowsFileOpenerTest, ReadsAndWritesAtOffsets) {
    const File file = open(folder.makeFile("f", "0123456789"));
    EXPECT_EQ(file->writeAt(3, "abc", 3), 3U);
    EXPECT_EQ(file->writeAt(12, "end", 3), 3U);
    EXPECT_EQ(contentOf(*file), std::string("012abc6789\0\0end", 15));
    char bytes[4] = {};
    EXPECT_EQ(file->readAt(13, bytes, 4), 2U);
    EXPECT_EQ(file->readAt(15, bytes, 4), 0U);
    EXPECT_EQ(file->readAt(1000, bytes, 4), 0U);
    file->truncate(5);
    EXPECT_EQ(file->size(), 5U);
    file->truncate(7);
    EXPECT_EQ(contentOf(*file), std::string("012ab\0\0", 7));
    file->sync();
    EXPECT_EQ(folder.read("f"), std::string("012ab\0\0", 7));
}

TEST_F(WindowsFileOpenerTest, OffsetsBeyondFourGigabytesAreOffsets) {
    const File file = open(folder.makeSparseFile("big", 6'000'000'000));
    EXPECT_EQ(file->size(), 6'000'000'000U);
    EXPECT_EQ(file->writeAt(5'000'000'000, "x", 1), 1U);
    char byte = 0;
    EXPECT_EQ(file->readAt(5'000'000'000, &byte, 1), 1U);
    EXPECT_EQ(byte, 'x');
    EXPECT_EQ(file->readAt(5'000'000'000 - (std::uint64_t{1} << 32), &byte, 1), 1U);
    EXPECT_EQ(byte, '\0');
}

TEST_F(WindowsFileOpenerTest, SaysWhyThereIsNoFile) {
    const std::string file = folder.makeFile("f");
    EXPECT_EQ(refusal(folder.pathOf("missing")), Refusal::NotFound);
    EXPECT_EQ(refusal(folder.pathOf("missing\\f")), Refusal::NotFound);
    EXPECT_EQ(refusal(""), Refusal::NotFound);
    EXPECT_EQ(refusal(std::string("f\0g", 3)), Refusal::NotFound);
    EXPECT_EQ(refusal(folder.path()), Refusal::NotAFile);
    EXPECT_EQ(refusal("NUL"), Refusal::NotAFile);
    EXPECT_EQ(refusal(file, Mode::CreateNew), Refusal::Exists);
    EXPECT_EQ(refusal(folder.path(), Mode::CreateNew), Refusal::Exists);
    EXPECT_NE(files.open(folder.pathOf("missing"), Mode::Read).reason, "");
}

TEST_F(WindowsFileOpenerTest, AReadOnlyFileIsReadButNotWritten) {
    const std::string path = folder.makeFile("f", "text");
    ::SetFileAttributesW(wideText(path).c_str(), FILE_ATTRIBUTE_READONLY);
    if (Handle(::CreateFileW(wideText(path).c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0,
                             nullptr))
            .isOpen()) {
        GTEST_SKIP() << "this system lets its master write all files";
    }
    EXPECT_EQ(refusal(path), Refusal::NotWritable);
    EXPECT_FALSE(open(path, Mode::Read)->writable());
    ::SetFileAttributesW(wideText(path).c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_TRUE(open(path)->writable());
}

TEST_F(WindowsFileOpenerTest, AFileThatAnotherProgramDoesNotShareIsSaidToBeInUse) {
    const std::string path = folder.makeFile("f");
    const Handle other(::CreateFileW(wideText(path).c_str(), GENERIC_READ | GENERIC_WRITE, 0,
                                     nullptr, OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(other.isOpen());
    const auto opened = files.open(path, Mode::ReadWrite);
    EXPECT_EQ(opened.refusal, Refusal::Other);
    EXPECT_NE(opened.reason, "");
}

TEST_F(WindowsFileOpenerTest, NamesInOtherScriptsAndLongPathsAreOpened) {
    open(folder.pathOf("архив 東京 😀.mdb"), Mode::CreateNew)->writeAt(0, "x", 1);
    EXPECT_EQ(folder.read("архив 東京 😀.mdb"), "x");

    std::string path = folder.path();
    for (int depth = 0; depth < 4; ++depth) {
        path += "\\" + std::string(100, 'x');
        ASSERT_TRUE(::CreateDirectoryW(verbatimPath(wideText(path)).c_str(), nullptr)) << path;
    }
    path += "/archive.mdb";
    open(path, Mode::CreateNew)->writeAt(0, "y", 1);
    EXPECT_EQ(contentOf(*open(path, Mode::Read)), "y");
}

TEST_F(WindowsFileOpenerTest, OneFileHasOneIdentityUnderAllItsNames) {
    const std::string path = folder.makeFile("f");
    const std::string other = folder.makeHardLink("other", "f");
    const std::string different = folder.makeFile("different");
    EXPECT_EQ(open(path)->identity(), open(other)->identity());
    EXPECT_NE(open(path)->identity(), open(different)->identity());
}

class WindowsFileLocks : public WindowsFileOpenerTest {
  protected:
    const std::string path = folder.makeFile("f", "0123456789");
    const File one = open(path);
    const File two = open(path);
};

TEST_F(WindowsFileLocks, SharedOnesGoTogetherAndAnExclusiveOneStandsAlone) {
    EXPECT_TRUE(one->tryLock(Lock::Shared));
    EXPECT_TRUE(two->tryLock(Lock::Shared));
    EXPECT_TRUE(two->tryLock(Lock::None));
    EXPECT_FALSE(two->tryLock(Lock::Exclusive));
    EXPECT_TRUE(one->tryLock(Lock::None));
    EXPECT_TRUE(two->tryLock(Lock::Exclusive));
    EXPECT_FALSE(one->tryLock(Lock::Shared));
    EXPECT_FALSE(one->tryLock(Lock::Exclusive));
    EXPECT_TRUE(two->tryLock(Lock::Exclusive));
}

TEST_F(WindowsFileLocks, ASharedOneBecomesExclusiveWhenNobodyElseHasOne) {
    EXPECT_TRUE(one->tryLock(Lock::Shared));
    EXPECT_TRUE(two->tryLock(Lock::Shared));
    EXPECT_FALSE(one->tryLock(Lock::Exclusive));
    // The shared one is still held.
    EXPECT_FALSE(two->tryLock(Lock::Exclusive));
    EXPECT_TRUE(two->tryLock(Lock::None));
    EXPECT_TRUE(one->tryLock(Lock::Exclusive));
    EXPECT_FALSE(two->tryLock(Lock::Shared));
}

TEST_F(WindowsFileLocks, AnExclusiveOneBecomesSharedAtOnce) {
    EXPECT_TRUE(one->tryLock(Lock::Exclusive));
    EXPECT_TRUE(one->tryLock(Lock::Shared));
    EXPECT_TRUE(two->tryLock(Lock::Shared));
    EXPECT_FALSE(one->tryLock(Lock::Exclusive));
}

TEST_F(WindowsFileLocks, ClosingTheFileGivesItsLockUp) {
    {
        const File three = open(path);
        EXPECT_TRUE(three->tryLock(Lock::Exclusive));
        EXPECT_FALSE(one->tryLock(Lock::Shared));
    }
    EXPECT_TRUE(one->tryLock(Lock::Exclusive));
}

TEST_F(WindowsFileLocks, LocksKeepNobodyFromReadingTheBytes) {
    EXPECT_TRUE(one->tryLock(Lock::Exclusive));
    EXPECT_EQ(contentOf(*two), "0123456789");
    EXPECT_EQ(folder.read("f"), "0123456789");
    EXPECT_EQ(one->writeAt(0, "x", 1), 1U);
}

TEST_F(WindowsFileLocks, AFileOpenedForReadingTakesSharedOnes) {
    const File reader = open(path, Mode::Read);
    EXPECT_TRUE(reader->tryLock(Lock::Shared));
    EXPECT_FALSE(one->tryLock(Lock::Exclusive));
    EXPECT_TRUE(one->tryLock(Lock::Shared));
}

}  // namespace
}  // namespace platform::windows
