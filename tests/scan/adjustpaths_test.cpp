#include "scan/adjustpaths.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/failure.h"

namespace {

base::MediaInfo medium(std::int32_t id, const std::string& driveLetter) {
    base::MediaInfo media;
    media.mediaId = id;
    media.driveLetter = driveLetter;
    return media;
}

const base::MediaInfo cased = medium(12, "C");

class Captions : public scan::ProgressDisplay {
  public:
    void setDisplayProgress(const std::string& caption) override { events.push_back(caption); }
    std::vector<std::string> events;
};

class EventsBehind : public base::PendingEvents {
  public:
    explicit EventsBehind(Captions& captions) : captions_(captions) {}
    void runPendingEvents() override { captions_.events.emplace_back("events"); }

  private:
    Captions& captions_;
};

}  // namespace

TEST(EntryPath, TakesTheMediaIdForALowerCaseDrive) {
    EXPECT_EQ(scan::toEntryPathForFile("c:\\dir\\sub\\", cased), "12:\\dir\\sub");
    EXPECT_EQ(scan::toEntryPathForFolder("c:\\dir\\sub\\", cased), "12:\\dir\\sub");
}

TEST(EntryPath, OfTheRootEndsBehindTheColon) {
    EXPECT_EQ(scan::toEntryPathForFile("c:\\", cased), "12:");
    EXPECT_EQ(scan::toEntryPathForFolder("c:\\", cased), "12:");
}

TEST(EntryPath, DropsThreeCharactersWhereTheCaseOfTheLetterMatches) {
    EXPECT_EQ(scan::toEntryPathForFile("C:\\dir\\sub\\", cased), "12:dir\\sub");
    EXPECT_EQ(scan::toEntryPathForFolder("C:\\dir\\sub\\", cased), "12:dir\\sub");
    EXPECT_EQ(scan::toEntryPathForFile("C:\\", cased), "12:");
}

TEST(EntryPath, ForAFolderFailsAtTheRootWhereTheCaseMatches) {
    EXPECT_THROW(scan::toEntryPathForFolder("C:\\", cased), base::InvalidArgumentFailure);
}

TEST(EntryPath, FindsTheDriveAnywhereInThePath) {
    EXPECT_EQ(scan::toEntryPathForFile("c:\\aC:\\b\\", cased), "12:b");
    EXPECT_EQ(scan::toEntryPathForFile("c:\\aC:éx\\", cased), "12:x");
}

TEST(EntryPath, WithoutALetterDropsThroughTheFirstColonAndOneMore) {
    EXPECT_EQ(scan::toEntryPathForFile("c:\\dir\\", medium(3, "")), "3:dir");
}

TEST(EntryPath, DropsAsManyCharactersAsALongerLetterHas) {
    EXPECT_EQ(scan::toEntryPathForFile("é:x\\dir\\", medium(3, "AB")), "3:\\dir");
}

TEST(EntryPath, FailsWhereThereIsLessThanTheDriveToDrop) {
    EXPECT_THROW(scan::toEntryPathForFile("\\", cased), base::InvalidArgumentFailure);
    EXPECT_THROW(scan::toEntryPathForFile("c:\\C:", cased), base::InvalidArgumentFailure);
    EXPECT_THROW(scan::toEntryPathForFolder("", cased), base::InvalidArgumentFailure);
}

TEST(WindowProgress, ShowsTheCountBehindTwoBlanksAndThenLetsEventsRun) {
    Captions captions;
    EventsBehind events(captions);
    scan::WindowProgress progress(captions, events);
    progress.showScanProgress(17);
    EXPECT_EQ(captions.events, (std::vector<std::string>{"Scanning:  File 17", "events"}));
}

TEST(WindowProgress, CountsTo32767AndNoFurther) {
    Captions captions;
    EventsBehind events(captions);
    scan::WindowProgress progress(captions, events);
    progress.showScanProgress(32767);
    EXPECT_EQ(captions.events.front(), "Scanning:  File 32767");
    captions.events.clear();
    EXPECT_THROW(progress.showScanProgress(32768), base::OverflowFailure);
    EXPECT_TRUE(captions.events.empty());
}

TEST(WindowProgress, SaysWhatHoldsMoreWhenItsCountIsFull) {
    Captions captions;
    EventsBehind events(captions);
    scan::WindowProgress progress(captions, events);
    try {
        progress.showScanProgress(32768);
        FAIL() << "no failure";
    } catch (const base::OverflowFailure& failure) {
        EXPECT_NE(failure.text().find("32,767"), std::string::npos) << failure.text();
        EXPECT_NE(failure.text().find("vdln scan"), std::string::npos) << failure.text();
    }
}
