// Draws the search component into a folder, to be looked at: search_gallery FOLDER [dark]

#include <QApplication>
#include <QFont>
#include <QHeaderView>
#include <QPalette>
#include <QStyleFactory>
#include <QTabWidget>
#include <QTableView>
#include <iostream>

#include "search/form_search.h"
#include "tests/searchcontrol/control_fixture.h"
#include "tests/support/dark_palette.h"

namespace {

class Gallery : public support::ControlTest {
  public:
    explicit Gallery(std::string target) : target_(std::move(target)) {}
    ~Gallery() override = default;

    void TestBody() override {}
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
    if (argc > 2) {
        QApplication::setPalette(support::darkPalette());
    }
    Gallery(argv[1]).draw();
    return 0;
}
