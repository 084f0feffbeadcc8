#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "archive/data.h"
#include "archive/schema.h"
#include "base/failure.h"
#include "jet/database.h"
#include "tests/archive/archive_fixture.h"
#include "tests/support/scripted_message_box.h"

// The operations of data on table `media`.

namespace {

using Texts = std::vector<std::string>;
using base::MessageAnswer;

const std::string header =
    "The following notices indicate that perhaps you have mistakenly chosen to update an existing "
    "media's data with the one that was just scanned. \n\r";
const std::string question = "Do you wish to proceed with the update?";

base::MediaInfo holiday() {
    base::MediaInfo media;
    media.mediaId = 7;
    media.driveLetter = "D";
    media.mediaLabel = "CD_HOL01";
    media.mediaName = "Holiday 2001";
    media.mediaSize = 650;
    media.mediaType = "CDROM";
    media.mediaFreeSpace = 12;
    media.archiveDate = "03/07/2001 09:05:00";
    media.archiveUpdate = "03/07/2001 09:05:00";
    media.numberFiles = 1534;
    media.loaded = true;
    return media;
}

base::MediaInfo withId(std::int32_t id) {
    base::MediaInfo media = holiday();
    media.mediaId = id;
    return media;
}

class DataMedia : public support::ArchiveTest {
  protected:
    void stored(const std::vector<base::MediaInfo>& media) {
        tables.addMedia(state.currentArchive(), media);
    }
    std::vector<Texts> mediaRows() { return tables.rows(state.currentArchive(), "media"); }
    void update(const base::MediaInfo& media) {
        data.saveMedia(media, archive::MediaSave::Update, box);
        EXPECT_TRUE(box.allAnswersUsed());
    }

    /// A current archive whose medium's label holds two characters at most.
    void useArchiveWithNarrowLabel() {
        jet::TableDefinition media = archive::mediaTable();
        media.fields[1].size = 2;
        state.archiveName = "narrow.mdb";
        jet::Database database = jet::Database::create(engine, state.currentArchive().fullPath(),
                                                       ";LANGID=0x0409;CP=1252;COUNTRY=0");
        database.append(media);
        database.close();
    }

    archive::Data data{state, engine, events};
    support::ScriptedMessageBox box;
};

}  // namespace

// loadMedia

TEST_F(DataMedia, LoadReadsEveryRowInTheOrderOfTheTable) {
    base::MediaInfo second = withId(3);
    second.mediaLabel = "";
    stored({holiday(), second});
    data.loadMedia(state.currentArchive());
    ASSERT_EQ(state.mediaList.upperBound(), 2);
    base::MediaInfo expected = holiday();
    expected.driveLetter = "";
    expected.loaded = false;
    EXPECT_EQ(state.mediaList[1], expected);
    expected.mediaId = 3;
    expected.mediaLabel = "";
    EXPECT_EQ(state.mediaList[2], expected);
}

TEST_F(DataMedia, LoadMarksNoMediumAsLoaded) {
    stored({holiday()});
    data.loadMedia(state.currentArchive());
    state.mediaList[1].loaded = true;
    data.loadMedia(state.currentArchive());
    EXPECT_FALSE(state.mediaList[1].loaded);
}

TEST_F(DataMedia, LoadOfAnEmptyTableLeavesTheListAsItWas) {
    data.loadMedia(state.currentArchive());
    EXPECT_TRUE(state.mediaList.neverGrown());
    state.mediaList.append(withId(4));
    state.mediaList.append(withId(5));
    data.loadMedia(state.currentArchive());
    EXPECT_EQ(state.mediaList.upperBound(), 2);
    EXPECT_EQ(state.mediaList[1], withId(4));
}

TEST_F(DataMedia, FirstRowOfALoadCutsTheList) {
    state.mediaList.append(withId(4));
    state.mediaList.append(withId(5));
    stored({holiday()});
    data.loadMedia(state.currentArchive());
    EXPECT_EQ(state.mediaList.upperBound(), 1);
    EXPECT_EQ(state.mediaList[1].mediaId, 7);
}

TEST_F(DataMedia, LoadReadsNullAsEmptyAndZero) {
    {
        archive::ArchiveTable table(engine, state.currentArchive(), "media");
        table.rows().addNew();
        table.rows().update();
        table.close();
    }
    data.loadMedia(state.currentArchive());
    EXPECT_EQ(state.mediaList[1], base::MediaInfo());
}

TEST_F(DataMedia, Medium32768EndsALoadWithAnOverflow) {
    std::vector<base::MediaInfo> media(32767);
    for (std::size_t i = 0; i < media.size(); ++i) {
        media[i].mediaId = static_cast<std::int32_t>(i) + 1;
    }
    stored(media);
    data.loadMedia(state.currentArchive());
    EXPECT_EQ(state.mediaList.upperBound(), 32767);
    stored({withId(32768)});
    EXPECT_THROW(data.loadMedia(state.currentArchive()), base::OverflowFailure);
    EXPECT_EQ(state.mediaList.upperBound(), 32767);
    EXPECT_EQ(state.mediaList[32767].mediaId, 32767);
}

TEST_F(DataMedia, LoadOfAnArchiveThatIsNotThereIsAFailure) {
    EXPECT_THROW(data.loadMedia({"/archives/", "missing.mdb"}), base::EngineFailure);
}

// saveMedia, new

TEST_F(DataMedia, NewMediumGetsARowWithEveryField) {
    data.saveMedia(holiday(), archive::MediaSave::New, box);
    EXPECT_EQ(mediaRows(),
              (std::vector<Texts>{{"7", "CD_HOL01", "Holiday 2001", "650", "CDROM", "12",
                                   "03/07/2001 09:05:00", "03/07/2001 09:05:00", "1534"}}));
}

TEST_F(DataMedia, NewMediumKeepsTheIdItHasAndAsksNothing) {
    stored({holiday()});
    data.saveMedia(withId(7), archive::MediaSave::New, box);
    EXPECT_EQ(column("media", "mediaid"), (Texts{"7", "7"}));
    EXPECT_TRUE(box.asked.empty());
}

TEST_F(DataMedia, NewMediumWithEmptyTextsStoresThemEmpty) {
    data.saveMedia(base::MediaInfo(), archive::MediaSave::New, box);
    EXPECT_EQ(mediaRows(), (std::vector<Texts>{{"0", "", "", "0", "", "0", "", "", "0"}}));
}

// saveMedia, update

TEST_F(DataMedia, UpdateOfAnEqualMediumAsksNothingAndWrites) {
    stored({holiday()});
    base::MediaInfo scanned = holiday();
    scanned.mediaName = "new name";
    scanned.archiveUpdate = "05/06/2003 10:11:12";
    scanned.numberFiles = 99;
    update(scanned);
    EXPECT_TRUE(box.asked.empty());
    EXPECT_EQ(mediaRows(),
              (std::vector<Texts>{{"7", "CD_HOL01", "new name", "650", "CDROM", "12",
                                   "03/07/2001 09:05:00", "05/06/2003 10:11:12", "99"}}));
}

TEST_F(DataMedia, UpdateKeepsFirstDateAndFreeSpace) {
    stored({holiday()});
    base::MediaInfo scanned = holiday();
    scanned.archiveDate = "05/06/2003 10:11:12";
    scanned.mediaFreeSpace = 5;
    update(scanned);
    EXPECT_EQ(column("media", "archivedate"), Texts{"03/07/2001 09:05:00"});
    EXPECT_EQ(column("media", "mediafreespace"), Texts{"12"});
    EXPECT_EQ(column("media", "medialabel"), Texts{"CD_HOL01"});
}

TEST_F(DataMedia, UpdateWritesTheFreeSpaceIntoTheLabelBeforeTheLabel) {
    useArchiveWithNarrowLabel();
    base::MediaInfo media = holiday();
    media.mediaLabel = "A";
    media.mediaFreeSpace = 12;
    stored({media});
    update(media);
    EXPECT_EQ(column("media", "medialabel"), Texts{"A"});

    media.mediaFreeSpace = 123;  // fits no label of two characters
    media.archiveUpdate = "later";
    try {
        update(media);
        FAIL() << "no failure";
    } catch (const base::EngineFailure& failure) {
        EXPECT_EQ(failure.fault(), base::EngineFault::Value);
        EXPECT_NE(failure.text().find("medialabel"), std::string::npos) << failure.text();
    }
    EXPECT_EQ(column("media", "archiveupdate"), Texts{"03/07/2001 09:05:00"});
}

TEST_F(DataMedia, UpdateAsksWhereOnlyTheSizeDiffers) {
    stored({holiday()});
    base::MediaInfo scanned = holiday();
    scanned.mediaSize = 651;
    box.expect(MessageAnswer::Yes);
    update(scanned);
    ASSERT_EQ(box.asked.size(), 1U);
    EXPECT_EQ(box.asked[0], (base::Message{"Update Existing Media's Data",
                                           header + "Media Size does not match.\n\r" + question,
                                           base::MessageButtons::YesNoCancel}));
    EXPECT_EQ(column("media", "mediasize"), Texts{"651"});
}

TEST_F(DataMedia, UpdateNamesAllThreeDifferencesInTheirOrder) {
    stored({holiday()});
    base::MediaInfo scanned = holiday();
    scanned.mediaLabel = "OTHER";
    scanned.mediaType = "Fixed";
    scanned.mediaSize = 1;
    box.expect(MessageAnswer::Yes);
    update(scanned);
    EXPECT_EQ(box.asked.at(0).text, header +
                                        "Media Label does not match.\n\r"
                                        "Media Type does not match.\n\r"
                                        "Media Size does not match.\n\r" +
                                        question);
    EXPECT_EQ(mediaRows(),
              (std::vector<Texts>{{"7", "OTHER", "Holiday 2001", "1", "Fixed", "12",
                                   "03/07/2001 09:05:00", "03/07/2001 09:05:00", "1534"}}));
}

TEST_F(DataMedia, LettersOfAnotherCaseAreADifference) {
    stored({holiday()});
    base::MediaInfo scanned = holiday();
    scanned.mediaLabel = "cd_hol01";
    scanned.mediaType = "cdrom";
    box.expect(MessageAnswer::Yes);
    update(scanned);
    EXPECT_EQ(box.asked.at(0).text, header +
                                        "Media Label does not match.\n\r"
                                        "Media Type does not match.\n\r" +
                                        question);
}

TEST_F(DataMedia, NoAndCancelLeaveTheRowAsItIs) {
    stored({holiday()});
    const auto before = mediaRows();
    base::MediaInfo scanned = withId(7);
    scanned.mediaSize = 651;
    scanned.archiveUpdate = "later";
    for (const MessageAnswer answer : {MessageAnswer::No, MessageAnswer::Cancel}) {
        box.expect(answer);
        update(scanned);
        EXPECT_EQ(mediaRows(), before);
    }
    EXPECT_EQ(box.asked.size(), 2U);
}

TEST_F(DataMedia, UpdateTakesNullForAnEmptyLabel) {
    {
        archive::ArchiveTable table(engine, state.currentArchive(), "media");
        table.rows().addNew();
        table.rows().setInteger(table.rows().field("mediaId"), 7);
        table.rows().update();
        table.close();
    }
    base::MediaInfo scanned;
    scanned.mediaId = 7;
    scanned.mediaName = "found";
    update(scanned);
    EXPECT_EQ(column("media", "medianame"), Texts{"found"});
}

TEST_F(DataMedia, UpdateRewritesTheFirstRowOfThatIdAndNoOther) {
    base::MediaInfo twin = holiday();
    twin.mediaName = "twin";
    stored({withId(17), holiday(), twin, withId(8)});
    base::MediaInfo scanned = holiday();
    scanned.mediaName = "new";
    update(scanned);
    EXPECT_EQ(column("media", "medianame"), (Texts{"Holiday 2001", "new", "twin", "Holiday 2001"}));
    EXPECT_EQ(column("media", "mediaid"), (Texts{"17", "7", "7", "8"}));
}

TEST_F(DataMedia, UpdateOfAMediumThatIsNotThereRunsPastTheLastRow) {
    stored({withId(1), withId(2)});
    const auto before = mediaRows();
    try {
        update(holiday());
        FAIL() << "no failure";
    } catch (const base::EngineFailure& failure) {
        EXPECT_EQ(failure.fault(), base::EngineFault::NoCurrentRow);
    }
    EXPECT_EQ(mediaRows(), before);
}

TEST_F(DataMedia, UpdateInAnEmptyTableFailsAtOnce) {
    EXPECT_THROW(update(holiday()), base::EngineFailure);
    EXPECT_TRUE(mediaRows().empty());
}

TEST_F(DataMedia, UpdateTakesALongerNameIntoTheRow) {
    stored({holiday(), withId(8)});
    base::MediaInfo scanned = holiday();
    scanned.mediaName = std::string(255, 'n');
    update(scanned);
    EXPECT_EQ(column("media", "medianame"), (Texts{scanned.mediaName, "Holiday 2001"}));
}

TEST_F(DataMedia, RowThatIsDeletedWhileTheQuestionStandsIsAFailure) {
    class DeletingBox : public base::MessageBox {
      public:
        explicit DeletingBox(std::function<void()> meanwhile) : meanwhile_(std::move(meanwhile)) {}
        MessageAnswer show(const base::Message& /*message*/) override {
            meanwhile_();
            return MessageAnswer::Yes;
        }

      private:
        std::function<void()> meanwhile_;
    };
    stored({holiday(), withId(8)});
    base::MediaInfo scanned = holiday();
    scanned.mediaSize = 1;
    DeletingBox deleting([&] {
        archive::ArchiveTable table(engine, state.currentArchive(), "media");
        table.rows().deleteCurrent();
        table.close();
    });
    EXPECT_THROW(data.saveMedia(scanned, archive::MediaSave::Update, deleting),
                 base::EngineFailure);
    EXPECT_EQ(column("media", "mediaid"), Texts{"8"});
}

TEST(MediaForUpdate, TakesUpdateDateAndCountFromTheScanAndKeepsTheRest) {
    base::MediaInfo scanned = withId(20);
    scanned.mediaLabel = "OTHER";
    scanned.mediaName = "other";
    scanned.archiveUpdate = "later";
    scanned.numberFiles = 3;
    base::MediaInfo expected = holiday();
    expected.archiveUpdate = "later";
    expected.numberFiles = 3;
    EXPECT_EQ(archive::mediaForUpdate(holiday(), scanned), expected);
}

// The whole road of an update.

TEST_F(DataMedia, UpdateRoadReplacesTheRowsOfTheMediumAndNoOthers) {
    class NoProgress : public archive::SaveProgress {
        void setProgress(std::int64_t /*entry*/) override {}
    } progress;
    stored({holiday(), withId(8)});
    base::ScanEntry old;
    old.FileName = "old";
    old.mediaId = 7;
    base::ScanEntry other;
    other.FileName = "other";
    other.mediaId = 8;
    tables.addRecords(state.currentArchive(), {old, other, old});
    base::ScanEntry fresh;
    fresh.FileName = "fresh";
    fresh.path = "9:\\docs";
    fresh.mediaId = 9;
    state.scanList.append(fresh);
    base::MediaInfo scanned = withId(9);
    scanned.numberFiles = 1;

    const base::MediaInfo selected = archive::mediaForUpdate(holiday(), scanned);
    data.saveMedia(selected, archive::MediaSave::Update, box);
    data.deleteRecords(selected.mediaId);
    data.adjustRecordPaths(selected);
    data.saveRecords(selected, progress);

    Texts names = column("main", "filename");
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (Texts{"fresh", "other"}));
    archive::ArchiveTable table(engine, state.currentArchive(), "main");
    table.rows().setFilter("mediaid='7'");
    EXPECT_EQ(table.rows().text(1), "7:\\docs");
    EXPECT_EQ(column("media", "numberfiles"), (Texts{"1", "1534"}));
}
