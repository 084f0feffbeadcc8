#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "archive/data.h"
#include "base/program_state.h"
#include "explore/explore_texts.h"
#include "explore/explorearchive.h"
#include "tests/archive/archive_fixture.h"
#include "tests/explore/fake_controls.h"
#include "tests/explore/sample_rows.h"
#include "tests/support/scripted_message_box.h"

namespace support {

using Texts = std::vector<std::string>;

/// An archive in memory and a main window of fakes. What exploring does besides filling tree and
/// list is logged.
class ExploreTest : public ArchiveTest {
  protected:
    ~ExploreTest() override { EXPECT_TRUE(messages.allAnswersUsed()); }

    explore::ExploreCommands commands() {
        explore::ExploreCommands commands;
        commands.arrangeWorkspace = [this] { log.emplace_back("arrange"); };
        commands.showLoading = [this] {
            log.emplace_back("show loading");
            loadingShown = true;
        };
        commands.hideLoading = [this] {
            log.emplace_back("hide loading");
            loadingShown = false;
        };
        commands.showOpenWindow = [this] { log.emplace_back("open window"); };
        return commands;
    }

    /// Puts media and records into the current archive.
    void store(const std::vector<base::MediaInfo>& media,
               const std::vector<base::ScanEntry>& records = {}) {
        tables.addMedia(state.currentArchive(), media);
        tables.addRecords(state.currentArchive(), records);
    }
    /// Makes another, new archive the current one.
    void openNewArchive(const std::string& name) {
        state.archiveName = name;
        archive::createArchive(engine, state.currentArchive());
    }
    /// From now on the current archive's file is one that was deleted.
    void loseArchive() { state.archiveName = "gone.mdb"; }
    std::int64_t folderCount() const {
        return static_cast<std::int64_t>(state.archiveFolders.elements().size());
    }
    Texts fileNames() const {
        Texts names;
        for (const base::ScanEntry& file : state.archiveFiles.elements()) {
            names.push_back(file.FileName);
        }
        return names;
    }

    archive::Data data{state, engine, events};
    ScriptedMessageBox messages;
    FakeTree tree;
    FakeList list;
    Texts log;
    bool loadingShown = false;
    explore::ExploreArchive exploring{state, data, messages, tree, list, commands()};
};

}  // namespace support
