#include "views/print/XSheetPagePainter.h"

#include "scene/SceneModel.h"
#include "views/Text.h"
#include "views/print/PageText.h"
#include "views/print/XSheetNotation.h"
#include "views/xsheet/NoteSigns.h"
#include "xsheet/DialogueText.h"

#include <QLocale>
#include <QPainter>

namespace velmor {

namespace {

constexpr double pt = pagePoint;
constexpr double cellFont = 6.8;
constexpr double markFont = 5.2;
constexpr double cellPadding = 3 * pt;
constexpr double holdLine = 4.5 * pt;    ///< from a column's left edge
constexpr double heldPadding = 7.5 * pt; ///< of the rows beside the line
constexpr double markPadding = 2 * pt;
constexpr double markShare = 0.7; ///< of a row's height
constexpr double colorBar = 1.6 * pt;

const QColor darkGrey(70, 70, 70);
const QColor middleGrey(120, 120, 120);
const QColor lightGrey(175, 175, 175);
const QColor shade(238, 238, 238);

QString NameOf(const CSceneModel& model, int level) {
    return ToQt(model.Scene().xsheet.LevelName(level));
}

bool IsHeld(const CXSheet& xsheet, int level, int frame) {
    return !HeldName(xsheet, level, frame).empty();
}

} // namespace

CXSheetExtent ExtentOf(const CSceneModel& model) {
    const CXSheet& xsheet = model.Scene().xsheet;
    const QFont textFont = PageFont(cellFont, true);
    const QFont marksFont = PageFont(markFont);
    double width = 0;
    std::size_t longest = 0;
    for (int level = 0; level < xsheet.LevelCount(); ++level) {
        width = std::max(width, TextWidth(textFont, NameOf(model, level)) + 2 * markPadding);
        for (int frame = 0; frame < xsheet.FrameCount(); ++frame) {
            const std::string text = xsheet.CellText(level, frame);
            const std::string marks = CellMarks(xsheet.Cell(level, frame));
            // Measuring each of the cells would take longer than printing them.
            if (text.size() + marks.size() <= longest)
                continue;
            longest = text.size() + marks.size();
            width = std::max(width, cellPadding + TextWidth(textFont, ToQt(text)) +
                                        TextWidth(marksFont, ToQt(marks)) + 2 * markPadding);
        }
    }
    return {xsheet.LevelCount(), xsheet.FrameCount(), model.Scene().geometry.frameRate, width};
}

CXSheetPagePainter::CXSheetPagePainter(const CSceneModel& model, const CXSheetPages& pages, const QDate& date,
                                       const CSheetPrintChoices& choices)
    : m_model(model),
      m_pages(pages),
      m_date(date),
      m_choices(choices),
      m_plainFont(PageFont(cellFont)),
      m_boldFont(PageFont(cellFont, true)),
      m_markFont(PageFont(markFont)) {}

void CXSheetPagePainter::Paint(QPainter& painter, double dotsPerPoint, int index) const {
    const CXSheetPage page = m_pages.At(index);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(dotsPerPoint * m_pages.Scale() / pt, dotsPerPoint * m_pages.Scale() / pt);
    painter.setPen(Qt::black);
    PaintHead(painter, page);
    PaintColumnHeads(painter, page);
    PaintRules(painter, page);
    PaintColumnRules(painter, page);
    painter.setPen(Qt::black);
    for (int level = page.firstLevel; level <= page.lastLevel; ++level) {
        PaintHolds(painter, page, level);
        PaintLevel(painter, page, level);
    }
    PaintBeside(painter, page);
    if (m_choices.dialogue)
        PaintSpoken(painter, page);
    PaintFoot(painter, page);
    painter.restore();
}

void CXSheetPagePainter::PaintHead(QPainter& painter, const CXSheetPage& page) const {
    const double width = m_pages.Width();
    const QRectF titleLine(0, 0, width, 20 * pt);
    painter.setFont(PageFont(15, true));
    DrawLine(painter, titleLine.adjusted(0, 0, -190 * pt, 0), Qt::AlignLeft, ToQt(m_model.sceneName));
    painter.setFont(PageFont(10, true));
    DrawLine(painter, titleLine, Qt::AlignRight, QString::asprintf("Page: %d", page.number));
    painter.setFont(PageFont(8));
    DrawLine(painter, titleLine.adjusted(0, 0, -65 * pt, 0), Qt::AlignRight,
             QLocale(QLocale::English, QLocale::UnitedStates).toString(m_date, "dddd, MMMM dd, yyyy"));

    const CSceneGeometry& geometry = m_model.Scene().geometry;
    const QString values[][2] = {
        {"Length", ToQt(LengthText(m_model.Scene().xsheet.FrameCount(), geometry.frameRate))},
        {"Rate", QString::asprintf("%d fps", geometry.frameRate)},
        {"Frame", QString::asprintf("%d x %d", geometry.width, geometry.height)},
        {"Levels", QString::asprintf("%d, level 1 (left) is the topmost", m_model.Scene().xsheet.LevelCount())}};
    double left = 0;
    for (const auto& [label, value] : values)
        left = PaintHeadValue(painter, left, label, value);
}

double CXSheetPagePainter::PaintHeadValue(QPainter& painter, double left, const QString& label,
                                          const QString& value) const {
    const auto draw = [&](const QFont& font, const QString& text, double gap) {
        const double textWidth = TextWidth(font, text);
        painter.setFont(font);
        DrawLine(painter, {left, 22 * pt, std::min(textWidth + 1, m_pages.Width() - left), 14 * pt}, Qt::AlignLeft,
                 text);
        left += textWidth + gap;
    };
    draw(PageFont(7), label, 3 * pt);
    draw(PageFont(8, true), value, 14 * pt);
    return left;
}

void CXSheetPagePainter::PaintColumnHeads(QPainter& painter, const CXSheetPage& page) const {
    const double top = m_pages.HeaderTop();
    const double middle = (top + m_pages.GridTop()) / 2;
    const double half = middle - top;
    painter.fillRect(QRectF(0, top, m_pages.Width(), 2 * half), shade);
    const auto draw = [&](const CPageColumn& column, double y, const QString& text) {
        DrawLine(painter, {column.left + markPadding, y, column.width - 2 * markPadding, half}, Qt::AlignHCenter,
                 text);
    };
    painter.setFont(PageFont(6.5));
    for (int level = page.firstLevel; level <= page.lastLevel; ++level)
        draw(m_pages.Level(level - page.firstLevel), top, QString::number(level + 1));
    draw({m_pages.Pan().left, m_pages.Rotation().Right() - m_pages.Pan().left}, top, "Camera");
    painter.setFont(PageFont(cellFont, true));
    for (int level = page.firstLevel; level <= page.lastLevel; ++level)
        draw(m_pages.Level(level - page.firstLevel), middle, NameOf(m_model, level));
    draw(m_pages.LeftFrames(), middle, "Frm");
    draw(m_pages.Sound(), middle, "Sound");
    draw(m_pages.Pan(), middle, "Pan");
    draw(m_pages.Zoom(), middle, "Zoom");
    draw(m_pages.Rotation(), middle, "Rot.");
    draw(m_pages.RightFrames(), middle, "Frm");
    draw(m_pages.Notes(), middle, "Notes");
}

void CXSheetPagePainter::PaintRules(QPainter& painter, const CXSheetPage& page) const {
    const QPen pens[] = {QPen(lightGrey, 0.35 * pt), QPen(darkGrey, 0.7 * pt), QPen(Qt::black, 1.4 * pt)};
    const double right = m_pages.Width();
    for (int row = 0; row <= page.Frames(); ++row) {
        const FrameRule rule = RuleAbove(page.firstFrame + row, m_model.Scene().geometry.frameRate);
        painter.setPen(pens[static_cast<std::size_t>(rule)]);
        painter.drawLine(QLineF(0, m_pages.RowTop(row), right, m_pages.RowTop(row)));
    }
}

void CXSheetPagePainter::PaintColumnRules(QPainter& painter, const CXSheetPage& page) const {
    const double top = m_pages.HeaderTop();
    const double bottom = m_pages.RowTop(page.Frames());
    const auto line = [&](double x) { painter.drawLine(QLineF(x, top, x, bottom)); };
    painter.setPen(QPen(middleGrey, 0.4 * pt));
    for (int column = 1; column < m_pages.LevelsPerPage(); ++column)
        line(m_pages.Level(column).left);
    const double belowCamera = (top + m_pages.GridTop()) / 2;
    for (const double x : {m_pages.Zoom().left, m_pages.Rotation().left})
        painter.drawLine(QLineF(x, belowCamera, x, bottom));
    painter.setPen(QPen(Qt::black, 0.9 * pt));
    for (const double x : {m_pages.LeftFrames().Right(), m_pages.Sound().left, m_pages.Pan().left,
                           m_pages.RightFrames().left, m_pages.RightFrames().Right()})
        line(x);
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(QRectF(0, top, m_pages.Width(), bottom - top));
    painter.drawLine(QLineF(0, m_pages.GridTop(), m_pages.Width(), m_pages.GridTop()));
}

void CXSheetPagePainter::PaintLevel(QPainter& painter, const CXSheetPage& page, int level) const {
    const CPageColumn column = m_pages.Level(level - page.firstLevel);
    for (int frame = page.firstFrame; frame <= page.lastFrame; ++frame) {
        const double top = m_pages.RowTop(frame - page.firstFrame);
        PaintCell(painter, {column.left, top, column.width, m_pages.RowHeight()}, level, frame,
                  frame == page.firstFrame);
    }
}

// At the right of the cell; what is left of it.
QRectF CXSheetPagePainter::PaintMarkOf(QPainter& painter, const QRectF& cell, const CSheetNote& note) const {
    if (note.mark == SheetMark::None && note.color == NoteColor::None)
        return cell;
    const QColor color = ColorOf(note.color, false, Qt::black);
    const double side = cell.height() * markShare;
    QRectF left = cell;
    if (note.color != NoteColor::None)
        painter.fillRect(QRectF(cell.left() + pt * 0.5, cell.top(), colorBar, cell.height()), color);
    if (note.mark != SheetMark::None) {
        left.setRight(cell.right() - side - markPadding);
        PaintMark(painter, note.mark, {left.right(), cell.top() + (cell.height() - side) / 2, side, side}, color);
    }
    return left;
}

// What is noted at a frame and at its cells on the page.
QString CXSheetPagePainter::CommentsOf(const CXSheetPage& page, int frame) const {
    const CScene& scene = m_model.Scene();
    QStringList comments;
    if (const std::string& comment = scene.frameNotes.At(frame).comment; !comment.empty())
        comments << ToQt(comment).simplified();
    for (int level = page.firstLevel; level <= page.lastLevel; ++level)
        if (const std::string& comment = scene.xsheet.Cell(level, frame).Note().comment; !comment.empty())
            comments << QString::number(level + 1) + ": " + ToQt(comment).simplified();
    return comments.join("; ");
}

// Tells all of a cell in the first row of a page: a hold that comes from an earlier one is named again, in
// brackets.
void CXSheetPagePainter::PaintCell(QPainter& painter, const QRectF& cell, int level, int frame, bool first) const {
    const CXSheet& xsheet = m_model.Scene().xsheet;
    const QRectF asset = PaintMarkOf(painter, cell, xsheet.Cell(level, frame).Note());
    if (!xsheet.Cell(level, frame).IsUsed())
        return;
    const std::string held = HeldName(xsheet, level, frame);
    QString text = ToQt(xsheet.CellText(level, frame));
    if (first && !held.empty())
        text += " (" + ToQt(held) + ")";
    const QString marks = ToQt(first ? CellMarks(xsheet.Cell(level, frame)) : ChangedMarks(xsheet, level, frame));
    QRectF place = asset.adjusted(held.empty() ? cellPadding : heldPadding, 0, -markPadding, 0);
    if (!marks.isEmpty()) {
        const double width = std::min(TextWidth(m_markFont, marks), place.width() * 0.62);
        painter.setFont(m_markFont);
        DrawLine(painter, {place.right() - width, place.top(), width, place.height()}, Qt::AlignRight, marks);
        place.setRight(place.right() - width - markPadding);
    }
    painter.setFont(held.empty() ? m_boldFont : m_plainFont);
    DrawLine(painter, place, Qt::AlignLeft, text);
}

// A line from below the drawing to the end of its hold, closed where the hold ends on this page.
void CXSheetPagePainter::PaintHolds(QPainter& painter, const CXSheetPage& page, int level) const {
    const CXSheet& xsheet = m_model.Scene().xsheet;
    const double x = m_pages.Level(level - page.firstLevel).left + holdLine;
    painter.setPen(QPen(Qt::black, 0.6 * pt));
    for (int frame = page.firstFrame; frame <= page.lastFrame; ++frame) {
        if (!IsHeld(xsheet, level, frame))
            continue;
        const int first = frame;
        while (frame < page.lastFrame && IsHeld(xsheet, level, frame + 1))
            ++frame;
        const bool goesOn = xsheet.HasFrame(frame + 1) && IsHeld(xsheet, level, frame + 1);
        const double bottom =
            m_pages.RowTop(frame + 1 - page.firstFrame) - (goesOn ? 0 : m_pages.RowHeight() * 0.25);
        painter.drawLine(QLineF(x, m_pages.RowTop(first - page.firstFrame), x, bottom));
        if (!goesOn)
            painter.drawLine(QLineF(x - 1.2 * pt, bottom, x + 1.2 * pt, bottom));
    }
}

void CXSheetPagePainter::PaintBeside(QPainter& painter, const CXSheetPage& page) const {
    for (int frame = page.firstFrame; frame <= page.lastFrame; ++frame) {
        const double top = m_pages.RowTop(frame - page.firstFrame);
        const auto draw = [&](const CPageColumn& column, Qt::Alignment align, const QString& text) {
            DrawLine(painter, {column.left + markPadding, top, column.width - 2 * markPadding, m_pages.RowHeight()},
                     align, text);
        };
        painter.setFont(RuleAbove(frame, m_model.Scene().geometry.frameRate) == FrameRule::Plain ? m_plainFont
                                                                                                 : m_boldFont);
        draw(m_pages.LeftFrames(), Qt::AlignHCenter, QString::number(frame + 1));
        draw(m_pages.RightFrames(), Qt::AlignHCenter, QString::number(frame + 1));
        painter.setFont(m_boldFont);
        if (const std::string* sound = m_model.Scene().sounds.NameAt(frame))
            draw(m_pages.Sound(), Qt::AlignLeft, ToQt(*sound));
        painter.setFont(m_plainFont);
        const CCameraFrame& camera = m_model.Scene().camera.At(frame);
        const CCameraFrame& before = m_model.Scene().camera.At(std::max(0, frame - 1));
        // Told where it changes; the ditto mark elsewhere, as in the levels.
        const auto drawCamera = [&](const CPageColumn& column, std::string (*textOf)(const CCameraFrame&)) {
            const bool same = frame > page.firstFrame && textOf(camera) == textOf(before);
            draw(column, Qt::AlignHCenter, same ? QString("\"") : ToQt(textOf(camera)).trimmed());
        };
        drawCamera(m_pages.Pan(), PanText);
        drawCamera(m_pages.Zoom(), ZoomText);
        drawCamera(m_pages.Rotation(), RotationText);
        if (const QString comments = CommentsOf(page, frame); !comments.isEmpty())
            draw(m_pages.Notes(), Qt::AlignLeft, comments);
    }
}

// Beside a line along its frames, each frame what is due there; where a line or a page begins, who speaks and all
// of it stand in the notes, where there are such.
void CXSheetPagePainter::PaintSpoken(QPainter& painter, const CXSheetPage& page) const {
    const CPageColumn column = m_pages.Sound();
    const double edge = column.Right() - markPadding;
    for (int frame = page.firstFrame; frame <= page.lastFrame; ++frame) {
        const CSpokenLine* line = m_model.Scene().dialogue.At(frame);
        if (line == nullptr)
            continue;
        const double top = m_pages.RowTop(frame - page.firstFrame);
        const double height = m_pages.RowHeight();
        painter.setPen(QPen(Qt::black, 0.6 * pt));
        painter.drawLine(QLineF(edge, top, edge, top + (line->lastFrame == frame ? height * 0.75 : height)));
        painter.setPen(Qt::black);
        painter.setFont(m_plainFont);
        DrawLine(painter, {column.left + column.width / 2, top, column.width / 2 - 2 * markPadding, height},
                 Qt::AlignRight, ToQt(SpokenAt(*line, frame)));
        if ((frame == line->firstFrame || frame == page.firstFrame) && m_pages.Notes().width > 0) {
            const QString speaker = line->speaker.empty() ? QString() : ToQt(line->speaker) + ": ";
            const CPageColumn notes = m_pages.Notes();
            DrawLine(painter, {notes.left + markPadding, top, notes.width - 2 * markPadding, height}, Qt::AlignLeft,
                     speaker + ToQt(line->text));
        }
    }
}

void CXSheetPagePainter::PaintFoot(QPainter& painter, const CXSheetPage& page) const {
    const double width = m_pages.Width();
    const double top = m_pages.FootTop() + 6 * pt;
    painter.setFont(PageFont(6.5));
    DrawLine(painter, {0, top, width * 0.62, 14 * pt}, Qt::AlignLeft, marksLegend);
    painter.setFont(PageFont(7.5, true));
    const std::string place =
        PageCoordinates(page, m_model.Scene().xsheet.LevelCount(), m_model.Scene().xsheet.FrameCount());
    DrawLine(painter, {width * 0.62, top, width * 0.38, 14 * pt}, Qt::AlignRight, ToQt(place));
}

} // namespace velmor
