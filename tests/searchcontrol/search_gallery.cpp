// Draws the search component into a folder, to be looked at: search_gallery FOLDER [dark] [ARCHIVE]
//
// Without an archive it is that of the table of queries. Another one is copied first.

#include <QApplication>
#include <QFile>
#include <QFont>
#include <QHeaderView>
#include <QMenu>
#include <QPalette>
#include <QStyleFactory>
#include <QTabWidget>
#include <QTableView>
#include <QTimer>
#include <iostream>
#include <string_view>

#include "search/form_search.h"
#include "tests/searchcontrol/control_fixture.h"
#include "tests/support/dark_palette.h"

namespace {

class Gallery : public support::ControlTest {
  public:
    explicit Gallery(std::string target) : target_(std::move(target)) {}
    ~Gallery() override = default;

    void TestBody() override {}
    void drawArchive(const QString& archive) {
        QFile::copy(archive, text(folder.pathOf("shown.mdb")));
        open("shown.mdb");
        picture("real-all");
        search("kyoto garden");
        table()->setFocus();
        table()->selectRow(2);
        waitUntilDone();
        picture("real-results");
        table()->selectAll();
        waitUntilDone();
        picture("real-selected");
        search("ext:mp4;mov size:>300mb sort:-size");
        picture("real-sorted");
        search("bergen (regex:^img_00 size:>");
        picture("real-half-typed");
        search("photos ki");
        line()->setFocus();
        QTest::keyClick(line(), Qt::Key_Space, Qt::ControlModifier);
        drawPopup("listCompletions", "real-completions");
        search("server img");
        table()->setFocus();
        table()->selectRow(0);
        waitUntilDone();
        picture("real-large");
        search("\u0421\u043e\u043b\u043d\u0446\u0435 nothing like it");
        picture("real-nothing");
        search("kyoto");
        table()->setFocus();
        table()->selectAll();
        waitUntilDone();
        for (const char* action : {"actionKeywords", "actionExport", "actionPickList"}) {
            drawDialog(action);
        }
        find<QMenu>("menuActions")->popup(control->mapToGlobal(QPoint(400, 60)));
        save(*find<QMenu>("menuActions"), "real-actions");
        find<QMenu>("menuActions")->close();
        search("medium:1;2");
        find<QTabWidget>("tabSearch")->setCurrentIndex(1);
        waitUntilDone();
        find<QTableView>("listDuplicates")->selectRow(0);
        picture("real-duplicates");
        find<QTabWidget>("tabSearch")->setCurrentIndex(2);
        waitUntilDone();
        picture("real-statistics");
        control->findChild<QAction*>("actionSyntax")->trigger();
        QTest::qWait(50);
        save(*find<QWidget>("form_syntax"), "real-syntax");
    }
    void draw() {
        openGolden();
        picture("search-all");
        search("holiday");
        table()->setFocus();
        table()->selectRow(1);
        waitUntilDone();
        picture("search-results");
        search("kw:ho");
        picture("search-completion");
        search("");
        find<QTabWidget>("tabSearch")->setCurrentIndex(1);
        waitUntilDone();
        find<QTableView>("listDuplicates")->selectRow(0);
        picture("search-duplicates");
        find<QTabWidget>("tabSearch")->setCurrentIndex(2);
        waitUntilDone();
        picture("search-statistics");
        control->findChild<QAction*>("actionSyntax")->trigger();
        QTest::qWait(50);
        save(*find<QWidget>("form_syntax"), "search-syntax");
        drawWithoutLibrary();
    }

  private:
    void drawPopup(const char* name, const char* file) {
        QTest::qWait(50);
        for (QWidget* widget : QApplication::allWidgets()) {
            if (widget->objectName() == name && widget->isVisible()) {
                save(*widget, file);
                widget->hide();
            }
        }
    }
    void drawDialog(const char* action) {
        QTimer::singleShot(200, [this, action] {
            QWidget* dialog = QApplication::activeModalWidget();
            if (dialog != nullptr) {
                save(*dialog, (std::string("real-") + action).c_str());
                dialog->close();
            }
        });
        control->findChild<QAction*>(action)->trigger();
    }
    void picture(const char* name) {
        QTest::qWait(50);
        save(*control, name);
    }
    void save(QWidget& window, const char* name) {
        window.grab().save(QString::fromStdString(target_ + "/" + name + ".png"));
    }
    void drawWithoutLibrary() {
        search::FormSearch form([] {
            return search::MadeControl{nullptr,
                                       "Cannot load library libsearchcontrol: no such file"};
        });
        form.showWindow();
        QTest::qWait(50);
        save(form, "search-without-library");
    }

    std::string target_;
};

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::cerr << "search_gallery FOLDER [dark]\n";
        return 2;
    }
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    testing::InitGoogleTest();
    QApplication application(argc, argv);
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    if (argc > 2 && std::string_view(argv[2]) == "dark") {
        QApplication::setPalette(support::darkPalette());
    }
    const QString last = QString::fromLocal8Bit(argv[argc - 1]);
    if (last.endsWith(".mdb")) {
        Gallery(argv[1]).drawArchive(last);
    } else {
        Gallery(argv[1]).draw();
    }
    return 0;
}
