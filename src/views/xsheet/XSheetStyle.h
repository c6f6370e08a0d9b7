#pragma once

#include "views/xsheet/XSheetGeometry.h"

#include <QColor>
#include <QFont>
#include <QPalette>
#include <QPixmap>
#include <QStaticText>
#include <array>
#include <map>
#include <string>
#include <unordered_map>
#include <utility>

namespace velmor {

/// Texts of one font cut to a width and laid out, kept for painting them many times. Bounded.
class CElidedTexts {
public:
    CElidedTexts(const QFont& font, Qt::TextElideMode mode) : m_font(font), m_mode(mode) {}

    const QFont& Font() const { return m_font; }
    /// `width` in logical pixels. Valid until the next call.
    const QStaticText& Get(const std::string& text, int width);
    double WidthOf(const std::string& text) { return Whole(text).size().width(); }

private:
    const QStaticText& Whole(const std::string& text);
    QStaticText LaidOut(const QString& text) const;

    QFont m_font;
    Qt::TextElideMode m_mode;
    std::unordered_map<std::string, QStaticText> m_whole;
    std::map<std::pair<std::string, int>, QStaticText> m_cut; ///< by text and width
};

/// A sans font at most `height` pixels high, line spacing included, with characters of about `width` pixels.
QFont SheetFont(int height, int width, bool bold);
/// `share` of b, 0 to 1, in a.
QColor Mixed(const QColor& a, const QColor& b, double share);

/// The cells' own colours, which are the same on any desktop that is light, and dimmed where it is dark.
struct CSheetColors {
    QColor background;
    QColor cursorFill;
    QColor cursorFrame;
    QColor selectedFill;
    QColor plainFill;
    QColor text;
    QColor fadedText;
    QColor missingText;
    QColor mark; ///< of blurred and transparent cells
    QColor gridLine;
    QColor secondLine;
    QColor soundFill;
    QColor soundEdge;
    QColor soundWave;
    QColor spokenFill;
    QColor spokenEdge;
    QColor dropColor;
    // What camera input moves, in the colours of its buttons.
    QColor movingLevel;
    QColor movingCamera;
    QColor readyFrame; ///< the bar beside frames that are ready to be played
    QColor commentCorner;
    bool isDark = false;
};
CSheetColors SheetColors(bool dark);

/// Fonts, colours and pixmaps of the xsheet. The header has the palette's colours. Made anew when palette or screen
/// change.
class CXSheetStyle : public CSheetColors {
public:
    /// `scale` is the screen's.
    CXSheetStyle(const QPalette& palette, double scale);

    double Scale() const { return m_scale; }

    QColor header;
    QColor headerText;
    QColor fadedHeaderText;
    QColor headerLine;
    QColor currentHeader;
    QColor accent;

    CElidedTexts cellTexts;
    CElidedTexts levelNames;
    CElidedTexts smallTexts;
    CElidedTexts cameraTexts;
    CElidedTexts tinyTexts; ///< for two lines in a row

    /// `on`: what the button stands for holds; `enabled`: a click does something.
    const QPixmap& ButtonPixmap(HeaderButton button, bool on, bool enabled) const;
    const QPixmap& BlurMark() const { return m_blurMark; }
    const QPixmap& TransparencyMark() const { return m_transparencyMark; }
    static constexpr int markSize = 10;

private:
    double m_scale;
    struct CButtonPixmaps {
        QPixmap off;
        QPixmap on;
        QPixmap disabled;
    };
    std::array<CButtonPixmaps, 4> m_buttons;
    QPixmap m_blurMark;
    QPixmap m_transparencyMark;
};

} // namespace velmor
