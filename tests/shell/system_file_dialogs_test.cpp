#include "shell/system_file_dialogs.h"

#include <gtest/gtest.h>

#include <QFileDialog>
#include <QLineEdit>
#include <QTest>

#include "tests/shell/modal.h"
#include "tests/support/temporary_folder.h"

namespace shell {
namespace {

TEST(NameFilters, PairsBecomeOneTextEach) {
    EXPECT_EQ(nameFilters("Archives|*.mdb|All Files|*.*"),
              (QStringList{"Archives (*.mdb)", "All Files (*)"}));
    EXPECT_EQ(nameFilters("odd"), QStringList());
}

class SystemFileDialogsTest : public testing::Test {
  protected:
    open::FileDialogRequest request() {
        return {"Archives|*.mdb|All Files|*.*", folder.path(), ".mdb"};
    }
    /// Types a name, as a user does, and accepts.
    static void type(QFileDialog& dialog, const char* name) {
        auto* box = dialog.findChild<QLineEdit*>();
        box->setText(name);
        QTest::keyClick(box, Qt::Key_Return);
    }

    support::TemporaryFolder folder;
    SystemFileDialogs dialogs;
};

TEST_F(SystemFileDialogsTest, TheOpenDialogIsSetUpAsAsked) {
    folder.makeFile("a.mdb");
    support::whenModal<QFileDialog>([&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.objectName(), "comDialog");
        EXPECT_EQ(dialog.acceptMode(), QFileDialog::AcceptOpen);
        EXPECT_EQ(dialog.fileMode(), QFileDialog::ExistingFile);
        EXPECT_EQ(dialog.nameFilters(), nameFilters(request().filter));
        EXPECT_EQ(dialog.directory().path().toStdString(), folder.path());
        EXPECT_EQ(dialog.defaultSuffix(), "mdb");
        type(dialog, "a.mdb");
    });
    EXPECT_EQ(dialogs.showOpen(request()), folder.pathOf("a.mdb"));
}

TEST_F(SystemFileDialogsTest, TheSaveDialogAsksNothingAboutAFileThatIsThere) {
    folder.makeFile("a.mdb");
    support::whenModal<QFileDialog>([&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.acceptMode(), QFileDialog::AcceptSave);
        type(dialog, "a.mdb");
    });
    EXPECT_EQ(dialogs.showSave(request()), folder.pathOf("a.mdb"));
}

TEST_F(SystemFileDialogsTest, ATypedExtensionIsKeptAsItIs) {
    support::whenModal<QFileDialog>([](QFileDialog& dialog) { type(dialog, "a.MDB"); });
    EXPECT_EQ(dialogs.showSave(request()), folder.pathOf("a.MDB"));
}

TEST_F(SystemFileDialogsTest, ANameWithoutExtensionGetsTheDefaultOne) {
    support::whenModal<QFileDialog>([](QFileDialog& dialog) { type(dialog, "catalog"); });
    EXPECT_EQ(dialogs.showSave(request()), folder.pathOf("catalog.mdb"));
}

TEST_F(SystemFileDialogsTest, NamesInAnyScriptComeBackAsTyped) {
    support::whenModal<QFileDialog>([](QFileDialog& dialog) { type(dialog, "Ærø 写真.mdb"); });
    EXPECT_EQ(dialogs.showSave(request()), folder.pathOf("Ærø 写真.mdb"));
}

TEST_F(SystemFileDialogsTest, CancelGivesNoFile) {
    support::whenModal<QFileDialog>([](QFileDialog& dialog) { dialog.reject(); });
    EXPECT_EQ(dialogs.showOpen(request()), std::nullopt);
    support::whenModal<QFileDialog>(
        [](QFileDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    EXPECT_EQ(dialogs.showSave(request()), std::nullopt);
}

}  // namespace
}  // namespace shell
