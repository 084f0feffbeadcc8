#include "platform/posix/posix_file_opener.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>

#include <string>

#include "base/failure.h"
#include "tests/platform/posix/child_process.h"
#include "tests/support/temporary_folder.h"

namespace platform::posix {
namespace {

using Mode = base::FileOpener::Mode;
using Refusal = base::FileOpener::Refusal;
using Lock = base::RandomAccessFile::Lock;

class PosixFileOpenerTest : public testing::Test {
  protected:
    std::unique_ptr<base::RandomAccessFile> opened(const std::string& path, Mode mode) {
        auto result = opener.open(path, mode);
        EXPECT_EQ(result.refusal, Refusal::None) << result.reason;
        return std::move(result.file);
    }
    Refusal refusal(const std::string& path, Mode mode) {
        const auto result = opener.open(path, mode);
        EXPECT_FALSE(result.file);
        EXPECT_FALSE(result.reason.empty());
        return result.refusal;
    }

    support::TemporaryFolder folder;
    PosixFileOpener opener;
};

TEST_F(PosixFileOpenerTest, WhatIsWrittenIsReadAtItsOffset) {
    const auto file = opened(folder.pathOf("new"), Mode::CreateNew);
    EXPECT_TRUE(file->writable());
    EXPECT_EQ(file->writeAt(4, "later", 5), 5U);
    EXPECT_EQ(file->writeAt(0, "now", 3), 3U);
    EXPECT_EQ(file->size(), 9U);
    char bytes[16] = {};
    EXPECT_EQ(file->readAt(0, bytes, sizeof bytes), 9U);
    EXPECT_EQ(std::string(bytes, 9), std::string("now\0later", 9));
    EXPECT_EQ(file->readAt(6, bytes, 2), 2U);
    EXPECT_EQ(std::string(bytes, 2), "te");
    EXPECT_EQ(file->readAt(9, bytes, 1), 0U);
    EXPECT_EQ(file->readAt(1'000'000, bytes, 1), 0U);
}

TEST_F(PosixFileOpenerTest, TruncateCutsAndExtends) {
    const auto file = opened(folder.makeFile("f", "abcdef"), Mode::ReadWrite);
    file->truncate(2);
    EXPECT_EQ(folder.read("f"), "ab");
    file->truncate(4);
    EXPECT_EQ(folder.read("f"), std::string("ab\0\0", 4));
    file->sync();
}

TEST_F(PosixFileOpenerTest, OffsetsBeyondFourGigabytesWork) {
    const auto file = opened(folder.makeSparseFile("big", 5'000'000'000), Mode::ReadWrite);
    EXPECT_EQ(file->size(), 5'000'000'000U);
    EXPECT_EQ(file->writeAt(4'999'999'999, "x", 1), 1U);
    char byte = 0;
    EXPECT_EQ(file->readAt(4'999'999'999, &byte, 1), 1U);
    EXPECT_EQ(byte, 'x');
}

TEST_F(PosixFileOpenerTest, ANewFileIsSyncedWithItsName) {
    const auto file = opened(folder.pathOf("new"), Mode::CreateNew);
    file->writeAt(0, "x", 1);
    EXPECT_NO_THROW(file->sync());
    EXPECT_NO_THROW(file->sync());
}

TEST_F(PosixFileOpenerTest, RefusalsSayWhy) {
    const std::string file = folder.makeFile("f", "x");
    EXPECT_EQ(refusal(folder.pathOf("missing"), Mode::Read), Refusal::NotFound);
    EXPECT_EQ(refusal(folder.pathOf("missing"), Mode::ReadWrite), Refusal::NotFound);
    EXPECT_EQ(refusal(folder.pathOf("missing/f"), Mode::CreateNew), Refusal::NotFound);
    EXPECT_EQ(refusal(file + "/f", Mode::Read), Refusal::NotFound);
    EXPECT_EQ(refusal("", Mode::Read), Refusal::NotFound);
    EXPECT_EQ(refusal(std::string("a\0b", 3), Mode::Read), Refusal::NotFound);
    EXPECT_EQ(refusal(file, Mode::CreateNew), Refusal::Exists);
    EXPECT_EQ(refusal(folder.path(), Mode::CreateNew), Refusal::Exists);
    EXPECT_EQ(refusal(folder.pathOf(std::string(300, 'x')), Mode::CreateNew), Refusal::Other);
}

TEST_F(PosixFileOpenerTest, FoldersPipesAndDevicesAreNoFiles) {
    const std::string pipe = folder.makeFifo("pipe");
    for (const Mode mode : {Mode::Read, Mode::ReadWrite}) {
        EXPECT_EQ(refusal(folder.path(), mode), Refusal::NotAFile);
        EXPECT_EQ(refusal(pipe, mode), Refusal::NotAFile);
        EXPECT_EQ(refusal("/dev/null", mode), Refusal::NotAFile);
    }
    EXPECT_EQ(refusal(pipe, Mode::CreateNew), Refusal::Exists);
}

TEST_F(PosixFileOpenerTest, AFileOpenedForReadingIsNotWritten) {
    const auto file = opened(folder.makeFile("f", "x"), Mode::Read);
    EXPECT_FALSE(file->writable());
    EXPECT_THROW(file->writeAt(0, "y", 1), base::FileFailure);
    EXPECT_THROW(file->truncate(0), base::FileFailure);
    EXPECT_EQ(folder.read("f"), "x");
}

TEST_F(PosixFileOpenerTest, AFailureNamesTheFileAndTheReason) {
    const auto file = opened(folder.makeFile("f", "x"), Mode::Read);
    try {
        file->writeAt(0, "y", 1);
        FAIL();
    } catch (const base::FileFailure& failure) {
        EXPECT_EQ(failure.text(), folder.pathOf("f") + ": Bad file descriptor");
    }
}

TEST_F(PosixFileOpenerTest, AFullDiskIsAFailureWithItsReason) {
    const std::string disk = folder.makeFolder("disk");
    const auto result = support::inChildProcess([&] {
        if (::unshare(CLONE_NEWNS) != 0 ||
            ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            ::mount("ram", disk.c_str(), "tmpfs", 0, "size=64k") != 0) {
            return support::ChildResult::Refused;
        }
        const auto file = PosixFileOpener().open(disk + "/f", Mode::CreateNew).file;
        const std::string block(4096, 'x');
        std::uint64_t offset = 0;
        try {
            while (offset < 1'000'000) {
                offset += file->writeAt(offset, block.data(), block.size());
            }
        } catch (const base::FileFailure& failure) {
            const bool right = failure.text() == disk + "/f: No space left on device" &&
                               offset == 65'536 && file->size() == offset;
            return right ? support::ChildResult::Passed : support::ChildResult::Failed;
        }
        return support::ChildResult::Failed;
    });
    if (result == support::ChildResult::Refused) {
        GTEST_SKIP() << "mounting needs rights that this process does not have";
    }
    EXPECT_EQ(result, support::ChildResult::Passed);
}

TEST_F(PosixFileOpenerTest, OneIdentityByWhateverPath) {
    const std::string path = folder.makeFile("f", "x");
    const std::string link = folder.makeLink("link", "f");
    const std::string hard = folder.makeHardLink("hard", "f");
    const std::string other = folder.makeFile("g", "x");
    const std::string identity = opened(path, Mode::Read)->identity();
    EXPECT_EQ(opened(link, Mode::ReadWrite)->identity(), identity);
    EXPECT_EQ(opened(hard, Mode::Read)->identity(), identity);
    EXPECT_EQ(opened(folder.path() + "/./f", Mode::Read)->identity(), identity);
    EXPECT_NE(opened(other, Mode::Read)->identity(), identity);
}

TEST_F(PosixFileOpenerTest, LocksExcludeEachOther) {
    const std::string path = folder.makeFile("f", "x");
    const auto first = opened(path, Mode::ReadWrite);
    const auto second = opened(path, Mode::ReadWrite);
    EXPECT_TRUE(first->tryLock(Lock::Shared));
    EXPECT_TRUE(second->tryLock(Lock::Shared));
    EXPECT_FALSE(first->tryLock(Lock::Exclusive));
    EXPECT_TRUE(second->tryLock(Lock::None));
    EXPECT_TRUE(first->tryLock(Lock::Exclusive));
    EXPECT_FALSE(second->tryLock(Lock::Shared));
    EXPECT_TRUE(first->tryLock(Lock::Shared));
    EXPECT_TRUE(second->tryLock(Lock::Shared));
}

TEST_F(PosixFileOpenerTest, ARefusedLockKeepsTheOneHeldBefore) {
    const std::string path = folder.makeFile("f", "x");
    const auto first = opened(path, Mode::ReadWrite);
    const auto second = opened(path, Mode::ReadWrite);
    const auto third = opened(path, Mode::ReadWrite);
    ASSERT_TRUE(first->tryLock(Lock::Shared));
    ASSERT_TRUE(second->tryLock(Lock::Shared));
    ASSERT_FALSE(first->tryLock(Lock::Exclusive));
    ASSERT_TRUE(second->tryLock(Lock::None));
    EXPECT_FALSE(third->tryLock(Lock::Exclusive));
}

TEST_F(PosixFileOpenerTest, ClosingFreesOnlyTheOwnLock) {
    const std::string path = folder.makeFile("f", "x");
    const auto first = opened(path, Mode::ReadWrite);
    ASSERT_TRUE(first->tryLock(Lock::Exclusive));
    opened(path, Mode::Read).reset();
    auto second = opened(path, Mode::ReadWrite);
    EXPECT_FALSE(second->tryLock(Lock::Exclusive));
}

TEST_F(PosixFileOpenerTest, ALockHoldsAgainstAnotherProcess) {
    const std::string path = folder.makeFile("f", "x");
    const auto file = opened(path, Mode::ReadWrite);
    ASSERT_TRUE(file->tryLock(Lock::Exclusive));
    EXPECT_EQ(support::inChildProcess([&] {
                  const auto other = PosixFileOpener().open(path, Mode::ReadWrite);
                  return !other.file->tryLock(Lock::Shared) ? support::ChildResult::Passed
                                                            : support::ChildResult::Failed;
              }),
              support::ChildResult::Passed);
}

TEST_F(PosixFileOpenerTest, ReadOnlyAndForbiddenFilesAreToldApart) {
    folder.setPermissions(".", 0755);
    const std::string readOnly = folder.makeFile("readonly", "x");
    folder.setPermissions("readonly", 0444);
    const std::string forbidden = folder.makeFile("forbidden", "x");
    folder.setPermissions("forbidden", 0000);
    folder.makeFolder("locked");
    folder.setPermissions("locked", 0555);
    const auto result = support::inChildProcess([&] {
        if (!support::becomeOrdinaryUser()) {
            return support::ChildResult::Refused;
        }
        PosixFileOpener other;
        const bool right =
            other.open(readOnly, Mode::ReadWrite).refusal == Refusal::NotWritable &&
            other.open(readOnly, Mode::Read).refusal == Refusal::None &&
            other.open(forbidden, Mode::ReadWrite).refusal == Refusal::NoAccess &&
            other.open(forbidden, Mode::Read).refusal == Refusal::NoAccess &&
            other.open(folder.pathOf("locked/new"), Mode::CreateNew).refusal == Refusal::NoAccess;
        return right ? support::ChildResult::Passed : support::ChildResult::Failed;
    });
    if (result == support::ChildResult::Refused) {
        GTEST_SKIP() << "this process can neither be refused nor become one that can";
    }
    EXPECT_EQ(result, support::ChildResult::Passed);
}

TEST_F(PosixFileOpenerTest, FilesAreNotInheritedByOtherPrograms) {
    const auto file = opened(folder.makeFile("f", "x"), Mode::Read);
    const auto result = support::inChildProcess([&] {
        // Every descriptor above the three standard ones has to close by itself.
        for (int number = 3; number < 64; ++number) {
            const int flags = ::fcntl(number, F_GETFD);
            struct stat facts {};
            if (flags >= 0 && ::fstat(number, &facts) == 0 && S_ISREG(facts.st_mode) &&
                facts.st_size == 1 && (flags & FD_CLOEXEC) == 0) {
                return support::ChildResult::Failed;
            }
        }
        return support::ChildResult::Passed;
    });
    EXPECT_EQ(result, support::ChildResult::Passed);
}

TEST_F(PosixFileOpenerTest, PauseReturns) {
    opener.pause(0);
    opener.pause(-5);
    opener.pause(1);
}

}  // namespace
}  // namespace platform::posix
