#include "shell/pictures.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPixmap>
#include <cstdlib>
#include <vector>

#include "base/failure.h"

namespace shell {
namespace {

QImage drawn(const QIcon& icon, int side) {
    return icon.pixmap(QSize(side, side), 1.0).toImage().convertToFormat(QImage::Format_ARGB32);
}

/// How much of the picture's area stands out from a background, in percent.
int visiblePart(const QImage& image, const QColor& background) {
    int visible = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor pixel = image.pixelColor(x, y);
            const double opacity = pixel.alphaF();
            const double contrast = std::abs(pixel.lightnessF() - background.lightnessF());
            visible += opacity > 0.5 && contrast > 0.15 ? 1 : 0;
        }
    }
    return 100 * visible / (image.width() * image.height());
}

TEST(Pictures, TheImageListHasTheNineKeysInTheirOrder) {
    EXPECT_EQ(ImageList::keys(), (QStringList{"folder", "folderopen", "removable", "fixed",
                                              "remote", "cdrom", "ramdisk", "unknown", "file"}));
}

TEST(Pictures, AnUnknownKeyIsAFailure) {
    const ImageList images;
    EXPECT_THROW((void)images.image("Folder"), base::InvalidArgumentFailure);
}

TEST(Pictures, EveryImageDiffersFromTheOthersAtSixteenPixels) {
    const ImageList images;
    std::vector<QImage> seen;
    for (const QString& key : ImageList::keys()) {
        const QImage image = drawn(images.image(key), 16);
        ASSERT_EQ(image.size(), QSize(16, 16)) << key.toStdString();
        for (const QImage& other : seen) {
            EXPECT_NE(image, other) << key.toStdString();
        }
        seen.push_back(image);
    }
}

TEST(Pictures, EveryImageStandsOutOnLightAndDarkAndIsSharpAtTwiceTheSize) {
    const ImageList images;
    for (const QString& key : ImageList::keys()) {
        for (const int side : {16, 32}) {
            const QImage image = drawn(images.image(key), side);
            EXPECT_EQ(image.width(), side);
            EXPECT_GT(visiblePart(image, Qt::white), 15) << key.toStdString();
            EXPECT_GT(visiblePart(image, QColor(0x2b, 0x2b, 0x2b)), 15) << key.toStdString();
        }
    }
}

TEST(Pictures, ASelectedLinesImageIsNotTinted) {
    const ImageList images;
    for (const QString& key : ImageList::keys()) {
        const QIcon image = images.image(key);
        EXPECT_EQ(image.pixmap(16, QIcon::Selected).toImage(), image.pixmap(16).toImage())
            << key.toStdString();
    }
}

TEST(Pictures, TheApplicationHasAnIconAndTheAboutWindowAPicture) {
    EXPECT_FALSE(drawn(applicationIcon(), 64).isNull());
    EXPECT_FALSE(drawn(aboutPicture(), 160).isNull());
}

}  // namespace
}  // namespace shell
