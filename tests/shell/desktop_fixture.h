#pragma once

#include <gtest/gtest.h>

#include <QAction>
#include <QPushButton>
#include <QTabBar>
#include <QTest>
#include <memory>
#include <string>
#include <vector>

#include "base/program_state.h"
#include "jet/engine.h"
#include "open/form_open.h"
#include "platform/file_private_profile.h"
#include "platform/platform.h"
#include "shell/desktop.h"
#include "shell/failure_boundary.h"
#include "shell/form_about.h"
#include "shell/form_flashloading.h"
#include "shell/form_main.h"
#include "shell/form_progress.h"
#include "shell/form_splash.h"
#include "shell/record_list.h"
#include "shell/workspace.h"
#include "tests/shell/test_application.h"
#include "tests/support/fake_platform.h"
#include "tests/support/scripted_file_dialogs.h"
#include "tests/support/scripted_message_box.h"
#include "tests/support/temporary_folder.h"

namespace support {

/// The machine's own files and settings, and a program folder of the test's.
class Machine : public FakePlatform {
  public:
    Machine() : real_(platform::createPlatform()) { opener = &real_->files(); }
    platform::PrivateProfile& privateProfile() override { return settingsFiles; }

    platform::FilePrivateProfile settingsFiles;

  private:
    std::unique_ptr<platform::Platform> real_;
};

/// The whole desktop, but for its screen and its user.
class DesktopTest : public testing::Test {
  protected:
    DesktopTest() {
        folder.makeFolder("settings");
        machine.fakeShell.folder = folder.path();
        testApplication().setBoundary(&boundary);
    }
    ~DesktopTest() override {
        testApplication().setBoundary(nullptr);
        EXPECT_TRUE(messages.allAnswersUsed());
        EXPECT_TRUE(dialogs.allAnswersUsed());
    }

    void start() {
        desktop.showSplash();
        click(desktop.splash(), "btnStart");
    }
    static void click(QWidget* window, const char* button) {
        auto* found = window->findChild<QPushButton*>(button);
        ASSERT_NE(found, nullptr) << button;
        QTest::mouseClick(found, Qt::LeftButton);
    }
    void clickTab(int tab) {
        auto* tabs = desktop.openWindow()->findChild<QTabBar*>("TabOpen");
        QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(tab).center());
    }
    void choose(const char* action) {
        desktop.mainWindow()->findChild<QAction*>(action)->trigger();
    }
    bool holds(const std::string& text) const {
        return messages.asked.back().text.find(text) != std::string::npos;
    }
    shell::RecordList& list() { return *desktop.mainWindow()->workspace().list(); }
    std::vector<std::string> names() {
        std::vector<std::string> texts;
        for (int row = 1; row <= list().records().rowCount(); ++row) {
            texts.push_back(list().records().text(row, 1));
        }
        return texts;
    }
    std::string title() { return desktop.mainWindow()->windowTitle().toStdString(); }
    std::string settings() const { return folder.read("settings/vdln.ini"); }
    std::string settingsWith(const std::string& current) const {
        return "[recentarchives]\ncurrent=" + current +
               "\nrecent1=\nrecent2=\nrecent3=\nrecent4=\nrecent5=\n";
    }

    TemporaryFolder folder;
    Machine machine;
    jet::Engine engine{*machine.opener};
    base::ProgramState state;
    ScriptedMessageBox messages;
    ScriptedFileDialogs dialogs;
    shell::FailureBoundary boundary{messages};
    int left = 0;
    shell::Desktop desktop{
        {state, machine, engine, messages, dialogs, boundary, [this] { ++left; }}};
};

}  // namespace support
