#include "open/archive_choice.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/failure.h"
#include "open/archive_texts.h"
#include "tests/open/open_fixture.h"

namespace open {
namespace {

using base::MessageAnswer;
using Log = std::vector<std::string>;

class ArchiveChoiceTest : public support::OpenFixture {
  protected:
    void loadSixArchives() {
        writeSixArchives();
        choice.loadSettings();
    }
    base::ArchiveLocation inFolder(const std::string& name) const {
        return {folder.path() + "/", name};
    }
};

TEST_F(ArchiveChoiceTest, WithoutSettingsAllSixRowsAreEmpty) {
    choice.loadSettings();
    for (int position = 1; position <= ArchiveChoice::rowCount; ++position) {
        EXPECT_EQ(choice.row(position), base::ArchiveLocation{}) << position;
    }
}

TEST_F(ArchiveChoiceTest, RowsOneToFiveAreRecentAndRowSixIsTheCurrentArchive) {
    loadSixArchives();
    EXPECT_EQ(choice.row(1), (base::ArchiveLocation{"/r1/", "1.mdb"}));
    EXPECT_EQ(choice.row(5), (base::ArchiveLocation{"/r5/", "5.mdb"}));
    EXPECT_EQ(choice.row(6), (base::ArchiveLocation{"/c/", "c.mdb"}));
}

TEST_F(ArchiveChoiceTest, OpeningRecentThreeExchangesItWithTheCurrentArchive) {
    loadSixArchives();
    choice.openRecent(3);
    EXPECT_EQ(state.currentArchive(), (base::ArchiveLocation{"/r3/", "3.mdb"}));
    EXPECT_EQ(state.recentArchives[3], (base::ArchiveLocation{"/c/", "c.mdb"}));
    EXPECT_EQ(settings(),
              "[recentarchives]\ncurrent=/r3/3.mdb\nrecent1=/r1/1.mdb\nrecent2=/r2/2.mdb\n"
              "recent3=/c/c.mdb\nrecent4=/r4/4.mdb\nrecent5=/r5/5.mdb\n");
}

TEST_F(ArchiveChoiceTest, AnyOtherNumberKeepsTheCurrentArchive) {
    loadSixArchives();
    const std::string before = settings();
    for (const std::int16_t number : std::initializer_list<std::int16_t>{0, 6, 7, -1}) {
        log.clear();
        choice.openRecent(number);
        EXPECT_EQ(settings(), before) << number;
        EXPECT_EQ(log, (Log{"caption Verdolin - c.mdb", "keywords of /c/c.mdb", "hide progress"}))
            << number;
    }
}

TEST_F(ArchiveChoiceTest, SettingsAndCaptionComeBeforeTheKeywords) {
    loadSixArchives();
    keywordsFail = true;
    EXPECT_THROW(choice.openRecent(1), base::SubscriptFailure);
    EXPECT_NE(settings().find("current=/r1/1.mdb"), std::string::npos);
    EXPECT_EQ(log, (Log{"caption Verdolin - 1.mdb", "keywords of /r1/1.mdb", "hide progress"}));
}

TEST_F(ArchiveChoiceTest, OpeningAnExistingArchiveLeavesTheRecentOnes) {
    loadSixArchives();
    choice.openExisting({"/x/", "x.txt"});
    EXPECT_EQ(settings(),
              "[recentarchives]\ncurrent=/x/x.txt\nrecent1=/r1/1.mdb\nrecent2=/r2/2.mdb\n"
              "recent3=/r3/3.mdb\nrecent4=/r4/4.mdb\nrecent5=/r5/5.mdb\n");
    EXPECT_EQ(log, (Log{"caption Verdolin - x.txt", "keywords of /x/x.txt", "hide progress"}));
}

TEST_F(ArchiveChoiceTest, CommandsThatAreNotConnectedDoNothing) {
    ArchiveChoice bare(state, shell, profile, messages, [](const auto&) { return true; }, {});
    bare.openExisting({"/x/", "x.mdb"});
    EXPECT_EQ(state.archiveName, "x.mdb");
}

TEST_F(ArchiveChoiceTest, ClosingLeavesTheSettingsAlone) {
    loadSixArchives();
    const std::string before = settings();
    choice.closeArchive();
    EXPECT_EQ(state.currentArchive(), base::ArchiveLocation{});
    EXPECT_EQ(settings(), before);
    EXPECT_TRUE(log.empty());
    choice.loadSettings();
    EXPECT_EQ(state.archiveName, "c.mdb");
}

TEST_F(ArchiveChoiceTest, CreatingWritesSettingsAndCaptionButCollectsNoKeywords) {
    choice.createNew(inFolder("new.mdb"));
    EXPECT_EQ(state.currentArchive(), inFolder("new.mdb"));
    EXPECT_EQ(settings(), "[recentarchives]\ncurrent=" + folder.pathOf("new.mdb") +
                              "\nrecent1=\nrecent2=\nrecent3=\nrecent4=\nrecent5=\n");
    EXPECT_EQ(log, (Log{"create " + folder.pathOf("new.mdb"), "caption Verdolin - new.mdb"}));
    EXPECT_TRUE(messages.asked.empty());
}

TEST_F(ArchiveChoiceTest, YesErasesTheFileThatIsInTheWay) {
    folder.makeFile("old.mdb", "old");
    messages.expect(MessageAnswer::Yes);
    choice.createNew(inFolder("old.mdb"));
    EXPECT_FALSE(folder.exists("old.mdb"));
    EXPECT_EQ(messages.asked, std::vector{eraseQuestion()});
    EXPECT_EQ(state.archiveName, "old.mdb");
}

TEST_F(ArchiveChoiceTest, AFileIsFoundAndErasedInWhateverScriptItsNameIs) {
    folder.makeFile("Ærø 日本 😀.mdb", "old");
    messages.expect(MessageAnswer::Yes);
    choice.createNew(inFolder("Ærø 日本 😀.mdb"));
    EXPECT_FALSE(folder.exists("Ærø 日本 😀.mdb"));
    EXPECT_EQ(messages.asked, std::vector{eraseQuestion()});
}

TEST_F(ArchiveChoiceTest, NoAndCancelKeepTheFileAndEverythingElse) {
    folder.makeFile("old.mdb", "old");
    state.archiveName = "before.mdb";
    for (const MessageAnswer answer : {MessageAnswer::No, MessageAnswer::Cancel}) {
        messages.expect(answer);
        choice.createNew(inFolder("old.mdb"));
    }
    EXPECT_EQ(folder.read("old.mdb"), "old");
    EXPECT_EQ(state.archiveName, "before.mdb");
    EXPECT_FALSE(haveSettings());
    EXPECT_TRUE(log.empty());
}

TEST_F(ArchiveChoiceTest, AFileThatCannotBeErasedIsAFailureAndChangesNothing) {
    // A file system of the kernel's own: its files are there and cannot be erased by anybody.
    messages.expect(MessageAnswer::Yes);
    EXPECT_THROW(choice.createNew({"/proc/self/", "status"}), base::FileFailure);
    EXPECT_EQ(state.archiveName, "");
    EXPECT_TRUE(log.empty());
}

TEST_F(ArchiveChoiceTest, AFolderInTheWayIsNotAskedAboutAndNotErased) {
    folder.makeFolder("dir.mdb");
    creationSucceeds = false;
    messages.expect(MessageAnswer::Ok);
    choice.createNew(inFolder("dir.mdb"));
    EXPECT_TRUE(folder.exists("dir.mdb"));
    EXPECT_EQ(messages.asked, std::vector{creationFailedMessage()});
}

TEST_F(ArchiveChoiceTest, AFailedCreationIsSaidAndTheArchiveIsCurrentNevertheless) {
    for (const bool throws : {false, true}) {
        creationSucceeds = false;
        creationThrows = throws;
        messages.expect(MessageAnswer::Ok);
        choice.createNew(inFolder("new.mdb"));
        EXPECT_EQ(messages.asked.back(),
                  (base::Message{"Error Creating Database",
                                 "There was an error creating a new database, see the Help manual "
                                 "for more information.",
                                 base::MessageButtons::Ok}));
        EXPECT_EQ(state.archiveName, "new.mdb");
    }
    EXPECT_FALSE(haveSettings());
    EXPECT_EQ(log,
              (Log{"create " + folder.pathOf("new.mdb"), "create " + folder.pathOf("new.mdb")}));
}

TEST_F(ArchiveChoiceTest, FileDialogsStartInTheProgramFolder) {
    EXPECT_EQ(choice.dialogFolder(), folder.path());
}

}  // namespace
}  // namespace open
