#pragma once

namespace shell {

/// A place on the screen, in twips or in pixels.
struct Rectangle {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;

    friend bool operator==(const Rectangle&, const Rectangle&) = default;
};

/// Places of the parts of the workspace, in twips (1/1440 inch).
struct WorkspaceLayout {
    Rectangle panel;  ///< within the main window's inner area
    // Within the panel:
    Rectangle tree;
    Rectangle list;
    Rectangle firstLabel;
    Rectangle secondLabel;
};

/// Lays the workspace out in an inner area of that size; all in twips. A window that is too small
/// gives parts without extent, never negative ones.
WorkspaceLayout layOutWorkspace(int innerWidth, int innerHeight, int labelHeight);

int twipsFromPixels(int pixels, int dotsPerInch);
int pixelsFromTwips(int twips, int dotsPerInch);
/// Every edge goes to the nearest pixel, so that parts that touch each other still do.
Rectangle pixelsFromTwips(const Rectangle& twips, int dotsPerInch);

}  // namespace shell
