#include "views/xsheet/XSheetStyle.h"

#include "views/Brightness.h"
#include "views/Icons.h"

#include <QFontMetricsF>
#include <QIcon>
#include <QPainter>
#include <QRadialGradient>

namespace velmor {

namespace {

constexpr std::size_t mostKeptTexts = 4096;
constexpr int iconSize = 16;

QPixmap EmptyPixmap(int size, double scale) {
    QPixmap pixmap(QSize(size, size) * scale);
    pixmap.setDevicePixelRatio(scale);
    pixmap.fill(Qt::transparent);
    return pixmap;
}

// A dot without an edge.
QPixmap DrawBlurMark(double scale, QColor color) {
    QPixmap pixmap = EmptyPixmap(CXSheetStyle::markSize, scale);
    QPainter painter(&pixmap);
    const double radius = CXSheetStyle::markSize / 2.0;
    QRadialGradient dot(radius, radius, radius);
    for (const auto& [place, alpha] : {std::pair(0.0, 255), std::pair(0.3, 210), std::pair(1.0, 0)}) {
        color.setAlpha(alpha);
        dot.setColorAt(place, color);
    }
    painter.fillRect(pixmap.rect(), dot);
    return pixmap;
}

// A disc of which half shows through.
QPixmap DrawTransparencyMark(double scale, const QColor& color) {
    QPixmap pixmap = EmptyPixmap(CXSheetStyle::markSize, scale);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF disc(1, 1, CXSheetStyle::markSize - 2, CXSheetStyle::markSize - 2);
    painter.setPen(QPen(color, 1));
    painter.drawEllipse(disc);
    painter.setBrush(color);
    painter.drawPie(disc, 90 * 16, 180 * 16);
    return pixmap;
}

QPixmap IconPixmap(const char* name, double scale, QIcon::Mode mode = QIcon::Normal) {
    return Icon(name).pixmap(QSize(iconSize, iconSize), scale, mode);
}

// The drawings of the buttons are made for a light ground; what counts is their shape.
QPixmap Tinted(QPixmap pixmap, const QColor& color) {
    if (pixmap.isNull())
        return pixmap;
    QPainter painter(&pixmap);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(QRect({0, 0}, QSize(iconSize, iconSize)), color);
    return pixmap;
}

} // namespace

const QStaticText& CElidedTexts::Whole(const std::string& text) {
    if (const auto known = m_whole.find(text); known != m_whole.end())
        return known->second;
    if (m_whole.size() >= mostKeptTexts)
        m_whole.clear();
    return m_whole.emplace(text, LaidOut(QString::fromStdString(text))).first->second;
}

const QStaticText& CElidedTexts::Get(const std::string& text, int width) {
    const QStaticText& whole = Whole(text);
    if (whole.size().width() <= width)
        return whole;
    const std::pair key(text, width);
    if (const auto known = m_cut.find(key); known != m_cut.end())
        return known->second;
    if (m_cut.size() >= mostKeptTexts)
        m_cut.clear();
    const QString cut = QFontMetricsF(m_font).elidedText(QString::fromStdString(text), m_mode, width);
    return m_cut.emplace(key, LaidOut(cut)).first->second;
}

QStaticText CElidedTexts::LaidOut(const QString& text) const {
    QStaticText laidOut(text);
    laidOut.setTextFormat(Qt::PlainText);
    laidOut.setPerformanceHint(QStaticText::AggressiveCaching);
    laidOut.prepare({}, m_font);
    return laidOut;
}

QFont SheetFont(int height, int width, bool bold) {
    QFont font(QStringList{"Arial", "Liberation Sans", "Helvetica", "DejaVu Sans"});
    font.setStyleHint(QFont::SansSerif);
    font.setBold(bold);
    int size = height;
    font.setPixelSize(size);
    while (size > 1 && QFontMetrics(font).height() > height)
        font.setPixelSize(--size);
    const double average = QFontMetricsF(font).horizontalAdvance("0123456789") / 10;
    if (average > width)
        font.setStretch(std::max(70, static_cast<int>(100 * width / average)));
    return font;
}

QColor Mixed(const QColor& a, const QColor& b, double share) {
    const auto mix = [&](int x, int y) { return static_cast<int>(x + (y - x) * share); };
    return {mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue())};
}

CSheetColors SheetColors(bool dark) {
    static constexpr CSheetColors light{.background{128, 128, 128},
                                        .cursorFill{128, 255, 128},
                                        .cursorFrame{24, 132, 40},
                                        .selectedFill{192, 192, 255},
                                        .plainFill{224, 224, 208},
                                        .text{28, 28, 24},
                                        .fadedText{122, 122, 108},
                                        .missingText{176, 24, 24},
                                        .mark{40, 40, 36},
                                        .gridLine{200, 200, 184},
                                        .secondLine{118, 118, 106},
                                        .soundFill{166, 202, 232},
                                        .soundEdge{52, 112, 176},
                                        .soundWave{104, 158, 208},
                                        .spokenFill{250, 240, 206},
                                        .spokenEdge{196, 148, 40},
                                        .dropColor{20, 96, 208},
                                        .movingLevel{31, 111, 212},
                                        .movingCamera{207, 107, 18},
                                        .readyFrame{46, 160, 67},
                                        .commentCorner{214, 40, 24},
                                        .isDark = false};
    static constexpr CSheetColors dimmed{.background{30, 31, 33},
                                         .cursorFill{38, 108, 46},
                                         .cursorFrame{112, 216, 122},
                                         .selectedFill{66, 68, 124},
                                         .plainFill{62, 63, 56},
                                         .text{232, 232, 220},
                                         .fadedText{160, 160, 146},
                                         .missingText{255, 124, 116},
                                         .mark{232, 232, 220},
                                         .gridLine{80, 81, 73},
                                         .secondLine{128, 129, 116},
                                         .soundFill{42, 76, 108},
                                         .soundEdge{98, 162, 224},
                                         .soundWave{72, 126, 176},
                                         .spokenFill{70, 62, 40},
                                         .spokenEdge{206, 166, 78},
                                         .dropColor{96, 164, 255},
                                         .movingLevel{78, 150, 240},
                                         .movingCamera{230, 134, 48},
                                         .readyFrame{86, 196, 104},
                                         .commentCorner{255, 112, 92},
                                         .isDark = true};
    return dark ? dimmed : light;
}

CXSheetStyle::CXSheetStyle(const QPalette& palette, double scale)
    : CSheetColors(SheetColors(IsDark(palette))),
      header(palette.color(QPalette::Button)),
      headerText(palette.color(QPalette::ButtonText)),
      fadedHeaderText(Mixed(headerText, header, 0.35)),
      headerLine(Mixed(header, headerText, 0.25)),
      currentHeader(Mixed(header, palette.color(QPalette::Highlight), 0.35)),
      accent(palette.color(QPalette::Highlight)),
      cellTexts(SheetFont(16, 7, true), Qt::ElideMiddle),
      levelNames(SheetFont(17, 7, true), Qt::ElideRight),
      smallTexts(SheetFont(16, 5, false), Qt::ElideMiddle),
      cameraTexts(SheetFont(14, 5, false), Qt::ElideRight),
      tinyTexts(SheetFont(11, 5, false), Qt::ElideRight),
      m_scale(scale),
      m_blurMark(DrawBlurMark(scale, mark)),
      m_transparencyMark(DrawTransparencyMark(scale, mark)) {
    const auto effect = [&](const char* name) {
        const QPixmap pixmap = Tinted(IconPixmap(name, scale), headerText);
        return CButtonPixmaps{pixmap, pixmap, Tinted(IconPixmap(name, scale, QIcon::Disabled), headerText)};
    };
    const auto moving = [&](const char* off, const char* on) {
        return CButtonPixmaps{Tinted(IconPixmap(off, scale), fadedHeaderText), IconPixmap(on, scale), {}};
    };
    m_buttons = {effect("header-blur"), effect("header-transparency"), moving("header-move", "header-move-on"),
                 moving("header-camera-move", "header-camera-move-on")};
}

const QPixmap& CXSheetStyle::ButtonPixmap(HeaderButton button, bool on, bool enabled) const {
    const CButtonPixmaps& pixmaps = m_buttons[static_cast<std::size_t>(button)];
    if (!enabled)
        return pixmaps.disabled;
    return on ? pixmaps.on : pixmaps.off;
}

} // namespace velmor
