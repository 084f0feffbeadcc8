#include "shell/workspace_layout.h"

#include <algorithm>
#include <cmath>

namespace shell {

namespace {

constexpr int twipsPerInch = 1440;

constexpr int panelTop = 100;
constexpr int panelLeft = 50;
constexpr int heightBesidesPanel = 1000;
constexpr int treeIndent = 100;
constexpr int treeWidth = 2500;
constexpr int gapBesideTree = 50;
constexpr int gapAboveLabels = 100;

int extent(int value) { return std::max(value, 0); }

}  // namespace

WorkspaceLayout layOutWorkspace(int innerWidth, int innerHeight, int labelHeight) {
    WorkspaceLayout layout;
    layout.panel = {panelLeft, panelTop, extent(innerWidth - panelLeft),
                    extent(innerHeight - heightBesidesPanel)};
    const int width = layout.panel.width;
    const int height = layout.panel.height;
    layout.firstLabel = {0, height - labelHeight, width / 2, labelHeight};
    layout.secondLabel = {layout.firstLabel.width, layout.firstLabel.top, layout.firstLabel.width,
                          labelHeight};
    const int listLeft = treeIndent + treeWidth + gapBesideTree;
    layout.list = {listLeft, 0, extent(width - listLeft),
                   extent(height - labelHeight - gapAboveLabels)};
    layout.tree = {treeIndent, 0, treeWidth, layout.list.height};
    return layout;
}

int twipsFromPixels(int pixelCount, int dotsPerInch) {
    return static_cast<int>(
        std::lround(static_cast<double>(pixelCount) * twipsPerInch / dotsPerInch));
}

int pixelsFromTwips(int twips, int dotsPerInch) {
    return static_cast<int>(std::lround(static_cast<double>(twips) * dotsPerInch / twipsPerInch));
}

Rectangle pixelsFromTwips(const Rectangle& twips, int dotsPerInch) {
    const int left = pixelsFromTwips(twips.left, dotsPerInch);
    const int top = pixelsFromTwips(twips.top, dotsPerInch);
    return {left, top, pixelsFromTwips(twips.left + twips.width, dotsPerInch) - left,
            pixelsFromTwips(twips.top + twips.height, dotsPerInch) - top};
}

}  // namespace shell
