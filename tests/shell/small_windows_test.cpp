#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QGroupBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>

#include "base/failure.h"
#include "shell/form_about.h"
#include "shell/form_flashloading.h"
#include "shell/form_progress.h"
#include "shell/form_splash.h"
#include "shell/movie_player.h"
#include "tests/shell/fake_movies.h"
#include "tests/support/fake_platform.h"
#include "tests/support/recording_boundary.h"

// The small windows that carry no logic: splash, about, and the two loading windows.

namespace shell {
namespace {

class SplashTest : public testing::Test {
  protected:
    MoviePlayer* player() { return splash.findChild<MoviePlayer*>("flashOverview"); }
    QPushButton* button(const char* name) { return splash.findChild<QPushButton*>(name); }

    support::FakeShell machine;
    support::FakeMovies movies;
    std::vector<std::string> log;
    bool openFails = false;
    support::RecordingBoundary boundary;
    FormSplash splash{
        machine,
        movies,
        boundary,
        {[this] {
             log.emplace_back(splash.isVisible() ? "open, splash shown" : "open, splash hidden");
             if (openFails) {
                 throw base::FileFailure("gone");
             }
         },
         [this] { log.emplace_back("exit"); }}};
};

using Log = std::vector<std::string>;

TEST_F(SplashTest, HoldsTheMovieAndTwoButtons) {
    EXPECT_EQ(splash.objectName(), "form_splash");
    EXPECT_EQ(splash.windowTitle(), "Verdolin");
    EXPECT_EQ(player()->property("windowMode").toString(), "Window");
    EXPECT_EQ(player()->property("quality").toString(), "High");
    EXPECT_EQ(player()->property("scaleMode").toString(), "ShowAll");
    EXPECT_EQ(button("btnExit")->text(), "Exit");
    std::vector<std::string> captions;
    for (const QPushButton* each : splash.findChildren<QPushButton*>()) {
        captions.push_back(each->text().toStdString());
    }
    EXPECT_EQ(captions, (Log{"Start", "Exit"}));
}

TEST_F(SplashTest, TheMovieLiesBesideTheProgram) {
    EXPECT_EQ(player()->movie(), "/opt/verdolin/settings/overview.swf");
    machine.folder = "D:\\Verdolin";
    machine.separator = '\\';
    splash.initializeFlash();
    EXPECT_EQ(player()->movie(), "D:\\Verdolin\\settings\\overview.swf");
}

TEST_F(SplashTest, TheMovieRunsOnceTheWindowIsShown) {
    splash.show();
    EXPECT_TRUE(QTest::qWaitFor([&] { return player()->framesShown() > 0; }));
}

TEST_F(SplashTest, AMissingMovieShowsAnEmptyArea) {
    movies.playable = false;
    splash.show();
    QTest::qWait(10);
    EXPECT_TRUE(splash.isVisible());
    EXPECT_FALSE(player()->isPlaying());
}

TEST_F(SplashTest, StartHidesTheWindowBeforeTheOpenWindowComes) {
    splash.show();
    QTest::mouseClick(button("btnStart"), Qt::LeftButton);
    EXPECT_EQ(log, Log{"open, splash hidden"});
    EXPECT_FALSE(splash.isVisible());
}

TEST_F(SplashTest, WhenTheOpenWindowFailsTheSplashComesBack) {
    splash.show();
    openFails = true;
    QTest::mouseClick(button("btnStart"), Qt::LeftButton);
    EXPECT_EQ(boundary.failures, Log{"gone"});
    EXPECT_TRUE(splash.isVisible());
}

TEST_F(SplashTest, ExitAndTheCloseBoxEndTheProgram) {
    splash.show();
    QTest::mouseClick(button("btnExit"), Qt::LeftButton);
    splash.close();
    EXPECT_EQ(log, (Log{"exit", "exit"}));
}

TEST_F(SplashTest, TheKeysReachEverything) {
    splash.show();
    EXPECT_EQ(splash.focusWidget(), button("btnStart"));
    QTest::keyClick(splash.focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(splash.focusWidget(), button("btnExit"));
    QTest::keyClick(splash.focusWidget(), Qt::Key_Return);
    EXPECT_EQ(log, Log{"exit"});
}

class AboutTest : public testing::Test {
  protected:
    support::FakeShell machine;
    support::RecordingBoundary boundary;
    FormAbout about{machine, boundary};
};

TEST_F(AboutTest, NamesVersionYearAndMaker) {
    EXPECT_EQ(about.objectName(), "form_about");
    EXPECT_EQ(about.windowTitle(), "About Verdolin");
    EXPECT_EQ(about.findChild<QGroupBox*>("frameAbout")->title(), "About Verdolin Version 1.01");
    const QStringList lines = about.findChild<QLabel*>("labelAbout")->text().split('\n');
    ASSERT_EQ(lines.size(), 2);
    EXPECT_EQ(lines[0], "Verdolin Version 1.01");
    EXPECT_TRUE(lines[1].contains("2001"));
    EXPECT_FALSE(about.findChild<QLabel*>("imageAbout")->pixmap().isNull());
}

TEST_F(AboutTest, AClickOnTheLinkOpensTheBrowser) {
    about.show();
    auto* link = about.findChild<QLabel*>("labelAboutWebLink");
    QTest::mouseClick(link, Qt::LeftButton, {}, QPoint(20, link->height() / 2));
    EXPECT_EQ(machine.openedPages, Log{"https://verdolin.example/"});
}

TEST_F(AboutTest, TheKeysOpenTheLinkToo) {
    about.show();
    about.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&about));
    const auto* link = about.findChild<QLabel*>("labelAboutWebLink");
    for (int tabs = 0; tabs < 4 && !link->hasSelectedText(); ++tabs) {
        QTest::keyClick(about.focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(about.focusWidget(), link);
    QTest::keyClick(about.focusWidget(), Qt::Key_Return);
    EXPECT_EQ(machine.openedPages.size(), 1U);
}

TEST_F(AboutTest, CloseClosesIt) {
    about.show();
    auto* close = about.findChild<QPushButton*>("btnAboutClose");
    EXPECT_EQ(close->text(), "Close");
    QTest::mouseClick(close, Qt::LeftButton);
    EXPECT_FALSE(about.isVisible());
}

TEST(FlashLoading, HoldsItsMovie) {
    support::FakeShell machine;
    support::FakeMovies movies;
    FormFlashLoading loading(machine, movies);
    EXPECT_EQ(loading.objectName(), "form_flashloading");
    EXPECT_EQ(loading.windowTitle(), "Accessing Data");
    auto* player = loading.findChild<MoviePlayer*>("flashLoading");
    EXPECT_EQ(player->movie(), "/opt/verdolin/settings/accessdata.swf");
    EXPECT_EQ(player->property("scaleMode").toString(), "ShowAll");
    EXPECT_TRUE(movies.opened.empty());
    loading.show();
    EXPECT_TRUE(QTest::qWaitFor([&] { return player->framesShown() > 0; }));
}

TEST(FormProgress, ShowsWhatItsOwnerSets) {
    FormProgress progress;
    EXPECT_EQ(progress.objectName(), "form_progress");
    EXPECT_EQ(progress.windowTitle(), "Loading . . .");
    EXPECT_NE(progress.findChild<QLabel*>("Label1"), nullptr);
    progress.setRange(1, 50);
    progress.setPosition(20);
    progress.setText("Initializing <b> 20 of 50");
    const auto* bar = progress.findChild<QProgressBar*>("progressInit");
    EXPECT_EQ(bar->minimum(), 1);
    EXPECT_EQ(bar->maximum(), 50);
    EXPECT_EQ(bar->value(), 20);
    const auto* label = progress.findChild<QLabel*>("displayProgress");
    EXPECT_EQ(label->text(), "Initializing <b> 20 of 50");
    EXPECT_EQ(label->textFormat(), Qt::PlainText);
}

struct Paints : QObject {
    bool eventFilter(QObject*, QEvent* event) override {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
    int count = 0;
};

class ShownProgressTest : public testing::Test {
  protected:
    ShownProgressTest() {
        progress.setText("first");
        progress.setRange(1, 1000);
        progress.showProgress();
    }
    void tell(int position) {
        progress.setText("record " + std::to_string(position));
        progress.setPosition(position);
    }
    std::string shownText() const {
        return progress.findChild<QLabel*>("displayProgress")->text().toStdString();
    }
    int shownPosition() const { return progress.findChild<QProgressBar*>("progressInit")->value(); }

    FormProgress progress;
};

TEST_F(ShownProgressTest, ShowsItselfWithWhatItWasToldBefore) {
    EXPECT_TRUE(progress.isVisible());
    EXPECT_FALSE(progress.isModal());
    EXPECT_EQ(shownText(), "first");
    EXPECT_EQ(shownPosition(), 1);
}

TEST_F(ShownProgressTest, TextAndBarAreTheLastItWasToldAtOnce) {
    for (int position = 1; position <= 500; ++position) {
        tell(position);
        ASSERT_EQ(shownText(), "record " + std::to_string(position));
        ASSERT_EQ(shownPosition(), position);
    }
}

TEST_F(ShownProgressTest, TheLastItWasToldIsPaintedSoonThoughNoMoreComes) {
    for (int position = 1; position <= 500; ++position) {
        tell(position);
    }
    Paints textPaints;
    Paints barPaints;
    progress.findChild<QLabel*>("displayProgress")->installEventFilter(&textPaints);
    progress.findChild<QProgressBar*>("progressInit")->installEventFilter(&barPaints);
    EXPECT_TRUE(QTest::qWaitFor([&] { return textPaints.count > 0 && barPaints.count > 0; }));
}

TEST_F(ShownProgressTest, HidingItLeavesTheLastItWasTold) {
    for (int position = 1; position <= 1000; ++position) {
        tell(position);
    }
    progress.hide();
    EXPECT_EQ(shownText(), "record 1000");
    EXPECT_EQ(shownPosition(), 1000);
}

TEST_F(ShownProgressTest, ItPaintsNoOftenerThanAnEyeCanTell) {
    Paints paints;
    Paints barPaints;
    progress.findChild<QLabel*>("displayProgress")->installEventFilter(&paints);
    progress.findChild<QProgressBar*>("progressInit")->installEventFilter(&barPaints);
    QElapsedTimer watch;
    watch.start();
    for (int position = 1; position <= 20000; ++position) {
        tell(position);
        QCoreApplication::processEvents();
    }
    EXPECT_LE(paints.count, 5 + watch.elapsed() / 30);
    EXPECT_LE(barPaints.count, 5 + watch.elapsed() / 30);
}

TEST(FormProgress, CountsBeyondTheBarsNumbersStayAtItsEnd) {
    FormProgress progress;
    progress.setRange(1, std::int64_t{1} << 40);
    EXPECT_EQ(progress.findChild<QProgressBar*>("progressInit")->maximum(), 2147483647);
}

}  // namespace
}  // namespace shell
