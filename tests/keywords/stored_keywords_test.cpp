#include <gtest/gtest.h>

#include <QComboBox>
#include <QPushButton>

#include "archive/archive_table.h"
#include "archive/data.h"
#include "archive/makedb.h"
#include "jet/engine.h"
#include "keywords/form_keywords.h"
#include "keywords/keyword_choice.h"
#include "platform/platform.h"
#include "tests/archive/archive_fixture.h"
#include "tests/jet/mdb_tools.h"
#include "tests/keywords/keywords_fixture.h"
#include "tests/support/recording_boundary.h"
#include "tests/support/temporary_folder.h"

// What is applied to a scan arrives in the archive when the scan is saved.

namespace keywords {
namespace {

using support::entryWith;
using Lines = std::vector<jet_test::MdbTools::Line>;

class NoProgress : public archive::SaveProgress {
  public:
    void setProgress(std::int64_t) override {}
};

class StoredKeywordsTest : public testing::Test {
  protected:
    StoredKeywordsTest() {
        state.archiveFolder = folder.path() + "/";
        state.archiveName = "a.mdb";
        archive::createArchive(engine, state.currentArchive());
        state.viewMode = "scan";
        state.scanList.growTo(4);
        for (int i = 1; i <= 4; ++i) {
            state.scanList[i] = entryWith("", "", "");
            state.scanList[i].FileName = std::to_string(i);
        }
        medium.mediaId = 1;
    }

    void select(const std::vector<std::int16_t>& positions) {
        state.selectedRecords = support::listOf(positions);
    }
    void apply(const RecordTexts& texts) { applyKeywords(state, columns, texts, state.viewMode); }
    void save() { archive::Data(state, engine, events).saveRecords(medium, progress); }

    /// Name, keywords and both notes of every row, as another program reads them.
    Lines storedRows() {
        archive::ArchiveTable table(engine, state.currentArchive(), "main",
                                    jet::LockType::ReadOnly);
        const jet::TableDefinition definition = table.rows().definition();
        table.close();
        Lines rows;
        for (const auto& line :
             jet_test::MdbTools::rows(state.currentArchive().fullPath(), definition)) {
            rows.push_back({line[0], line[7], line[8], line[9]});
        }
        return rows;
    }

    support::TemporaryFolder folder;
    std::unique_ptr<platform::Platform> machine = platform::createPlatform();
    jet::Engine engine{machine->files()};
    base::ProgramState state;
    support::ScriptedEvents events;
    support::RecordedColumns columns;
    NoProgress progress;
    base::MediaInfo medium;
};

TEST_F(StoredKeywordsTest, AnotherProgramReadsExactlyWhatWasAppliedInTheWindow) {
    const std::string longNote = std::string(250, 'x') + "àéîõü";  // 255 characters
    support::RecordingBoundary boundary;
    state.archiveKeywords.append({"日本語", "archive"});
    state.archiveKeywords.append({"a comma, inside", "archive"});
    state.keywordCount = 2;
    state.archiveNotes.append({longNote, "archive"});
    state.archiveNotes.append({"Привет, мир", "archive"});
    state.noteCount = 2;
    select({2, 4});
    FormKeywords window(state, columns, boundary, nullptr);
    window.load();
    window.show();
    const auto choose = [&](const char* combo, int index, const char* button) {
        auto* box = window.findChild<QComboBox*>(combo);
        box->setCurrentIndex(index);
        emit box->activated(index);
        window.findChild<QPushButton*>(button)->click();
    };
    choose("comboKeywords", 0, "btnSelectKW");
    choose("comboKeywords", 1, "btnSelectKW");
    choose("comboNotes", 0, "btnSelectNote");
    window.findChild<QAbstractButton*>("checkNotes2")->click();
    window.findChild<QAbstractButton*>("checkNotes1")->click();
    choose("comboNotes", 1, "btnSelectNote");
    window.findChild<QPushButton*>("btnApply")->click();
    save();
    if (!jet_test::MdbTools::installed()) {
        GTEST_SKIP() << "mdbtools is not installed";
    }
    EXPECT_EQ(storedRows(), (Lines{{"1", "", "", ""},
                                   {"2", "日本語,a comma, inside", longNote, "Привет, мир"},
                                   {"3", "", "", ""},
                                   {"4", "日本語,a comma, inside", longNote, "Привет, мир"}}));
    EXPECT_TRUE(boundary.failures.empty());
}

TEST_F(StoredKeywordsTest, ATextTooLongForItsFieldFailsOnSavingAndNothingElseIsLost) {
    select({3});
    const std::string tooLong(256, 'k');
    apply({tooLong, "a note", ""});
    select({1, 2, 4});
    apply({"short", "", ""});
    try {
        save();
        FAIL() << "256 characters were stored in a field of 255";
    } catch (const base::EngineFailure& failure) {
        EXPECT_EQ(failure.fault(), base::EngineFault::Value);
        EXPECT_NE(failure.text().find("keywords"), std::string::npos) << failure.text();
    }
    EXPECT_EQ(state.scanList[3].keywords, tooLong);
    EXPECT_EQ(state.scanList[4].keywords, "short");
    const auto stored =
        support::ArchiveTables(engine).column(state.currentArchive(), "main", "keywords");
    EXPECT_EQ(stored, (std::vector<std::string>{"short", "short"}));
}

TEST_F(StoredKeywordsTest, WhatIsAppliedToAnExploredArchiveStaysInMemory) {
    apply({});
    save();
    archive::Data(state, engine, events).loadFiles(state.currentArchive(), 1);
    state.viewMode = "archive";
    select({1});
    apply({"seen", "", ""});
    EXPECT_EQ(state.archiveFiles[1].keywords, "seen");
    const auto stored =
        support::ArchiveTables(engine).column(state.currentArchive(), "main", "keywords");
    EXPECT_EQ(stored, (std::vector<std::string>{"", "", "", ""}));
}

}  // namespace
}  // namespace keywords
