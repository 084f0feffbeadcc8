#include "keywords/initkeywords.h"

#include <gtest/gtest.h>

#include <random>

#include "keywords/collection_failures.h"
#include "keywords/collection_progress.h"
#include "platform/platform.h"
#include "tests/archive/archive_fixture.h"
#include "tests/keywords/keywords_fixture.h"
#include "tests/support/temporary_folder.h"

namespace keywords {
namespace {

using support::entryWith;
using support::textsOf;
using Texts = std::vector<std::string>;
using Entries = std::vector<base::ScanEntry>;

class LoggedProgress : public CollectionProgress {
  public:
    void setText(const std::string& text) override { log.push_back(text); }
    void setRange(std::int64_t minimum, std::int64_t maximum) override {
        log.push_back("range " + std::to_string(minimum) + " to " + std::to_string(maximum));
    }
    void setPosition(std::int64_t position) override {
        log.push_back("position " + std::to_string(position));
    }
    void showProgress() override { log.emplace_back("show"); }

    Texts log;
};

class InitKeywordsTest : public support::ArchiveTest {
  protected:
    void add(const Entries& entries) { tables.addRecords(state.currentArchive(), entries); }
    void collect() { initKeywords(state, engine, events, progress); }
    Texts keywords() const { return textsOf(state.archiveKeywords); }
    Texts notes() const { return textsOf(state.archiveNotes); }

    /// What an archive that was open before has left behind.
    void rememberFormer() {
        support::know(state.archiveKeywords, {"former keyword", "another"});
        support::know(state.archiveNotes, {"former note"});
        state.keywordCount = 20;
        state.noteCount = 10;
    }
    void expectFormerLists() const {
        EXPECT_EQ(keywords(), (Texts{"former keyword", "another"}));
        EXPECT_EQ(notes(), Texts{"former note"});
    }

    LoggedProgress progress;
};

TEST_F(InitKeywordsTest, KeywordsAreSplitFromTheRight) {
    add({entryWith("red,green,blue", "n")});
    collect();
    EXPECT_EQ(keywords(), (Texts{"blue", "green", "red"}));
    EXPECT_EQ(support::sourcesOf(state.archiveKeywords), (Texts{"archive", "archive", "archive"}));
}

TEST_F(InitKeywordsTest, EachKeywordIsKnownOnceInTheOrderOfAppearance) {
    add({entryWith("a,b", "n"), entryWith("b,c")});
    collect();
    EXPECT_EQ(keywords(), (Texts{"b", "a", "c"}));
    EXPECT_EQ(state.keywordCount, 4);
}

TEST_F(InitKeywordsTest, TwoCommasInARowHoldAnEmptyKeyword) {
    add({entryWith("a,,b", "n")});
    collect();
    EXPECT_EQ(keywords(), (Texts{"b", "", "a"}));
}

TEST_F(InitKeywordsTest, SoDoesACommaAtEitherEnd) {
    add({entryWith(",a", "n"), entryWith("b,"), entryWith(",")});
    collect();
    EXPECT_EQ(keywords(), (Texts{"a", "", "b"}));
    EXPECT_EQ(state.keywordCount, 6);
}

TEST_F(InitKeywordsTest, NothingIsTrimmed) {
    add({entryWith("red, green ", " note ")});
    collect();
    EXPECT_EQ(keywords(), (Texts{" green ", "red"}));
    EXPECT_EQ(notes(), Texts{" note "});
}

TEST_F(InitKeywordsTest, CaseTellsKeywordsApart) {
    add({entryWith("Tag,tag", "Note", "note")});
    collect();
    EXPECT_EQ(keywords(), (Texts{"tag", "Tag"}));
    EXPECT_EQ(notes(), (Texts{"Note", "note"}));
}

TEST_F(InitKeywordsTest, BothNotesGoIntoOneListTheFirstOneFirst) {
    add({entryWith("k", "1a", "1b"), entryWith("", "", "2b"), entryWith("", "3a", "")});
    collect();
    EXPECT_EQ(notes(), (Texts{"1a", "1b", "2b", "3a"}));
    EXPECT_EQ(support::sourcesOf(state.archiveNotes), Texts(4, "archive"));
}

TEST_F(InitKeywordsTest, ANoteInNotes1OfOneAndNotes2OfAnotherRecordAppearsOnce) {
    add({entryWith("k", "x"), entryWith("", "y", "x")});
    collect();
    EXPECT_EQ(notes(), (Texts{"x", "y"}));
    EXPECT_EQ(state.noteCount, 3);
}

TEST_F(InitKeywordsTest, CommasDoNotSplitNotes) {
    add({entryWith("k", "a,b")});
    collect();
    EXPECT_EQ(notes(), Texts{"a,b"});
}

TEST_F(InitKeywordsTest, FieldsWithoutAnyValueAreEmptyTexts) {
    add({entryWith("k", "n")});
    {
        archive::ArchiveTable table(engine, state.currentArchive(), "main");
        table.rows().addNew();
        table.rows().setText(table.rows().field("FileName"), "nothing else");
        table.rows().update();
        table.close();
    }
    collect();
    EXPECT_EQ(state.keywordCount, 1);
    EXPECT_EQ(state.noteCount, 1);
}

TEST_F(InitKeywordsTest, FoldersAreRecordsToo) {
    base::ScanEntry folder = entryWith("k", "n");
    folder.Folder = "folder";
    add({folder});
    collect();
    EXPECT_EQ(keywords(), Texts{"k"});
}

TEST_F(InitKeywordsTest, TextsOfAnyScriptAndLengthComeAsTheyAre) {
    const std::string longText(255, 'q');
    add({entryWith("日本語,Ελλάδα," + std::string(20, 'k'), longText, "Привет, мир")});
    collect();
    EXPECT_EQ(keywords(), (Texts{std::string(20, 'k'), "Ελλάδα", "日本語"}));
    EXPECT_EQ(notes(), (Texts{longText, "Привет, мир"}));
}

TEST_F(InitKeywordsTest, TheProgressTellsOfEachRecord) {
    add({entryWith("k", "n"), entryWith("k"), entryWith("")});
    collect();
    EXPECT_EQ(progress.log,
              (Texts{"Initializing Keywords and Notes.  Record 1 of 3", "range 1 to 3",
                     "position 1", "show",  //
                     "Initializing Keywords and Notes.  Record 1 of 3", "position 1",
                     "Initializing Keywords and Notes.  Record 2 of 3", "position 2",
                     "Initializing Keywords and Notes.  Record 3 of 3", "position 3"}));
}

TEST_F(InitKeywordsTest, EventsRunAfterEachRecord) {
    add(Entries(5, entryWith("k", "n")));
    std::vector<std::size_t> told;
    events.atEvents = [&] { told.push_back(progress.log.size()); };
    collect();
    EXPECT_EQ(told, (std::vector<std::size_t>{6, 8, 10, 12, 14}));
}

TEST_F(InitKeywordsTest, AnArchiveWithoutRecordsKeepsTheFormerLists) {
    rememberFormer();
    collect();
    expectFormerLists();
    EXPECT_EQ(state.keywordCount, 20);
    EXPECT_EQ(state.noteCount, 10);
    EXPECT_TRUE(progress.log.empty());
    EXPECT_EQ(events.count, 0);
}

TEST_F(InitKeywordsTest, NothingOfAnEarlierArchiveSurvives) {
    rememberFormer();
    add({entryWith("k", "n")});
    collect();
    EXPECT_EQ(keywords(), Texts{"k"});
    EXPECT_EQ(notes(), Texts{"n"});
    EXPECT_EQ(state.keywordCount, 1);
    EXPECT_EQ(state.noteCount, 1);
}

TEST_F(InitKeywordsTest, KeywordsAddedByHandGoTooWhenAnArchiveIsOpened) {
    state.archiveKeywords.append({"by hand", "current"});
    add({entryWith("k", "n")});
    collect();
    EXPECT_EQ(keywords(), Texts{"k"});
}

TEST_F(InitKeywordsTest, WithoutAnyNoteBothRebuildsAreMissed) {
    rememberFormer();
    add({entryWith("k1,k2")});
    try {
        collect();
        FAIL() << "the missing notes were passed over";
    } catch (const NothingCollectedFailure& failure) {
        EXPECT_EQ(failure.text(), "the archive holds no notes yet");
    }
    expectFormerLists();
    EXPECT_EQ(state.keywordCount, 2);
    EXPECT_EQ(state.noteCount, 0);
}

TEST_F(InitKeywordsTest, WithoutAnyKeywordTheNotesAreRebuiltAllTheSame) {
    rememberFormer();
    add({entryWith("", "n1", "n2")});
    try {
        collect();
        FAIL() << "the missing keywords were passed over";
    } catch (const NothingCollectedFailure& failure) {
        EXPECT_EQ(failure.text(), "the archive holds no keywords yet");
    }
    EXPECT_EQ(notes(), (Texts{"n1", "n2"}));
    EXPECT_EQ(keywords(), (Texts{"former keyword", "another"}));
    EXPECT_EQ(state.keywordCount, 0);
    EXPECT_EQ(state.noteCount, 2);
}

TEST_F(InitKeywordsTest, WithoutEitherThatIsSaid) {
    add({entryWith("")});
    try {
        collect();
        FAIL() << "the missing texts were passed over";
    } catch (const NothingCollectedFailure& failure) {
        EXPECT_EQ(failure.text(), "the archive holds no notes or keywords yet");
    }
    EXPECT_TRUE(state.archiveNotes.neverGrown());
    EXPECT_TRUE(state.archiveKeywords.neverGrown());
}

TEST_F(InitKeywordsTest, TheMissingTextsAreASubscriptFailure) {
    add({entryWith("")});
    EXPECT_THROW(collect(), base::SubscriptFailure);
}

TEST_F(InitKeywordsTest, TheMostNotesThatCanBeCounted) {
    Entries entries(16383, entryWith("k", "n", "m"));
    entries.push_back(entryWith("k", "n"));
    add(entries);
    collect();
    EXPECT_EQ(state.noteCount, 32767);
    EXPECT_EQ(notes(), (Texts{"n", "m"}));
}

TEST_F(InitKeywordsTest, OneNoteMoreIsAnOverflow) {
    rememberFormer();
    add(Entries(16384, entryWith("k", "n", "m")));
    try {
        collect();
        FAIL() << "32,768 notes were counted in 16 bits";
    } catch (const base::OverflowFailure& failure) {
        EXPECT_EQ(failure.text(),
                  "32768 notes are more than the 32767 that can be known at a time");
    }
    expectFormerLists();
    EXPECT_EQ(state.keywordCount, 16384);
    EXPECT_EQ(state.noteCount, 10);
}

TEST_F(InitKeywordsTest, KeywordsAreCountedWithoutThatLimit) {
    add({entryWith("", "n")});
    add(Entries(400, entryWith(std::string(100, ','))));
    collect();
    EXPECT_EQ(state.keywordCount, 400 * 101);
    EXPECT_EQ(keywords(), Texts{""});
}

TEST_F(InitKeywordsTest, NoOpenArchiveIsSaidInPlainWords) {
    state.archiveFolder.clear();
    state.archiveName.clear();
    try {
        collect();
        FAIL() << "something was collected from nowhere";
    } catch (const base::EngineFailure& failure) {
        EXPECT_EQ(failure.fault(), base::EngineFault::NotFound);
        EXPECT_EQ(failure.text(), "no archive is open");
    }
}

TEST_F(InitKeywordsTest, WhatCannotBeOpenedLeavesEverythingAsItWas) {
    rememberFormer();
    state.archiveName = "gone.mdb";
    EXPECT_THROW(collect(), base::EngineFailure);
    files.write("/archives/text.mdb", "no archive at all");
    state.archiveName = "text.mdb";
    EXPECT_THROW(collect(), base::EngineFailure);
    expectFormerLists();
    EXPECT_EQ(state.keywordCount, 20);
    EXPECT_TRUE(progress.log.empty());
}

TEST_F(InitKeywordsTest, AnArchiveThatMayOnlyBeReadIsRead) {
    add({entryWith("k", "n")});
    files.unwritable.insert(state.currentArchive().fullPath());
    collect();
    EXPECT_EQ(keywords(), Texts{"k"});
}

/// What is described, done in its plainest way: lists of everything, searched from the front.
struct PlainCollection {
    explicit PlainCollection(const Entries& entries) {
        Texts allNotes;
        Texts allKeywords;
        for (const base::ScanEntry& entry : entries) {
            for (const std::string& note : {entry.Notes1, entry.Notes2}) {
                if (!note.empty()) {
                    allNotes.push_back(note);
                }
            }
            std::string rest = entry.keywords;
            if (rest.empty()) {
                continue;
            }
            while (rest.find(',') != std::string::npos) {
                const std::size_t comma = rest.find_last_of(',');
                allKeywords.push_back(rest.substr(comma + 1));
                rest = rest.substr(0, comma);
            }
            allKeywords.push_back(rest);
        }
        noteCount = static_cast<std::int64_t>(allNotes.size());
        keywordCount = static_cast<std::int64_t>(allKeywords.size());
        notes = searchedThrough(allNotes);
        keywords = searchedThrough(allKeywords);
    }

    static Texts searchedThrough(const Texts& all) {
        Texts known;
        for (const std::string& text : all) {
            bool found = false;
            for (const std::string& other : known) {
                found = found || other == text;
            }
            if (!found) {
                known.push_back(text);
            }
        }
        return known;
    }

    Texts notes;
    Texts keywords;
    std::int64_t noteCount = 0;
    std::int64_t keywordCount = 0;
};

TEST_F(InitKeywordsTest, CollectsWhatThePlainestWayCollects) {
    std::mt19937 random(7101);
    const auto text = [&](const char* letters, unsigned most) {
        std::string made;
        for (auto length = random() % (most + 1); length > 0; --length) {
            made += letters[random() % std::char_traits<char>::length(letters)];
        }
        return made;
    };
    for (int round = 0; round < 25; ++round) {
        state.archiveName = "round" + std::to_string(round) + ".mdb";
        archive::createArchive(engine, state.currentArchive());
        // So that no list comes out empty.
        Entries entries = {entryWith("first", "first")};
        for (int i = 0; i < 200; ++i) {
            entries.push_back(entryWith(text("ab, A,", 9), text("xy", 2), text("xY ", 2)));
        }
        add(entries);
        collect();
        const PlainCollection plain(entries);
        EXPECT_EQ(keywords(), plain.keywords) << "round " << round;
        EXPECT_EQ(notes(), plain.notes) << "round " << round;
        EXPECT_EQ(state.keywordCount, plain.keywordCount);
        EXPECT_EQ(state.noteCount, plain.noteCount);
    }
}

// What events may do meanwhile.

class InterruptedTest : public InitKeywordsTest {
  protected:
    InterruptedTest() {
        add({entryWith("k1", "n1"), entryWith("k2", "n2"), entryWith("k3", "n3"),
             entryWith("k4", "n4")});
    }

    /// After the record of that number.
    void after(int record, std::function<void()> happens) {
        events.atEvents = [this, record, happens = std::move(happens)] {
            if (events.count == record) {
                happens();
            }
        };
    }
    void deleteRow(int number) {
        archive::ArchiveTable table(engine, state.currentArchive(), "main");
        for (int i = 1; i < number; ++i) {
            table.rows().moveNext();
        }
        table.rows().deleteCurrent();
        table.close();
    }
    void changeRow(int number, const std::string& keywords) {
        archive::ArchiveTable table(engine, state.currentArchive(), "main");
        for (int i = 1; i < number; ++i) {
            table.rows().moveNext();
        }
        table.rows().setText(table.rows().field("keywords"), keywords);
        table.rows().update();
        table.close();
    }
};

TEST_F(InterruptedTest, ARowThatIsDeletedBeforeItWasReadHasNoTexts) {
    after(1, [this] { deleteRow(2); });
    collect();
    EXPECT_EQ(keywords(), (Texts{"k1", "k3", "k4"}));
    EXPECT_EQ(notes(), (Texts{"n1", "n3", "n4"}));
}

TEST_F(InterruptedTest, ARowThatWasReadMayGo) {
    after(2, [this] { deleteRow(1); });
    collect();
    EXPECT_EQ(keywords(), (Texts{"k1", "k2", "k3", "k4"}));
}

TEST_F(InterruptedTest, AllRowsMayGo) {
    after(1, [this] {
        for (int i = 0; i < 4; ++i) {
            deleteRow(1);
        }
    });
    collect();
    EXPECT_EQ(keywords(), Texts{"k1"});
}

TEST_F(InterruptedTest, AChangedRowIsReadAsItIsThen) {
    after(1, [this] { changeRow(3, "changed"); });
    collect();
    EXPECT_EQ(keywords(), (Texts{"k1", "k2", "changed", "k4"}));
}

TEST_F(InterruptedTest, AnAddedRowIsReadToo) {
    after(4, [this] { add({entryWith("k5", "n5")}); });
    collect();
    EXPECT_EQ(keywords().size(), 4U) << "the end had been reached";
    events.count = 0;
    after(1, [this] { add({entryWith("k6", "n6")}); });
    collect();
    EXPECT_EQ(keywords(), (Texts{"k1", "k2", "k3", "k4", "k5", "k6"}));
    EXPECT_EQ(progress.log.back(), "position 6");
}

TEST_F(InterruptedTest, AnotherArchiveBecomingTheCurrentOneChangesNothing) {
    after(1, [this] { state.archiveName = "other.mdb"; });
    collect();
    EXPECT_EQ(keywords(), (Texts{"k1", "k2", "k3", "k4"}));
}

TEST_F(InterruptedTest, TheSameOperationMayRunInBetween) {
    const base::ArchiveLocation first = state.currentArchive();
    after(2, [this] {
        state.archiveName = "other.mdb";
        archive::createArchive(engine, state.currentArchive());
        add({entryWith("other", "other")});
        collect();
        EXPECT_EQ(keywords(), Texts{"other"});
    });
    collect();
    EXPECT_EQ(keywords(), (Texts{"k1", "k2", "k3", "k4"})) << "the last one to end prevails";
    EXPECT_EQ(state.keywordCount, 4);
}

TEST_F(InterruptedTest, TheListsMayBeUsedAndCutMeanwhile) {
    events.atEvents = [this] {
        state.archiveKeywords.append({"by hand", "current"});
        state.archiveNotes.growTo(0);
        state.keywordCount = 99;
    };
    collect();
    EXPECT_EQ(keywords(), (Texts{"k1", "k2", "k3", "k4"}));
    EXPECT_EQ(notes(), (Texts{"n1", "n2", "n3", "n4"}));
    EXPECT_EQ(state.keywordCount, 4);
}

TEST_F(InterruptedTest, TheEndOfTheProgramEndsItAndClosesTheArchive) {
    struct TheEnd {};
    rememberFormer();
    after(2, [] { throw TheEnd(); });
    EXPECT_THROW(collect(), TheEnd);
    expectFormerLists();
    EXPECT_EQ(state.keywordCount, 20);
    events.atEvents = nullptr;
    collect();
    EXPECT_EQ(keywords(), (Texts{"k1", "k2", "k3", "k4"}));
}

TEST(InitKeywordsOnDisk, AnArchiveThatIsDeletedMeanwhileIsReadToItsEnd) {
    support::TemporaryFolder folder;
    const auto machine = platform::createPlatform();
    jet::Engine engine(machine->files());
    base::ProgramState state;
    state.archiveFolder = folder.path() + "/";
    state.archiveName = "a.mdb";
    archive::createArchive(engine, state.currentArchive());
    support::ArchiveTables(engine).addRecords(
        state.currentArchive(), Entries(3000, entryWith("a keyword", "a note", "another note")));
    support::ScriptedEvents events;
    events.atEvents = [&] {
        if (events.count == 1) {
            folder.remove("a.mdb");
            archive::createArchive(engine, state.currentArchive());
        }
    };
    LoggedProgress progress;
    try {
        initKeywords(state, engine, events, progress);
        EXPECT_EQ(state.keywordCount, 3000);
    } catch (const base::Failure& failure) {
        FAIL() << failure.text();
    }
}

}  // namespace
}  // namespace keywords
