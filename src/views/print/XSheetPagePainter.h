#pragma once

#include "views/print/XSheetPages.h"

#include <QDate>
#include <QFont>

class QPainter;
class QRectF;
class QString;

namespace velmor {

struct CSceneModel;
struct CSheetNote;

/// The scene's xsheet as CXSheetPages wants to know it.
CXSheetExtent ExtentOf(const CSceneModel& model);

/// What is printed when it is asked for.
struct CSheetPrintChoices {
    bool dialogue = false; ///< what is spoken, in the sound column
};

/// Draws the pages of an xsheet, black on white, on any device. Model and pages outlive the painter.
class CXSheetPagePainter {
public:
    CXSheetPagePainter(const CSceneModel& model, const CXSheetPages& pages, const QDate& date,
                       const CSheetPrintChoices& choices = {});

    /// Draws a page from the painter's origin on, its paper excepted. `dotsPerPoint` is the device's resolution.
    void Paint(QPainter& painter, double dotsPerPoint, int index) const;

private:
    void PaintHead(QPainter& painter, const CXSheetPage& page) const;
    /// Returns where the next value stands.
    double PaintHeadValue(QPainter& painter, double left, const QString& label, const QString& value) const;
    void PaintColumnHeads(QPainter& painter, const CXSheetPage& page) const;
    void PaintRules(QPainter& painter, const CXSheetPage& page) const;
    void PaintColumnRules(QPainter& painter, const CXSheetPage& page) const;
    void PaintLevel(QPainter& painter, const CXSheetPage& page, int level) const;
    void PaintCell(QPainter& painter, const QRectF& cell, int level, int frame, bool first) const;
    QRectF PaintMarkOf(QPainter& painter, const QRectF& cell, const CSheetNote& note) const;
    QString CommentsOf(const CXSheetPage& page, int frame) const;
    void PaintHolds(QPainter& painter, const CXSheetPage& page, int level) const;
    void PaintBeside(QPainter& painter, const CXSheetPage& page) const;
    void PaintSpoken(QPainter& painter, const CXSheetPage& page) const;
    void PaintFoot(QPainter& painter, const CXSheetPage& page) const;

    const CSceneModel& m_model;
    const CXSheetPages& m_pages;
    QDate m_date;
    CSheetPrintChoices m_choices;
    QFont m_plainFont;
    QFont m_boldFont;
    QFont m_markFont;
};

} // namespace velmor
