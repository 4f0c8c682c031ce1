// The drawings on the grounds that they are shown on.
#include "core/shell/Commands.h"
#include "desktop/grid/GridLook.h"
#include "desktop/platform/Resources.h"

#include <QIcon>
#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

namespace tallybook::test {
namespace {

constexpr double kReadable = 3.0;                                          // least contrast of a drawing
const QColor kHighlights[] = {QColor(48, 140, 198), QColor(47, 130, 208)}; // of a light and of a dark theme

QImage onGround(const QIcon& icon, QIcon::Mode mode, const QColor& ground) {
    QImage picture(20, 20, QImage::Format_RGB32);
    picture.fill(ground);
    QPainter painter(&picture);
    icon.paint(&painter, picture.rect(), Qt::AlignCenter, mode);
    return picture;
}

int readablePixels(const QImage& picture, const QColor& ground) {
    int count = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            count += desktop::contrast(picture.pixelColor(x, y), ground) >= kReadable ? 1 : 0;
    return count;
}

// Two strokes through the icon make forty pixels.
TEST(Icons, standOutOnAHighlightedItem) {
    for (const shell::Command& command : shell::commands()) {
        if (command.key.empty())
            continue;
        const QIcon icon = desktop::icon(QString::fromLatin1(command.key.data(), qsizetype(command.key.size())));
        for (const QColor& ground : kHighlights)
            for (const QIcon::Mode mode : {QIcon::Active, QIcon::Selected})
                EXPECT_GE(readablePixels(onGround(icon, mode, ground), ground), 40)
                    << command.key << " on " << ground.name().toStdString();
    }
}

TEST(Icons, haveNoEdgeOnTheGroundOfAWindow) {
    const QIcon icon = desktop::icon(QStringLiteral("save"));
    const QIcon plain(QStringLiteral(":/icons/save.svg"));
    for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Disabled})
        EXPECT_EQ(onGround(icon, mode, Qt::white), onGround(plain, mode, Qt::white));
}

TEST(Icons, areSharpOnScreensOfTwiceTheResolution) {
    const QIcon icon = desktop::icon(QStringLiteral("save"));
    for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Active}) {
        const QPixmap picture = icon.pixmap(QSize(20, 20), 2.0, mode);
        EXPECT_EQ(picture.size(), QSize(40, 40));
        EXPECT_EQ(picture.devicePixelRatio(), 2.0);
    }
}

} // namespace
} // namespace tallybook::test
