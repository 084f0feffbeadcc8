#include "search/form_search.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QTest>

#include "base/program_state.h"
#include "tests/searchcontrol/control_fixture.h"

namespace search {
namespace {

class FakeFrame : public SearchFrame {
  public:
    void showWindow() override { calls.emplace_back("show"); }
    void setArchivePath(const std::string& path) override { calls.push_back(path); }

    std::vector<std::string> calls;
};

TEST(SearchCommand, ShowsTheWindowAndHandsItTheCurrentArchive) {
    base::ProgramState state;
    state.archiveFolder = "/archives/";
    state.archiveName = "photos.mdb";
    FakeFrame frame;
    showSearch(state, [&]() -> SearchFrame& { return frame; });
    EXPECT_EQ(frame.calls, (std::vector<std::string>{"show", "/archives/photos.mdb"}));
}

TEST(SearchCommand, WithoutAnArchiveAnEmptyPathIsHandedOn) {
    const base::ProgramState state;
    FakeFrame frame;
    showSearch(state, [&]() -> SearchFrame& { return frame; });
    EXPECT_EQ(frame.calls, (std::vector<std::string>{"show", ""}));
}

class FormSearchTest : public support::ControlTest {
  protected:
    std::string obstacle(const FormSearch& form) {
        return form.findChild<QLabel*>("labelObstacle")->text().toStdString();
    }
};

TEST_F(FormSearchTest, IsAFrameAroundTheComponent) {
    FormSearch form([this] { return MadeControl{new searchcontrol::SearchControl(host()), {}}; });
    EXPECT_EQ(form.windowTitle(), "Search");
    EXPECT_EQ(form.objectName(), "form_search");
    EXPECT_FALSE(form.isVisible());
    form.showWindow();
    EXPECT_TRUE(form.isVisible());
    EXPECT_FALSE(form.isModal());
    auto* hosted = form.findChild<QWidget*>("search_control");
    ASSERT_NE(hosted, nullptr);
    EXPECT_EQ(hosted, form.control());
    form.setArchivePath("/nowhere/a.mdb");
    EXPECT_EQ(hosted->property("archivePath").toString(), "/nowhere/a.mdb");
    EXPECT_FALSE(form.findChild<QLabel*>("labelObstacle")->isVisible());
}

TEST_F(FormSearchTest, AMinimisedWindowComesBackWhenItIsAskedFor) {
    FormSearch form([this] { return MadeControl{new searchcontrol::SearchControl(host()), {}}; });
    form.showWindow();
    form.showMinimized();
    ASSERT_TRUE(form.isMinimized());
    form.showWindow();
    EXPECT_FALSE(form.isMinimized());
    EXPECT_TRUE(form.isVisible());
}

TEST_F(FormSearchTest, EscapeClearsTheQueryThenClosesTheWindow) {
    FormSearch form([this] { return MadeControl{new searchcontrol::SearchControl(host()), {}}; });
    form.showWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
    auto* line = form.findChild<QLineEdit*>("queryLine");
    QTest::keyClicks(line, "abc");
    QTest::keyClick(line, Qt::Key_Escape);
    EXPECT_EQ(line->text(), "");
    EXPECT_TRUE(form.isVisible());
    QTest::keyClick(line, Qt::Key_Escape);
    EXPECT_FALSE(form.isVisible());
}

TEST_F(FormSearchTest, WithoutTheComponentItSaysWhyAndTriesAgain) {
    int tries = 0;
    FormSearch form([&] {
        ++tries;
        return tries < 3 ? MadeControl{nullptr, "there is no library"}
                         : MadeControl{new searchcontrol::SearchControl(host()), {}};
    });
    EXPECT_EQ(tries, 1);
    form.showWindow();
    EXPECT_EQ(tries, 2);
    EXPECT_NE(obstacle(form).find("there is no library"), std::string::npos);
    EXPECT_TRUE(form.findChild<QLabel*>("labelObstacle")->isVisible());
    form.setArchivePath("/a.mdb");
    QTest::keyClick(&form, Qt::Key_Escape);
    EXPECT_FALSE(form.isVisible());
    form.showWindow();
    EXPECT_NE(form.control(), nullptr);
    EXPECT_FALSE(form.findChild<QLabel*>("labelObstacle")->isVisible());
    form.showWindow();
    EXPECT_EQ(tries, 3);
}

}  // namespace
}  // namespace search
