// What reading a drive may rely on, whoever answers: the machine and the fake one of the tests.

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "base/failure.h"
#include "platform/drives.h"
#include "tests/platform/machine_parts.h"
#include "tests/support/fake_drives.h"
#include "tests/support/memory_profile.h"
#include "tests/support/temporary_folder.h"

namespace platform {
namespace {

/// A machine with the drive "p:" labelled "Photos".
class Subject {
  public:
    virtual ~Subject() = default;
    virtual Drives& drives() = 0;
    virtual void takeMediumAway() = 0;
    virtual std::string someFolder() = 0;
};

class FakeSubject : public Subject {
  public:
    FakeSubject() {
        support::FakeDrive& drive = drives_.add('p', "Photos");
        drive.totalBytes = 3'000'000'000;
        drive.totalFree = 2'000'000'000;
        drive.freeToCaller = 1'000'000'000;
    }
    Drives& drives() override { return drives_; }
    void takeMediumAway() override { drives_.at('p').ready = false; }
    std::string someFolder() override { return "/some/folder"; }

  private:
    support::FakeDrives drives_;
};

class MachineSubject : public Subject {
  public:
    MachineSubject() {
        profile_.files["vdln.ini"] = "[drives]\np=" + folder_.makeFolder("Photos") + "\n";
    }
    Drives& drives() override { return *drives_; }
    void takeMediumAway() override { folder_.remove("Photos"); }
    std::string someFolder() override { return folder_.makeFolder("folder"); }

  private:
    support::TemporaryFolder folder_;
    support::MemoryProfile profile_;
    std::unique_ptr<Drives> drives_ = machineDrives(profile_, "vdln.ini");
};

enum class Kind { Fake, Machine };

class DrivesContract : public testing::TestWithParam<Kind> {
  protected:
    DrivesContract() {
        if (GetParam() == Kind::Fake) {
            subject_ = std::make_unique<FakeSubject>();
        } else {
            subject_ = std::make_unique<MachineSubject>();
        }
    }
    Drives& drives() { return subject_->drives(); }
    DriveListEntry entryOf(char letter) {
        for (const DriveListEntry& entry : drives().list()) {
            if (entry.letter == letter) {
                return entry;
            }
        }
        return {'?', "(missing)", "", 0};
    }

    std::unique_ptr<Subject> subject_;
};

std::uint64_t countOf(CountHalves halves) {
    return static_cast<std::uint64_t>(static_cast<std::uint32_t>(halves.high)) << 32 |
           static_cast<std::uint32_t>(halves.low);
}

TEST_P(DrivesContract, TheListShowsLetterAndLabel) {
    EXPECT_EQ(entryOf('p').text(), "p: [Photos]");
}

TEST_P(DrivesContract, TheDriveNameIsTheHeadOfAListEntry) {
    const auto service = drives().createFileSystemObject();
    EXPECT_EQ(service->getDriveName("p: [Photos]"), "p:");
    EXPECT_EQ(service->getDriveName("p:"), "p:");
    EXPECT_EQ(service->getDriveName("p:\\dir"), "p:");
    EXPECT_EQ(service->getDriveName("nothing"), "");
    EXPECT_EQ(service->getDriveName(""), "");
}

TEST_P(DrivesContract, TheDriveAnswersTheThreeQuestions) {
    const auto drive = drives().createFileSystemObject()->getDrive("p:");
    EXPECT_EQ(drive->volumeName(), "Photos");
    EXPECT_EQ(drive->driveLetter(), "P");
    EXPECT_EQ(drive->driveType(), entryOf('p').type);
}

TEST_P(DrivesContract, ADriveIsFoundInAnyCase) {
    EXPECT_EQ(drives().createFileSystemObject()->getDrive("P:")->volumeName(), "Photos");
}

TEST_P(DrivesContract, AMissingDriveIsAFailure) {
    const auto service = drives().createFileSystemObject();
    EXPECT_THROW(service->getDrive("q:"), base::FileFailure);
    EXPECT_THROW(service->getDrive(""), base::FileFailure);
}

TEST_P(DrivesContract, SpaceComesInHalves) {
    DiskSpace space;
    ASSERT_TRUE(drives().getDiskFreeSpace("p:", space));
    EXPECT_GT(countOf(space.totalBytes), 0U);
    EXPECT_GE(countOf(space.totalBytes), countOf(space.totalFree));
    EXPECT_GE(countOf(space.totalFree), countOf(space.freeToCaller));
    DiskSpace ofPath;
    ASSERT_TRUE(drives().getDiskFreeSpace("P:\\", ofPath));
    EXPECT_EQ(countOf(ofPath.totalBytes), countOf(space.totalBytes));
}

TEST_P(DrivesContract, SpaceOfAMissingDriveFails) {
    DiskSpace space;
    EXPECT_FALSE(drives().getDiskFreeSpace("q:", space));
    EXPECT_FALSE(drives().getDiskFreeSpace("", space));
}

TEST_P(DrivesContract, ADriveWithoutMediumFails) {
    const auto drive = drives().createFileSystemObject()->getDrive("p:");
    subject_->takeMediumAway();
    EXPECT_THROW(drive->volumeName(), base::FileFailure);
    DiskSpace space;
    EXPECT_FALSE(drives().getDiskFreeSpace("p:", space));
}

TEST_P(DrivesContract, AFolderMadeADriveTakesAFreeLetter) {
    const std::string folder = subject_->someFolder();
    const char letter = drives().makeFolderDrive(folder);
    EXPECT_EQ(entryOf(letter).text(), std::string(1, letter) + ": [folder]");
    EXPECT_EQ(entryOf(letter).folder, folder);
    const char other = drives().makeFolderDrive(folder);
    EXPECT_NE(other, letter);
    EXPECT_EQ(entryOf('p').label, "Photos");
}

INSTANTIATE_TEST_SUITE_P(Machines, DrivesContract, testing::Values(Kind::Fake, Kind::Machine),
                         [](const auto& machine) {
                             return machine.param == Kind::Fake ? "Fake" : "Machine";
                         });

}  // namespace
}  // namespace platform
