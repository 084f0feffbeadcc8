#include "save/save_session.h"

#include <gtest/gtest.h>

#include "base/failure.h"
#include "tests/save/save_fixture.h"

namespace save {
namespace {

using base::MessageAnswer;
using Texts = std::vector<std::string>;

class ProgressLog : public archive::SaveProgress {
  public:
    void setProgress(std::int64_t entry) override { entries.push_back(entry); }
    std::vector<std::int64_t> entries;
};

class SaveSessionTest : public support::SaveFixture {
  protected:
    ProgressLog progress;
    SaveSession session{state, engine, data, messages};
};

TEST_F(SaveSessionTest, CountsTheScanListWhateverScanCountSays) {
    state.scanCount = 1;
    EXPECT_EQ(session.entryCount(), 3);
}

TEST_F(SaveSessionTest, CountsNothingBeforeTheFirstScan) {
    base::ProgramState fresh;
    EXPECT_EQ(SaveSession(fresh, engine, data, messages).entryCount(), 0);
}

TEST_F(SaveSessionTest, NamesMediumAndArchive) {
    EXPECT_EQ(session.scannedMediaText(),
              "Scanned Media is: DISC; your name of: photos 2001 is a: CDROM");
    EXPECT_EQ(session.currentArchiveText(), "Current Archive: " + folder.path() + "/test.mdb");
    EXPECT_EQ(SaveSession::noCurrentArchiveText(), "No Current Archive.  You need to open one.");
}

TEST_F(SaveSessionTest, ReadsTheMediaInTheOrderOfTheTable) {
    storeTwoMedia();
    session.initMedia();
    EXPECT_EQ(session.lastMedium(), 2);
    EXPECT_EQ(session.mediumText(1), "letters (Fixed)  as MediaID: 3");
    EXPECT_EQ(session.mediumText(2), "music (Removable)  as MediaID: 5");
}

TEST_F(SaveSessionTest, ReadingAgainCutsTheListToTheRowsThatAreThere) {
    storeTwoMedia();
    session.initMedia();
    state.archiveName = "one.mdb";
    archive::createArchive(engine, state.currentArchive());
    tables.addMedia(state.currentArchive(), {medium(1, "L", "n", "Fixed")});
    session.initMedia();
    EXPECT_EQ(session.lastMedium(), 1);
}

TEST_F(SaveSessionTest, ATableWithoutRowsLeavesTheListAsItWas) {
    session.initMedia();
    EXPECT_THROW(session.lastMedium(), base::SubscriptFailure);
    storeTwoMedia();
    session.initMedia();
    state.archiveName = "empty.mdb";
    archive::createArchive(engine, state.currentArchive());
    session.initMedia();
    EXPECT_EQ(session.lastMedium(), 2);
}

TEST_F(SaveSessionTest, AnArchiveThatIsNotThereFails) {
    state.archiveName = "missing.mdb";
    EXPECT_THROW(session.initMedia(), base::EngineFailure);
}

TEST_F(SaveSessionTest, ANewMediumGetsItsRowAndOneForEachEntry) {
    storeTwoMedia();
    session.saveNew(progress);
    EXPECT_EQ(rows("media").back(), (Row{"7", "DISC", "photos 2001", "650", "CDROM", "138",
                                         "03/07/2001 09:05:00", "03/07/2001 09:05:00", "3"}));
    EXPECT_EQ(column("main", "filename"), (Texts{"old", "kept", "old", "a", "b", "c"}));
    EXPECT_EQ(column("main", "path").back(), "7:\\docs");
    EXPECT_EQ(column("main", "mediaid").back(), "7");
    EXPECT_EQ(progress.entries, (std::vector<std::int64_t>{1, 2, 3}));
    EXPECT_EQ(events.count, 3);
}

TEST_F(SaveSessionTest, ANewMediumDoesNotRewriteTheScansPaths) {
    state.currentMedia.mediaId = 9;
    session.saveNew(progress);
    EXPECT_EQ(state.scanList[1].path, "7:\\docs");
    EXPECT_EQ(column("main", "path")[0], "7:\\docs");
    EXPECT_EQ(column("main", "mediaid")[0], "9");
}

TEST_F(SaveSessionTest, AnUpdateKeepsWhatIsStoredButTheDateOfTheUpdateAndTheCount) {
    storeTwoMedia();
    session.initMedia();
    state.currentMedia.archiveUpdate = "05/06/2002 07:08:09";
    session.saveUpdate(1, progress);
    EXPECT_TRUE(messages.asked.empty());
    EXPECT_EQ(rows("media")[0], (Row{"3", "OLD", "letters", "650", "Fixed", "138",
                                     "01/02/1999 03:04:05", "05/06/2002 07:08:09", "3"}));
    EXPECT_EQ(column("main", "filename"), (Texts{"kept", "a", "b", "c"}));
    EXPECT_EQ(column("main", "path"), (Texts{"5:", "3:\\docs", "3:\\docs", "3:\\docs"}));
    EXPECT_EQ(column("main", "mediaid"), (Texts{"5", "3", "3", "3"}));
    EXPECT_EQ(state.scanList[2].path, "3:\\docs");
}

/// The archive changes between the reading of its media and the update.
class ChangedSinceTest : public SaveSessionTest {
  protected:
    ChangedSinceTest() {
        storeTwoMedia();
        session.initMedia();
        base::MediaInfo other = medium(3, "NEW LABEL", "renamed", "Fixed");
        other.numberFiles = 44;
        archive::ArchiveTable open(engine, state.currentArchive(), "media");
        archive::updateMedia(open.rows(), archive::MediaFields(open.rows()), other);
        open.close();
    }
};

TEST_F(ChangedSinceTest, AYesRewritesRowAndRecords) {
    messages.expect(MessageAnswer::Yes);
    session.saveUpdate(1, progress);
    EXPECT_EQ(messages.asked.at(0).title, "Update Existing Media's Data");
    EXPECT_NE(messages.asked[0].text.find("Media Label does not match.\n\r"), std::string::npos);
    EXPECT_EQ(column("media", "medialabel")[0], "OLD");
    EXPECT_EQ(column("media", "numberfiles")[0], "3");
    EXPECT_EQ(column("main", "filename"), (Texts{"kept", "a", "b", "c"}));
}

TEST_F(ChangedSinceTest, ADeclinedUpdateSparesTheRowAndReplacesTheRecordsAllTheSame) {
    for (const MessageAnswer answer : {MessageAnswer::No, MessageAnswer::Cancel}) {
        messages.expect(answer);
        session.saveUpdate(1, progress);
        EXPECT_EQ(column("media", "medialabel")[0], "NEW LABEL");
        EXPECT_EQ(column("media", "medianame")[0], "renamed");
        EXPECT_EQ(column("media", "numberfiles")[0], "44");
        EXPECT_EQ(column("main", "filename"), (Texts{"kept", "a", "b", "c"}));
        EXPECT_EQ(column("main", "path").back(), "3:\\docs");
    }
}

TEST_F(SaveSessionTest, AMediumThatIsNoLongerThereFailsBeforeAnythingIsWritten) {
    storeTwoMedia();
    session.initMedia();
    state.archiveName = "empty.mdb";
    archive::createArchive(engine, state.currentArchive());
    EXPECT_THROW(session.saveUpdate(1, progress), base::EngineFailure);
    EXPECT_TRUE(column("main", "filename").empty());
    EXPECT_EQ(state.scanList[1].path, "7:\\docs");
}

TEST_F(SaveSessionTest, TheSelectionMessageHasItsTextAndOneButton) {
    messages.expect(MessageAnswer::Ok);
    session.requireSelection();
    EXPECT_EQ(messages.asked.at(0),
              (base::Message{"Media Selection Required",
                             "You have chosen to update an Existing Media's data, you must select "
                             "the media to be updated from the list.",
                             base::MessageButtons::Ok}));
}

}  // namespace
}  // namespace save
