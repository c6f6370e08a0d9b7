#include "views/Icons.h"

#include "views/SplashArt.h"

#include <QCursor>
#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <QRegion>
#include <QSvgRenderer>
#include <gtest/gtest.h>

namespace velmor::testing {
namespace {

/// The application's text colour, for as long as this lives.
class CTextColour {
public:
    explicit CTextColour(QColor colour) {
        QPalette palette = m_before;
        palette.setColor(QPalette::WindowText, colour);
        QGuiApplication::setPalette(palette);
    }
    ~CTextColour() { QGuiApplication::setPalette(m_before); }
    CTextColour(const CTextColour&) = delete;
    CTextColour& operator=(const CTextColour&) = delete;

private:
    QPalette m_before = QGuiApplication::palette();
};

QImage Shown(const char* name, int size, double ratio, QIcon::Mode mode = QIcon::Normal) {
    return Icon(name).pixmap({size, size}, ratio, mode).toImage().convertToFormat(QImage::Format_ARGB32);
}

template<class TCounts>
int Count(const QImage& image, TCounts counts) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            count += counts(image.pixel(x, y));
    return count;
}

int Opaque(const QImage& image, QRgb colour) {
    return Count(image, [&](QRgb pixel) { return pixel == colour; });
}

int Painted(const QImage& image) {
    return Count(image, [](QRgb pixel) { return qAlpha(pixel) > 0; });
}

/// The icons with colours of their own: they are painted on what is always light, or are a picture.
bool HasOwnColours(const QString& name) {
    return name.startsWith("header-") || name == "personal-velmor";
}

TEST(IconsTest, EveryIconIsDrawnOnTheGridInTheTextColour) {
    const CTextColour magenta(QColor(255, 0, 255));
    const QStringList files = QDir(":/icons").entryList({"*.svg"});
    ASSERT_GT(files.size(), 90);
    for (const QString& file : files) {
        SCOPED_TRACE(file.toStdString());
        const QString name = file.chopped(4);
        const QSvgRenderer drawing(":/icons/" + file);
        ASSERT_TRUE(drawing.isValid());
        EXPECT_EQ(drawing.viewBoxF(), QRectF(0, 0, 24, 24));
        const QImage image = Shown(name.toLatin1().constData(), 48, 1);
        EXPECT_GT(Painted(image), 100);
        EXPECT_EQ(Opaque(image, qRgb(255, 0, 255)) > 20, !HasOwnColours(name));
    }
}

TEST(IconsTest, EveryCursorIsSeenOnBlackAndOnWhite) {
    const QStringList files = QDir(":/cursors").entryList({"*.svg"});
    ASSERT_GE(files.size(), 10);
    for (const QString& file : files) {
        SCOPED_TRACE(file.toStdString());
        EXPECT_EQ(QSvgRenderer(":/cursors/" + file).viewBoxF(), QRectF(0, 0, 32, 32));
        const QCursor cursor = ToolCursor(file.chopped(4).toLatin1().constData(), 4, 28, 2);
        EXPECT_EQ(cursor.hotSpot(), QPoint(4, 28));
        EXPECT_EQ(cursor.pixmap().deviceIndependentSize(), QSizeF(32, 32));
        const QImage image = cursor.pixmap().toImage().convertToFormat(QImage::Format_ARGB32);
        EXPECT_EQ(image.width(), 64);
        EXPECT_GT(Opaque(image, qRgb(0, 0, 0)), 40);
        EXPECT_GT(Opaque(image, qRgb(255, 255, 255)), 40);
    }
}

TEST(IconsTest, TheTipsOfTheToolsLieOnTheirHotSpots) {
    const auto tip = [](const char* name, int x, int y) {
        const QImage image = ToolCursor(name, x, y, 1).pixmap().toImage();
        return qAlpha(image.pixel(x, y)) > 200 && qGray(image.pixel(x, y)) < 80 &&
               qAlpha(image.pixel(x - 4, y)) == 0;
    };
    for (const char* name : {"cursor-pen", "cursor-line-brush", "cursor-pick"})
        EXPECT_TRUE(tip(name, 4, 28)) << name;
    for (const char* name : {"cursor-bucket", "cursor-eraser"})
        EXPECT_TRUE(tip(name, 6, 26)) << name;
}

TEST(IconsTest, FollowsThePaletteAtRunTime) {
    const QIcon icon = Icon("undo");
    const auto shown = [&] { return icon.pixmap({24, 24}, 1.0).toImage().convertToFormat(QImage::Format_ARGB32); };
    const QImage before = shown();
    {
        const CTextColour green(QColor(0, 255, 0));
        EXPECT_GT(Opaque(shown(), qRgb(0, 255, 0)), 5);
    }
    EXPECT_EQ(shown(), before);
}

TEST(IconsTest, IsSharpAtEveryScale) {
    for (const double ratio : {1.0, 1.25, 1.5, 2.0}) {
        SCOPED_TRACE(ratio);
        const QImage asked = Shown("about", 20, ratio);
        EXPECT_EQ(asked.width(), qRound(20 * ratio));
        EXPECT_EQ(asked.devicePixelRatio(), ratio);

        QImage canvas(QSize(20, 20) * ratio, QImage::Format_ARGB32_Premultiplied);
        canvas.setDevicePixelRatio(ratio);
        canvas.fill(Qt::transparent);
        QPainter painter(&canvas);
        Icon("about").paint(&painter, {0, 0, 20, 20});
        painter.end();
        EXPECT_EQ(canvas.convertToFormat(QImage::Format_ARGB32), asked);
    }
}

TEST(IconsTest, DisabledIsFaintAndTheOtherModesAreAlike) {
    const QImage normal = Shown("settings", 32, 1);
    EXPECT_EQ(Shown("settings", 32, 1, QIcon::Active), normal);
    EXPECT_EQ(Shown("settings", 32, 1, QIcon::Selected), normal);
    const QImage disabled = Shown("settings", 32, 1, QIcon::Disabled);
    EXPECT_GT(Painted(disabled), 100);
    EXPECT_EQ(Count(disabled, [](QRgb pixel) { return qAlpha(pixel) > 128; }), 0);
}

TEST(IconsTest, UnknownNamesPaintNothing) {
    EXPECT_TRUE(Icon("no-such-icon").isNull());
    EXPECT_TRUE(Icon("no-such-icon").pixmap(24, 24).isNull());
    EXPECT_EQ(ToolCursor("no-such-cursor", 1, 1, 1).shape(), Qt::ArrowCursor);
    EXPECT_TRUE(DrawnPixmap(":/art/no-such-picture.svg", {8, 8}, 1).isNull());
}

TEST(IconsTest, TheSplashPictureFillsItsOutlineAndNoMore) {
    const QRegion shape(SplashOutline());
    QRegion around = shape;
    for (const int x : {-3, 0, 3})
        for (const int y : {-3, 0, 3})
            around += shape.translated(x, y);
    EXPECT_TRUE(QRect(0, 0, 576, 265).contains(shape.boundingRect()));
    EXPECT_EQ(SplashPicture(1.5).width(), 864);
    const QImage picture = SplashPicture(1).toImage().convertToFormat(QImage::Format_ARGB32);
    ASSERT_EQ(picture.size(), QSize(576, 265));
    int holes = 0;
    int outside = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x) {
            const int alpha = qAlpha(picture.pixel(x, y));
            holes += shape.contains(QPoint(x, y)) && alpha < 240;
            outside += !around.contains(QPoint(x, y)) && alpha > 25;
        }
    EXPECT_EQ(holes, 0);
    EXPECT_EQ(outside, 0);
}

} // namespace
} // namespace velmor::testing
