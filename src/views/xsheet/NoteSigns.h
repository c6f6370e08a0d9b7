#pragma once

#include "xsheet/SheetNote.h"

#include <QColor>
#include <QIcon>
#include <QRect>
#include <string>

class QPainter;
class QPalette;

namespace velmor {

/// What a note shows in the sheet.
struct CNoteLook {
    SheetMark mark = SheetMark::None;
    NoteColor color = NoteColor::None;
    bool hasComment = false;

    static CNoteLook Of(const CSheetNote& note) { return {note.mark, note.color, !note.comment.empty()}; }
    bool IsEmpty() const { return *this == CNoteLook(); }
    bool operator==(const CNoteLook&) const = default;
};

/// The color of notes on a ground that is light or dark; `none` for no color.
QColor ColorOf(NoteColor color, bool dark, const QColor& none);

/// The sign of a mark, as large as fits into `rect`: a ring for a key, a triangle for a breakdown, a dot for an
/// inbetween, a cross where the movement stands still.
void PaintMark(QPainter& painter, SheetMark mark, const QRectF& rect, const QColor& color);
/// The corner that tells of a comment, at the upper right of `rect`.
void PaintCommentCorner(QPainter& painter, const QRect& rect, const QColor& color);

/// A mark in its color, for lists.
QIcon NoteIcon(const CSheetNote& note, const QPalette& palette);

/// "Key", "Stop-hold"; "None".
std::string TextOf(SheetMark mark);
/// "Red"; "None".
std::string TextOf(NoteColor color);

} // namespace velmor
