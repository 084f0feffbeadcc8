#include "shell/workspace_layout.h"

#include <gtest/gtest.h>

#include <ostream>

namespace shell {

void PrintTo(const Rectangle& rectangle, std::ostream* out) {
    *out << "(" << rectangle.left << ", " << rectangle.top << ") " << rectangle.width << " x "
         << rectangle.height;
}

namespace {

TEST(WorkspaceLayout, FollowsTheFormulaInTwips) {
    const WorkspaceLayout layout = layOutWorkspace(15000, 9000, 255);
    EXPECT_EQ(layout.panel, (Rectangle{50, 100, 14950, 8000}));
    EXPECT_EQ(layout.firstLabel, (Rectangle{0, 7745, 7475, 255}));
    EXPECT_EQ(layout.secondLabel, (Rectangle{7475, 7745, 7475, 255}));
    EXPECT_EQ(layout.list, (Rectangle{2650, 0, 12300, 7645}));
    EXPECT_EQ(layout.tree, (Rectangle{100, 0, 2500, 7645}));
}

TEST(WorkspaceLayout, AWindowThatIsTooSmallHasNoNegativeParts) {
    const WorkspaceLayout layout = layOutWorkspace(20, 900, 255);
    EXPECT_EQ(layout.panel, (Rectangle{50, 100, 0, 0}));
    EXPECT_EQ(layout.list.width, 0);
    EXPECT_EQ(layout.list.height, 0);
    EXPECT_EQ(layout.tree.height, 0);
}

TEST(WorkspaceLayout, ATwipIsAFifteenthOfAPixelAt96DotsPerInch) {
    EXPECT_EQ(pixelsFromTwips({50, 100, 2500, 1500}, 96), (Rectangle{3, 7, 167, 100}));
    EXPECT_EQ(twipsFromPixels(100, 96), 1500);
}

TEST(WorkspaceLayout, OtherScalesGiveTheSameInches) {
    EXPECT_EQ(pixelsFromTwips({1440, 720, 2880, 1440}, 96), (Rectangle{96, 48, 192, 96}));
    EXPECT_EQ(pixelsFromTwips({1440, 720, 2880, 1440}, 120), (Rectangle{120, 60, 240, 120}));
    EXPECT_EQ(pixelsFromTwips({1440, 720, 2880, 1440}, 192), (Rectangle{192, 96, 384, 192}));
    EXPECT_EQ(twipsFromPixels(192, 192), 1440);
}

TEST(WorkspaceLayout, PartsThatTouchInTwipsTouchInPixels) {
    for (const int dotsPerInch : {72, 96, 110, 120, 144, 168, 192}) {
        for (int width = 8000; width < 8100; width += 7) {
            const WorkspaceLayout layout = layOutWorkspace(width, 9000, 255);
            const Rectangle first = pixelsFromTwips(layout.firstLabel, dotsPerInch);
            const Rectangle second = pixelsFromTwips(layout.secondLabel, dotsPerInch);
            ASSERT_EQ(first.left + first.width, second.left) << dotsPerInch << " " << width;
        }
    }
}

}  // namespace
}  // namespace shell
