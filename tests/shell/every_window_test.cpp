#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QLabel>
#include <QLineEdit>
#include <functional>
#include <string>
#include <vector>

#include "archive/makedb.h"
#include "controls/status_line.h"
#include "keywords/form_keywords.h"
#include "save/form_save.h"
#include "scan/form_scan.h"
#include "search/form_search.h"
#include "shell/help_window.h"
#include "shell/keyword_columns.h"
#include "shell/workspace.h"
#include "tests/shell/desktop_fixture.h"

// What holds for every window, whatever it is for, with texts of the usual size and of twice that.

namespace shell {
namespace {

constexpr const char* searchLibrary = "libsearchcontrol.so";

class EveryWindowTest : public support::DesktopTest, public testing::WithParamInterface<int> {
  protected:
    using Look = std::function<void(QWidget&)>;

    EveryWindowTest() : usual_(QApplication::font()) {
        QFont font = usual_;
        font.setPointSizeF(usual_.pointSizeF() * GetParam());
        QApplication::setFont(font);
        machine.machineDrives.add('d', "HOLIDAY", 4);
        folder.makeLink(searchLibrary, std::string(VERDOLIN_PROGRAM_FOLDER) + "/" + searchLibrary);
        folder.makeFile("help/vdln.hlp", "# One\n\nText\n\n# Two\n\n[One](#one)\n");
    }
    ~EveryWindowTest() override { QApplication::setFont(usual_); }

    /// Shows each window in turn, and looks at it.
    void forEachWindow(const Look& look) {
        desktop.showSplash();
        lookAt(*desktop.splash(), look);
        click(desktop.splash(), "btnStart");
        lookAtOpenWindow(look);
        openArchive();
        desktop.mainWindow()->arrangeWorkspace();
        lookAt(*desktop.mainWindow(), look);
        choose("mnuArchScan");
        lookAt(*desktop.scanWindow(), look);
        choose("mnuArchSave");
        lookAt(*desktop.saveWindow(), look);
        lookAtKeywords(look);
        choose("mnuSearchSearch");
        lookAt(*desktop.searchWindow(), look);
        choose("mnuHelpHelp");
        lookAt(*desktop.help(), look);
        choose("mnuHelpAbout");
        lookAt(*desktop.about(), look);
        desktop.loading().show();
        lookAt(desktop.loading(), look);
        desktop.progress().show();
        lookAt(desktop.progress(), look);
    }

    /// The controls that the tabulator key reaches, in its order.
    static std::vector<QWidget*> focusChain(const QWidget& window) {
        std::vector<QWidget*> chain;
        for (QWidget* widget = window.nextInFocusChain(); widget != &window;
             widget = widget->nextInFocusChain()) {
            const bool reached = (widget->focusPolicy() & Qt::TabFocus) != 0 &&
                                 widget->focusProxy() == nullptr && widget->isEnabled() &&
                                 widget->isVisible();
            if (reached && widget->window() == &window) {
                chain.push_back(widget);
            }
        }
        return chain;
    }
    static QRect placeIn(const QWidget& window, const QWidget& widget) {
        return {widget.mapTo(&window, QPoint()), widget.size()};
    }
    /// A text of several lines is as high as it is at its width.
    static QSize neededBy(const QWidget& control) {
        const int width = control.width();
        return control.hasHeightForWidth() ? QSize(width, control.heightForWidth(width))
                                           : control.sizeHint();
    }
    static std::string nameOf(const QWidget& window, const QWidget& widget) {
        return (window.objectName() + "." + widget.objectName()).toStdString();
    }

  private:
    static void lookAt(QWidget& window, const Look& look) {
        QCoreApplication::processEvents();
        ASSERT_TRUE(window.isVisible());
        look(window);
    }
    void lookAtOpenWindow(const Look& look) {
        lookAt(*desktop.openWindow(), look);
        for (const int tab : {1, 2}) {
            dialogs.cancel();
            clickTab(tab);
            lookAt(*desktop.openWindow(), look);
        }
        desktop.openWindow()->close();
    }
    void lookAtKeywords(const Look& look) {
        KeywordColumns columns(*desktop.mainWindow()->workspace().list());
        keywords::FormKeywords window(state, columns, boundary, desktop.mainWindow());
        window.load();
        window.show();
        lookAt(window, look);
    }
    void openArchive() {
        state.archiveFolder = folder.path() + "/";
        state.archiveName = "a.mdb";
        archive::createArchive(engine, state.currentArchive());
    }

    QFont usual_;
};

TEST_P(EveryWindowTest, ControlsThatTheKeysReachHaveNamesForAScreenReader) {
    int controls = 0;
    forEachWindow([&](QWidget& window) {
        for (QWidget* control : focusChain(window)) {
            ++controls;
            QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(control);
            ASSERT_NE(spoken, nullptr);
            EXPECT_FALSE(spoken->text(QAccessible::Name).isEmpty()) << nameOf(window, *control);
        }
    });
    EXPECT_GT(controls, 40);
}

TEST_P(EveryWindowTest, TheTabulatorGoesAsOneReads) {
    forEachWindow([](QWidget& window) {
        const std::vector<QWidget*> chain = focusChain(window);
        for (std::size_t i = 1; i < chain.size(); ++i) {
            const QRect before = placeIn(window, *chain[i - 1]);
            const QRect after = placeIn(window, *chain[i]);
            EXPECT_TRUE(after.top() > before.bottom() || after.left() > before.right())
                << nameOf(window, *chain[i - 1]) << " before " << nameOf(window, *chain[i]);
        }
    });
}

TEST_P(EveryWindowTest, NothingIsCut) {
    forEachWindow([](QWidget& window) {
        for (const QWidget* control : window.findChildren<QWidget*>()) {
            const bool label = qobject_cast<const QLabel*>(control) != nullptr &&
                               dynamic_cast<const controls::StatusLine*>(control) == nullptr;
            const bool button = qobject_cast<const QAbstractButton*>(control) != nullptr;
            if ((!label && !button) || !control->isVisibleTo(&window) ||
                control->objectName().startsWith("qt_")) {
                continue;
            }
            const QSize needed = neededBy(*control);
            EXPECT_GE(control->width(), needed.width()) << nameOf(window, *control);
            EXPECT_GE(control->height(), needed.height()) << nameOf(window, *control);
            EXPECT_TRUE(window.rect().contains(placeIn(window, *control)))
                << nameOf(window, *control);
        }
    });
}

INSTANTIATE_TEST_SUITE_P(TextSizes, EveryWindowTest, testing::Values(1, 2));

}  // namespace
}  // namespace shell
