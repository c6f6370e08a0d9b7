#include "views/xsheet/XSheetPainter.h"

#include "views/xsheet/XSheetStyle.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace velmor {

namespace {

constexpr int margin = 4;     ///< beside texts
constexpr int noteWidth = 3;  ///< of the bar in a note's color
constexpr int readyWidth = 3; ///< of the bar beside frames that are ready to be played
constexpr int spokenAlpha = 190;
constexpr int spokenWidth = 27; ///< of what is spoken, in the sound column

// printf would show a small negative number as "-0".
double WithoutNegativeZero(double value) {
    return std::nearbyint(value) + 0.0;
}

std::string Trimmed(const QString& text) {
    return text.trimmed().toStdString();
}

std::string PanText(const CCameraFrame& camera) {
    return Trimmed(
        QString::asprintf("%4.0f,%4.0f", WithoutNegativeZero(camera.panX), WithoutNegativeZero(camera.panY)));
}

std::string ZoomText(const CCameraFrame& camera) {
    return Trimmed(QString::asprintf("%4.0f%%", WithoutNegativeZero(camera.zoom * 100)));
}

std::string RotationText(const CCameraFrame& camera) {
    return std::to_string(RotationInDegrees(camera.rotation)) + "\u00b0";
}

void DrawText(QPainter& painter, CElidedTexts& texts, const std::string& text, const QRect& rect,
              Qt::Alignment alignment = Qt::AlignLeft) {
    const QStaticText& laidOut = texts.Get(text, rect.width());
    const QSizeF size = laidOut.size();
    double x = rect.x();
    if (alignment == Qt::AlignHCenter)
        x += (rect.width() - size.width()) / 2;
    else if (alignment == Qt::AlignRight)
        x += rect.width() - size.width();
    painter.setFont(texts.Font());
    painter.drawStaticText(QPointF(std::floor(x), rect.y() + std::floor((rect.height() - size.height()) / 2)),
                           laidOut);
}

} // namespace

void CXSheetPainter::Paint(const QRegion& region) {
    PaintBackground(region);
    if (!m_look.sceneOpen)
        return;
    PaintCells(region);
    PaintRows(region);
    PaintDropMark();
    const QRect header(0, 0, m_geometry.client.width(), m_geometry.headerHeight);
    if (region.intersects(header))
        PaintHeader(region & header);
    if (m_look.pointer.levelTarget)
        m_painter.fillRect(TargetRect(m_geometry, *m_look.pointer.levelTarget), m_style.dropColor);
}

void CXSheetPainter::PaintBackground(const QRegion& region) {
    QRegion empty = region;
    if (m_look.sceneOpen) {
        const QRect rows(0, 0, m_geometry.client.width(), m_geometry.RowY(m_geometry.EndFrame()));
        const int gapX = m_geometry.ColumnX(m_geometry.EndLevel());
        empty -= rows.intersected({0, 0, gapX, rows.height()});
        empty -= rows & m_geometry.CameraColumn();
    }
    for (const QRect& rect : empty)
        m_painter.fillRect(rect, m_style.background);
}

void CXSheetPainter::PaintGround(const QRect& rect, const QColor& fill, bool lastOfSecond) {
    m_painter.fillRect(rect, fill);
    m_painter.fillRect(rect.right(), rect.y(), 1, rect.height(), m_style.gridLine);
    m_painter.fillRect(rect.x(), rect.bottom(), rect.width(), 1,
                       lastOfSecond ? m_style.secondLine : m_style.gridLine);
}

void CXSheetPainter::PaintCells(const QRegion& region) {
    const QRegion visible = region & m_geometry.GridArea();
    if (visible.isEmpty())
        return;
    m_painter.save();
    m_painter.setClipRect(m_geometry.GridArea(), Qt::IntersectClip);
    PaintGrid(visible);
    for (std::size_t row = 0; row < m_look.frames.size(); ++row) {
        for (std::size_t column = 0; column < m_look.levels.size(); ++column) {
            const CCellLook& cell = m_look.CellAt(row, column);
            const QRect rect = CellRect(row, column);
            if (!visible.intersects(rect))
                continue;
            if (cell.fill == CellFill::Cursor && m_look.focused)
                PaintCursorFrame(rect.adjusted(0, 0, -1, -1));
            if (m_geometry.IsFolded(m_geometry.firstLevel + static_cast<int>(column)))
                PaintFoldedCell(cell, rect);
            else if (!cell.text.empty() || !cell.note.IsEmpty())
                PaintCell(cell, rect);
        }
    }
    if (m_look.entry)
        PaintEntry(*m_look.entry);
    if (m_look.pointer.grip)
        PaintGrip(*m_look.pointer.grip);
    m_painter.restore();
}

// A folder's colour tints the ground of its cells. What would be is seen through a veil of the accent.
QColor CXSheetPainter::FillOf(const CCellLook& cell) const {
    QColor fill = cell.fill == CellFill::Cursor     ? m_style.cursorFill
                  : cell.fill == CellFill::Selected ? m_style.selectedFill
                                                    : m_style.plainFill;
    if (cell.hue >= 0 && cell.fill != CellFill::Cursor)
        fill = Mixed(fill, QColor::fromHsl(cell.hue, 200, 128), cell.fill == CellFill::Plain ? 0.3 : 0.15);
    return cell.outcome ? Mixed(fill, m_style.accent, 0.2) : fill;
}

void CXSheetPainter::PaintEntry(const CEntryLook& entry) {
    const QRect rect = m_geometry.CellRect(entry.cell).adjusted(0, 0, -1, -1);
    m_painter.fillRect(rect, m_style.accent);
    m_painter.fillRect(rect.adjusted(2, 2, -2, -2), m_style.cursorFill);
    const QRect inner = rect.adjusted(margin + 1, 0, -margin - 2, 0);
    const QColor color = entry.possible ? m_style.text : m_style.missingText;
    m_painter.setPen(color);
    DrawText(m_painter, m_style.cellTexts, entry.text, inner);
    const int width = static_cast<int>(std::ceil(m_style.cellTexts.WidthOf(entry.text)));
    m_painter.fillRect(std::min(inner.left() + width + 1, inner.right()), rect.y() + 4, 1, rect.height() - 8,
                       color);
}

void CXSheetPainter::PaintGrip(const CGripLook& grip) {
    m_painter.fillRect(grip.rect, m_style.plainFill);
    m_painter.fillRect(grip.rect.adjusted(1, 1, -1, -1), m_style.accent);
}

// Most cells are alike and each line runs over many of them, so these are painted in one piece.
void CXSheetPainter::PaintGrid(const QRegion& visible) {
    if (m_look.cells.empty())
        return;
    const QRect area = CellRect(0, 0) | CellRect(m_look.frames.size() - 1, m_look.levels.size() - 1);
    m_painter.fillRect(area, m_style.plainFill);
    for (std::size_t row = 0; row < m_look.frames.size(); ++row) {
        for (std::size_t column = 0; column < m_look.levels.size(); ++column) {
            const CCellLook& cell = m_look.CellAt(row, column);
            const QRect rect = CellRect(row, column);
            const bool isPlain = cell.fill == CellFill::Plain && !cell.outcome && cell.hue < 0;
            if (!isPlain && visible.intersects(rect))
                m_painter.fillRect(rect, FillOf(cell));
        }
    }
    for (std::size_t column = 0; column < m_look.levels.size(); ++column)
        m_painter.fillRect(CellRect(0, column).right(), area.y(), 1, area.height(), m_style.gridLine);
    for (std::size_t row = 0; row < m_look.frames.size(); ++row) {
        const bool lastOfSecond = IsLastOfSecond(m_geometry.firstFrame + static_cast<int>(row));
        m_painter.fillRect(area.x(), CellRect(row, 0).bottom(), area.width(), 1,
                           lastOfSecond ? m_style.secondLine : m_style.gridLine);
    }
}

void CXSheetPainter::PaintCursorFrame(const QRect& rect) {
    m_painter.setPen(m_style.cursorFrame);
    m_painter.setBrush(Qt::NoBrush);
    m_painter.drawRect(rect.adjusted(0, 0, -1, -1));
}

// That something is exposed, and where another drawing begins.
void CXSheetPainter::PaintFoldedCell(const CCellLook& cell, const QRect& rect) {
    if (cell.text.empty())
        return;
    const QColor color = cell.missing ? m_style.missingText : Mixed(FillOf(cell), m_style.text, 0.55);
    m_painter.fillRect(rect.adjusted(rect.width() / 3, cell.held ? 0 : 3, -rect.width() / 3, 0), color);
}

void CXSheetPainter::PaintHoldLine(HoldLine line, const QRect& rect, const QColor& color) {
    constexpr int width = 2;
    const int x = rect.center().x();
    const int end = line == HoldLine::End ? rect.bottom() - 4 : rect.bottom() + 1;
    m_painter.fillRect(x, rect.y() - 1, width, end - rect.y() + 1, color);
    if (line == HoldLine::End)
        m_painter.fillRect(x - 4, end, 8 + width, width, color);
}

void CXSheetPainter::PaintPicture(const QPixmap& picture, const QRect& room) {
    if (picture.isNull() || room.height() < 1 || room.width() < 1)
        return;
    QSize size = picture.deviceIndependentSize().toSize();
    if (size.width() > room.width() || size.height() > room.height())
        size = size.scaled(room.size(), Qt::KeepAspectRatio).expandedTo({1, 1});
    QRect place({}, size);
    place.moveCenter(room.center());
    m_painter.save();
    m_painter.setRenderHint(QPainter::SmoothPixmapTransform);
    m_painter.drawPixmap(place, picture);
    m_painter.restore();
}

void CXSheetPainter::PaintCell(const CCellLook& cell, const QRect& whole) {
    const QColor line = cell.missing ? m_style.missingText : m_style.fadedText;
    if (cell.hold != HoldLine::None)
        PaintHoldLine(cell.hold, whole, cell.outcome ? Mixed(line, FillOf(cell), 0.35) : line);
    QRect rect = whole;
    if (whole.height() > m_geometry.textHeight && !cell.held) {
        rect.setHeight(m_geometry.textHeight);
        PaintPicture(cell.picture.pixmap, m_geometry.PictureRect(whole));
    }
    QRect inner = PaintNote(cell.note, rect).adjusted(margin, 0, -margin + 1, -1);
    const int markY = rect.y() + (rect.height() - CXSheetStyle::markSize) / 2;
    for (const auto& [shown, mark] :
         {std::pair(cell.blurred, &m_style.BlurMark()), std::pair(cell.transparent, &m_style.TransparencyMark())}) {
        if (!shown)
            continue;
        m_painter.drawPixmap(inner.right() + 1 - CXSheetStyle::markSize, markY, *mark);
        inner.setRight(inner.right() - CXSheetStyle::markSize - 1);
    }
    if (cell.hold != HoldLine::None)
        return;
    const QColor text = cell.missing ? m_style.missingText : cell.held ? m_style.fadedText : m_style.text;
    m_painter.setPen(cell.outcome ? Mixed(text, FillOf(cell), 0.35) : text);
    const bool fits = m_style.cellTexts.WidthOf(cell.text) <= inner.width();
    DrawText(m_painter, fits ? m_style.cellTexts : m_style.smallTexts, cell.text, inner,
             cell.held ? Qt::AlignHCenter : Qt::AlignLeft);
}

// The color stands at the left, where text begins, the mark at the right.
QRect CXSheetPainter::PaintNote(const CNoteLook& note, const QRect& rect) {
    QRect left = rect;
    const QColor color = ColorOf(note.color, m_style.isDark, m_style.text);
    if (note.color != NoteColor::None)
        m_painter.fillRect(rect.x(), rect.y(), noteWidth, rect.height() - 1, color);
    if (note.mark != SheetMark::None) {
        const int y = rect.y() + (rect.height() - CXSheetStyle::markSize) / 2;
        left.setRight(rect.right() - CXSheetStyle::markSize - margin);
        PaintMark(m_painter, note.mark, QRect(left.right(), y, CXSheetStyle::markSize, CXSheetStyle::markSize),
                  color);
    }
    if (note.hasComment)
        PaintCommentCorner(m_painter, rect.adjusted(0, 0, -1, 0), m_style.commentCorner);
    return left;
}

void CXSheetPainter::PaintRows(const QRegion& region) {
    for (std::size_t row = 0; row < m_look.frames.size(); ++row) {
        const int frame = m_geometry.firstFrame + static_cast<int>(row);
        const bool lastOfSecond = IsLastOfSecond(frame);
        const CFrameLook& look = m_look.frames[row];
        if (const QRect rect = m_geometry.FrameNumberRect(frame); region.intersects(rect))
            PaintFrameNumber(look, frame + 1, rect, lastOfSecond);
        if (const QRect rect = m_geometry.CameraRect(frame); region.intersects(rect))
            PaintCamera(look, rect, lastOfSecond);
        if (const QRect rect = m_geometry.SoundRect(frame); region.intersects(rect))
            PaintSound(look, rect, lastOfSecond);
    }
}

void CXSheetPainter::PaintFrameNumber(const CFrameLook& frame, int number, const QRect& rect, bool lastOfSecond) {
    m_painter.fillRect(rect, frame.current ? m_style.currentHeader : m_style.header);
    m_painter.fillRect(rect.x(), rect.bottom(), rect.width(), 1,
                       lastOfSecond ? m_style.fadedHeaderText : m_style.headerLine);
    m_painter.fillRect(rect.right(), rect.y(), 1, rect.height(), m_style.headerLine);
    if (frame.selected)
        m_painter.fillRect(rect.right() - 2, rect.y(), 3, rect.height() - 1, m_style.accent);
    if (frame.ready)
        m_painter.fillRect(rect.x(), rect.y(), readyWidth, rect.height(), m_style.readyFrame);
    if (frame.note.color != NoteColor::None)
        m_painter.fillRect(rect.x() + readyWidth, rect.bottom() - noteWidth, rect.width() - readyWidth - noteWidth,
                           noteWidth, ColorOf(frame.note.color, m_style.isDark, m_style.headerText));
    if (frame.note.hasComment)
        PaintCommentCorner(m_painter, rect, m_style.commentCorner);
    m_painter.setPen(frame.current || lastOfSecond ? m_style.headerText : m_style.fadedHeaderText);
    DrawText(m_painter, m_style.smallTexts, std::to_string(number), rect.adjusted(0, 0, -margin, -1),
             Qt::AlignRight);
}

void CXSheetPainter::PaintCamera(const CFrameLook& frame, const QRect& rect, bool lastOfSecond) {
    PaintGround(rect, frame.current ? Mixed(m_style.plainFill, m_style.cursorFill, 0.4) : m_style.plainFill,
                lastOfSecond);
    m_painter.fillRect(rect.x(), rect.y(), 2, rect.height(), m_style.secondLine);
    const QRect inner = rect.adjusted(margin, 0, -margin, -1);
    if (frame.cameraHeld) {
        m_painter.setPen(m_style.fadedText);
        DrawText(m_painter, m_style.smallTexts, "\"", inner, Qt::AlignHCenter);
        return;
    }
    m_painter.setPen(m_style.text);
    const std::string pan = PanText(frame.camera);
    const std::string zoom = ZoomText(frame.camera);
    const bool turned = RotationInDegrees(frame.camera.rotation) != 0;
    const double width = m_style.cameraTexts.WidthOf(pan) + m_style.cameraTexts.WidthOf(zoom);
    const int between = margin / 2;
    if (!turned && width + between <= inner.width()) {
        DrawText(m_painter, m_style.cameraTexts, pan, inner);
        DrawText(m_painter, m_style.cameraTexts, zoom, inner, Qt::AlignRight);
        return;
    }
    const QRect upper = inner.adjusted(0, 0, 0, -9);
    const QRect lower = inner.adjusted(0, 9, 0, 0);
    DrawText(m_painter, m_style.tinyTexts, pan, upper);
    DrawText(m_painter, m_style.tinyTexts, zoom, lower);
    if (turned)
        DrawText(m_painter, m_style.tinyTexts, RotationText(frame.camera), lower, Qt::AlignRight);
}

void CXSheetPainter::PaintSound(const CFrameLook& frame, const QRect& rect, bool lastOfSecond) {
    PaintGround(rect, frame.current ? Mixed(m_style.plainFill, m_style.cursorFill, 0.4) : m_style.plainFill,
                lastOfSecond);
    if (frame.sounding) {
        const QRect bar = rect.adjusted(2, frame.soundGoesOn ? 0 : 2, -3, frame.soundContinues ? 0 : -3);
        m_painter.fillRect(bar, m_style.soundFill);
        PaintWave(frame.wave, bar, rect.y());
        m_painter.fillRect(bar.x(), bar.y(), 3, bar.height(), m_style.soundEdge);
    }
    if (frame.isSpoken)
        PaintSpoken(frame, rect);
    if (frame.sound.empty())
        return;
    m_painter.setPen(frame.sounding ? m_style.text : m_style.missingText);
    DrawText(m_painter, m_style.smallTexts, frame.sound,
             rect.adjusted(7, 0, frame.isSpoken ? -spokenWidth : -margin, -1));
}

// At the right of the column, along a line that runs as long as is spoken.
void CXSheetPainter::PaintSpoken(const CFrameLook& frame, const QRect& rect) {
    const QRect text(rect.right() - spokenWidth, rect.y(), spokenWidth - 3, rect.height() - 1);
    QColor ground = m_style.spokenFill;
    ground.setAlpha(spokenAlpha); // the wave goes on under it
    m_painter.fillRect(text, ground);
    m_painter.fillRect(rect.right() - 3, rect.y(), 2, rect.height() - (frame.speechContinues ? 0 : 2),
                       m_style.spokenEdge);
    m_painter.setPen(m_style.text);
    DrawText(m_painter, m_style.smallTexts, frame.spoken, text, Qt::AlignHCenter);
}

// Time runs down, loudness to either side of the bar's middle; silence is a thin line.
void CXSheetPainter::PaintWave(const std::vector<CPeak>& wave, const QRect& bar, int top) {
    constexpr int silence = 128;
    const QRect inner = bar.adjusted(4, 0, -1, 0);
    const int half = inner.width() / 2;
    const int middle = inner.x() + half;
    for (std::size_t line = 0; line < wave.size(); ++line) {
        const int y = top + static_cast<int>(line);
        if (y < bar.top() || y > bar.bottom())
            continue;
        const int left = (wave[line].low - silence) * half / silence;
        const int right = (wave[line].high - silence) * half / silence;
        m_painter.fillRect(middle + left, y, std::max(1, right - left), 1, m_style.soundWave);
    }
}

void CXSheetPainter::PaintDropMark() {
    if (!m_look.pointer.drop)
        return;
    const QRect rect = RectOf(m_geometry, *m_look.pointer.drop);
    if (rect.isEmpty())
        return;
    QColor fill = m_style.dropColor;
    fill.setAlpha(56);
    m_painter.fillRect(rect, fill);
    m_painter.setPen(QPen(m_style.dropColor, 2, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    m_painter.setBrush(Qt::NoBrush);
    m_painter.drawRect(rect.adjusted(1, 1, -1, -1));
}

void CXSheetPainter::PaintHeader(const QRegion& region) {
    const int width = m_geometry.client.width();
    m_painter.fillRect(0, 0, width, m_geometry.headerHeight, m_style.header);
    m_painter.save();
    m_painter.setClipRect(m_geometry.GridArea().x(), 0, m_geometry.GridArea().width(), m_geometry.headerHeight,
                          Qt::IntersectClip);
    for (std::size_t column = 0; column < m_look.levels.size(); ++column) {
        const int level = m_geometry.firstLevel + static_cast<int>(column);
        const QRect rect = m_geometry.LevelHeaderRect(level);
        if (region.intersects(rect))
            PaintLevelHeader(m_look.levels[column], level, rect);
    }
    m_painter.restore();
    m_painter.setPen(m_style.fadedHeaderText);
    DrawText(m_painter, m_style.smallTexts, "Frm",
             {0, m_geometry.buttonSize, m_geometry.frameColumnWidth, m_geometry.buttonSize}, Qt::AlignHCenter);
    PaintCameraHeader();
    m_painter.fillRect(0, m_geometry.headerHeight - 1, width, 1, m_style.headerLine);
    if (m_look.cameraMoves)
        PaintMoveBar(m_geometry.CameraColumn().x(), m_geometry.cameraColumnWidth - m_geometry.soundWidth,
                     m_style.movingCamera);
    for (std::size_t column = 0; column < m_look.levels.size(); ++column) {
        const int x = m_geometry.ColumnX(m_geometry.firstLevel + static_cast<int>(column));
        if (m_look.levels[column].moves)
            PaintMoveBar(x,
                         std::min(m_look.geometry.WidthOf(m_geometry.firstLevel + static_cast<int>(column)),
                                  m_geometry.CameraColumn().x() - x),
                         m_style.movingLevel);
    }
}

void CXSheetPainter::PaintMoveBar(int x, int width, const QColor& color) {
    m_painter.fillRect(x, m_geometry.headerHeight - 3, width - 1, 3, color);
}

void CXSheetPainter::PaintFoldedHeader(const CLevelLook& level, int number, const QRect& rect) {
    if (level.current)
        m_painter.fillRect(rect, m_style.currentHeader);
    m_painter.fillRect(rect.right(), rect.y(), 1, rect.height(), m_style.headerLine);
    m_painter.setPen(m_style.fadedHeaderText);
    DrawText(m_painter, m_style.smallTexts, std::to_string(number + 1),
             {rect.x(), 0, rect.width() - 1, m_geometry.buttonSize}, Qt::AlignHCenter);
    m_painter.setPen(m_style.headerText);
    DrawText(m_painter, m_style.levelNames, "\u203a",
             {rect.x(), m_geometry.buttonSize, rect.width() - 1, m_geometry.buttonSize - 2}, Qt::AlignHCenter);
}

void CXSheetPainter::PaintLevelHeader(const CLevelLook& level, int number, const QRect& rect) {
    if (m_geometry.IsFolded(number))
        return PaintFoldedHeader(level, number, rect);
    if (level.current)
        m_painter.fillRect(rect, m_style.currentHeader);
    m_painter.fillRect(rect.right(), rect.y(), 1, rect.height(), m_style.headerLine);
    PaintButton({HeaderButton::Blur, number}, level.blurred, level.used);
    PaintButton({HeaderButton::Transparency, number}, level.transparent, level.used);
    PaintButton({HeaderButton::Move, number}, level.moves, true);
    m_painter.setPen(m_style.fadedHeaderText);
    const QRect numberRect(rect.x() + 3 * m_geometry.buttonSize, 0, m_geometry.buttonSize - 1,
                           m_geometry.buttonSize);
    DrawText(m_painter, m_style.smallTexts, std::to_string(number + 1), numberRect, Qt::AlignHCenter);
    m_painter.setPen(m_style.headerText);
    DrawText(m_painter, m_style.levelNames, level.name,
             {rect.x() + margin, m_geometry.buttonSize, rect.width() - 2 * margin, m_geometry.buttonSize - 2});
}

void CXSheetPainter::PaintCameraHeader() {
    const QRect column = m_geometry.CameraColumn();
    m_painter.fillRect(column.x(), 0, column.width(), m_geometry.headerHeight, m_style.header);
    m_painter.fillRect(column.x(), 0, 2, m_geometry.headerHeight, m_style.headerLine);
    const int soundX = m_geometry.client.width() - m_geometry.soundWidth;
    m_painter.fillRect(soundX - 1, 0, 1, m_geometry.headerHeight, m_style.headerLine);
    PaintButton({HeaderButton::Camera, 0}, m_look.cameraMoves, true);
    m_painter.setPen(m_style.headerText);
    const int names = m_geometry.buttonSize;
    DrawText(m_painter, m_style.cellTexts, "Camera", {column.x() + names + 2, 0, 56, names});
    DrawText(m_painter, m_style.cellTexts, "Sound", {soundX, 0, m_geometry.soundWidth, names}, Qt::AlignHCenter);
    m_painter.setPen(m_style.fadedHeaderText);
    const QRect camera(column.x() + margin, names, soundX - column.x() - 2 * margin, names - 2);
    DrawText(m_painter, m_style.smallTexts, "Pan", camera);
    DrawText(m_painter, m_style.smallTexts, "Zoom", camera, Qt::AlignRight);
}

void CXSheetPainter::PaintButton(const CHeaderHit& hit, bool on, bool enabled) {
    const QRect rect = m_geometry.ButtonRect(hit);
    const bool hot = enabled && m_look.pointer.hot == hit;
    const bool pressed = hot && m_look.pointer.pressed;
    // The pictures of what is being moved bring their own ground.
    const bool lit = on && (hit.button == HeaderButton::Blur || hit.button == HeaderButton::Transparency);
    if (lit || hot) {
        m_painter.save();
        m_painter.setRenderHint(QPainter::Antialiasing);
        m_painter.setPen(Qt::NoPen);
        m_painter.setBrush(lit || pressed ? Mixed(m_style.header, m_style.accent, pressed ? 0.7 : 0.45)
                                          : Mixed(m_style.header, m_style.headerText, 0.2));
        m_painter.drawRoundedRect(QRectF(rect).adjusted(1.5, 1.5, -0.5, -1.5), 3, 3);
        m_painter.restore();
    }
    const QPixmap& icon = m_style.ButtonPixmap(hit.button, on, enabled);
    if (!icon.isNull())
        m_painter.drawPixmap(rect.x() + 2, rect.y() + 2, icon);
}

} // namespace velmor
