#pragma once

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "base/program_state.h"
#include "open/archive_choice.h"
#include "platform/file_private_profile.h"
#include "tests/support/fake_platform.h"
#include "tests/support/scripted_message_box.h"
#include "tests/support/temporary_folder.h"

namespace support {

/// A program folder on disk with a settings file, and an archive choice that logs what it sets off.
class OpenFixture : public testing::Test {
  protected:
    OpenFixture() {
        folder.makeFolder("settings");
        shell.folder = folder.path();
    }

    void writeSettings(const std::string& text) { folder.makeFile("settings/vdln.ini", text); }
    std::string settings() const { return folder.read("settings/vdln.ini"); }
    bool haveSettings() const { return folder.exists("settings/vdln.ini"); }

    /// "current" c.mdb and the five recent archives 1.mdb to 5.mdb, each in a folder of its own.
    void writeSixArchives() {
        writeSettings(
            "[recentarchives]\ncurrent=/c/c.mdb\nrecent1=/r1/1.mdb\nrecent2=/r2/2.mdb\n"
            "recent3=/r3/3.mdb\nrecent4=/r4/4.mdb\nrecent5=/r5/5.mdb\n");
    }

    open::OpenCommands commands() {
        open::OpenCommands commands;
        commands.showMainWindow = [this] { log.emplace_back("main window"); };
        commands.setMainCaption = [this](const std::string& caption) {
            log.push_back("caption " + caption);
        };
        commands.initKeywords = [this] {
            log.push_back("keywords of " + state.currentArchive().fullPath());
            if (keywordsFail) {
                throw base::SubscriptFailure("a list that was never filled has no bounds");
            }
        };
        commands.hideProgress = [this] { log.emplace_back("hide progress"); };
        return commands;
    }

    bool create(const base::ArchiveLocation& archive) {
        log.push_back("create " + archive.fullPath());
        if (creationThrows) {
            throw base::EngineFailure(base::EngineFault::Full, "no room");
        }
        if (creationSucceeds) {
            folder.makeFile("created", archive.fullPath());
        }
        return creationSucceeds;
    }

    TemporaryFolder folder;
    FakeShell shell;
    platform::FilePrivateProfile profile;
    ScriptedMessageBox messages;
    base::ProgramState state;
    std::vector<std::string> log;
    bool keywordsFail = false;
    bool creationSucceeds = true;
    bool creationThrows = false;
    open::ArchiveChoice choice{
        state,
        shell,
        profile,
        messages,
        [this](const base::ArchiveLocation& archive) { return create(archive); },
        commands()};
};

}  // namespace support
