#pragma once

#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>
#include <QTableView>
#include <QTest>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "archive/archive_table.h"
#include "archive/makedb.h"
#include "archive/media_rows.h"
#include "archive/record_rows.h"
#include "jet/engine.h"
#include "platform/file_private_profile.h"
#include "platform/platform.h"
#include "searchcontrol/search_control.h"
#include "tests/search/golden_archive.h"
#include "tests/support/fake_platform.h"
#include "tests/support/recording_boundary.h"
#include "tests/support/scripted_message_box.h"
#include "tests/support/temporary_folder.h"

namespace support {

/// A fake machine whose archives and settings are real files.
class SearchMachine : public FakePlatform {
  public:
    SearchMachine() : real_(platform::createPlatform()) { opener = &real_->files(); }
    platform::PrivateProfile& privateProfile() override { return settingsFiles; }

    platform::FilePrivateProfile settingsFiles;

  private:
    std::unique_ptr<platform::Platform> real_;
};

/// The search component with the archive of the golden table, used as a person uses it.
class ControlTest : public testing::Test {
  protected:
    static constexpr int patience = 20000;

    ControlTest() {
        folder.makeFolder("settings");
        machine.fakeShell.folder = folder.path();
        machine.fixedClock.now = {2026, 11, 21, 12, 0, 0};
    }
    ~ControlTest() override {
        EXPECT_TRUE(messages.allAnswersUsed());
        EXPECT_EQ(boundary.failures, expectedFailures);
    }

    search::SearchHost host() {
        return {boundary,
                messages,
                engine,
                machine,
                [this](const search::FoundEntry& entry) { shownEntries.push_back(entry); },
                [this](const std::string& path) { openedFiles.push_back(path); }};
    }

    void writeArchive(const std::string& name, const std::vector<base::MediaInfo>& media,
                      const std::vector<base::ScanEntry>& entries) {
        const base::ArchiveLocation place = placeOf(name);
        ASSERT_TRUE(archive::createArchive(engine, place));
        archive::ArchiveTable mediaTable(engine, place, "media");
        const archive::MediaFields fields(mediaTable.rows());
        for (const base::MediaInfo& medium : media) {
            archive::addMedia(mediaTable.rows(), fields, medium);
        }
        mediaTable.close();
        addEntries(name, entries);
    }
    void addEntries(const std::string& name, const std::vector<base::ScanEntry>& entries) {
        archive::ArchiveTable table(engine, placeOf(name), "main");
        archive::RecordWriter writer(table.rows());
        for (const base::ScanEntry& entry : entries) {
            writer.write(entry, entry.mediaId);
        }
        table.close();
    }
    void writeGoldenArchive() {
        std::vector<base::ScanEntry> entries;
        for (const golden::Entry& entry : golden::entries()) {
            entries.push_back(golden::scanEntry(entry));
        }
        writeArchive("golden.mdb", golden::media(), entries);
    }
    base::ArchiveLocation placeOf(const std::string& name) const {
        return {folder.path() + "/", name};
    }

    /// Shows the component with that archive, and waits until it has been read.
    void open(const std::string& name = "golden.mdb") {
        control = std::make_unique<searchcontrol::SearchControl>(host());
        control->resize(1200, 760);
        control->show();
        control->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(control.get()));
        control->setFocus();
        control->setProperty("archivePath", text(folder.pathOf(name)));
        waitUntilDone();
    }
    void openGolden() {
        writeGoldenArchive();
        open();
    }

    template <typename Widget = QWidget>
    Widget* find(const char* name) {
        Widget* widget = control->findChild<Widget*>(name);
        if (widget == nullptr) {
            throw std::logic_error(std::string("there is no ") + name);
        }
        return widget;
    }
    static QString text(const std::string& utf8) { return QString::fromStdString(utf8); }
    QLineEdit* line() { return find<QLineEdit>("queryLine"); }
    QTableView* table() { return find<QTableView>("listResults"); }
    std::string status() { return find<QLabel>("labelStatus")->text().toStdString(); }
    std::string selectionStatus() { return find<QLabel>("labelSelection")->text().toStdString(); }

    /// Types as a person does, into whatever has the focus.
    void type(const std::string& query) {
        line()->setFocus();
        line()->selectAll();
        QTest::keyClick(line(), Qt::Key_Delete);
        for (const QChar letter : text(query)) {
            if (letter.unicode() < 128) {
                QTest::keyClick(line(), letter.toLatin1());
            } else {
                line()->insert(letter);
            }
        }
    }
    void press(int key, Qt::KeyboardModifiers modifiers = {}) {
        // A window that has been modal leaves none active without a window manager.
        control->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(control.get()));
        QWidget* target = QApplication::focusWidget();
        ASSERT_NE(target, nullptr);
        QTest::keyClick(target, static_cast<Qt::Key>(key), modifiers);
    }
    void waitUntilDone() {
        ASSERT_TRUE(QTest::qWaitFor([this] { return !control->isBusy(); }, patience)) << status();
    }
    void search(const std::string& query) {
        type(query);
        waitUntilDone();
    }
    std::string cell(int row, int column) {
        return table()->model()->index(row, column).data().toString().toStdString();
    }
    std::vector<std::string> names() {
        std::vector<std::string> result;
        for (int row = 0; row < table()->model()->rowCount(); ++row) {
            result.push_back(cell(row, 0));
        }
        return result;
    }

    TemporaryFolder folder;
    SearchMachine machine;
    jet::Engine engine{*machine.opener};
    ScriptedMessageBox messages;
    RecordingBoundary boundary;
    std::vector<std::string> expectedFailures;
    std::vector<search::FoundEntry> shownEntries;
    std::vector<std::string> openedFiles;
    std::unique_ptr<searchcontrol::SearchControl> control;
};

}  // namespace support
