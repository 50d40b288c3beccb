#include <gtest/gtest.h>

#include <QImage>
#include <QPixmap>
#include <cmath>

#include "platform/qt/pictures.h"

namespace {

/// A picture, and the side that it has on the screen at the usual fineness.
struct Shown {
    const char* Name;
    int Width;
    int Height;
};

constexpr Shown All[] = {
    {"client-small", 16, 16}, {"client-medium", 16, 16}, {"client-wide", 16, 16},
    {"client-meter", 16, 16}, {"client-flow", 16, 16},   {"client-closed", 16, 16},
    {"client-open", 16, 16},  {"client-active", 16, 16}, {"port-in-use", 16, 16},
    {"orvia", 96, 96},        {"splash", 480, 270}};

/// Pixels of which something is to be seen.
int Painted(const QImage& image) {
    int painted = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            painted += qAlpha(image.pixel(x, y)) > 127 ? 1 : 0;
        }
    }
    return painted;
}

TEST(Pictures, AreDrawnForScreensOfOneToThreeTimesTheUsualFineness) {
    for (const Shown& shown : All) {
        const QIcon icon = Picture(QString::fromLatin1(shown.Name));
        for (const double scale : {1.0, 1.25, 1.5, 2.0, 2.5, 3.0}) {
            const QImage image = icon.pixmap(QSize(shown.Width, shown.Height), scale).toImage();
            // The toolkit makes a picture smaller, never larger: a smaller one was not drawn.
            EXPECT_EQ(image.width(), std::lround(shown.Width * scale)) << shown.Name << scale;
            EXPECT_NEAR(image.height(), shown.Height * scale, 1) << shown.Name << scale;
            EXPECT_GT(Painted(image), image.width() * image.height() / 20) << shown.Name << scale;
        }
    }
}

TEST(Pictures, ThereIsNoneOfAnotherName) {
    EXPECT_TRUE(Picture(QStringLiteral("no-such-picture")).isNull());
}

}  // namespace
