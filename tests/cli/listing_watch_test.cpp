#include "cli/listing_watch.h"

#include <gtest/gtest.h>

#include <vector>

#include "tests/support/fake_disk.h"

namespace cli {
namespace {

class Notes : public ListingObserver {
  public:
    void folderEntered(const std::string& folder) override { notes.push_back("in " + folder); }
    void folderRefused(const std::string& folder, const std::string& reason) override {
        notes.push_back("no " + folder + ": " + reason);
    }

    std::vector<std::string> notes;
};

class MountPointLister : public support::FakeDirectoryLister {
  public:
    using FakeDirectoryLister::FakeDirectoryLister;
    std::string whyNotListed() const override { return {}; }
};

class ListingWatchTest : public testing::Test {
  protected:
    support::FakeDisk disk;
    Notes observer;
};

TEST_F(ListingWatchTest, TellsEachFolderOnce) {
    disk.addFolder("d:\\a");
    support::FakeDirectoryLister lister(disk);
    ListingWatch watch(lister, observer);
    EXPECT_NE(watch.findFirst("d:\\*"), nullptr);
    EXPECT_NE(watch.findFirst("d:\\*"), nullptr);
    EXPECT_NE(watch.findFirst("d:\\a\\*"), nullptr);
    EXPECT_EQ(observer.notes, (std::vector<std::string>{"in d:\\", "in d:\\a\\"}));
}

TEST_F(ListingWatchTest, TellsAFolderThatCannotBeListedOnce) {
    support::FakeDirectoryLister lister(disk);
    ListingWatch watch(lister, observer);
    EXPECT_EQ(watch.findFirst("d:\\*"), nullptr);
    EXPECT_EQ(watch.findFirst("d:\\*"), nullptr);
    EXPECT_EQ(observer.notes,
              (std::vector<std::string>{"in d:\\", "no d:\\: the folder cannot be listed"}));
}

TEST_F(ListingWatchTest, AnotherFileSystemIsNoFault) {
    MountPointLister lister(disk);
    ListingWatch watch(lister, observer);
    EXPECT_EQ(watch.findFirst("d:\\*"), nullptr);
    EXPECT_EQ(observer.notes, (std::vector<std::string>{"in d:\\"}));
}

}  // namespace
}  // namespace cli
