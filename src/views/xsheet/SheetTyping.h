#pragma once

#include "views/xsheet/DrawingChooser.h"
#include "views/xsheet/XSheetLook.h"
#include "xsheet/exposing/ExposureEntry.h"

#include <optional>

class QAbstractScrollArea;
class QKeyEvent;

namespace velmor {

class CAssetThumbnails;
class CVelmorltDoc;

/// What a key means to typing, as far as it means anything. On the keypad plus and minus do so only while a line is
/// open: otherwise they zoom.
std::optional<CEntryKey> EntryKeyOf(const QKeyEvent& event, bool isOpen);

/// Typing into the cell at the cursor: the line, what it would do, and the drawings that it can stand for in a
/// small window beside the cell. The line is given up when the cursor goes elsewhere.
class CSheetTyping {
public:
    /// Document, view and thumbnails outlive the object.
    CSheetTyping(CVelmorltDoc& doc, QAbstractScrollArea& view, CAssetThumbnails& thumbnails);

    bool Takes(const QKeyEvent& event) const;
    /// Whether the key was taken.
    bool Press(const QKeyEvent& event);
    void GiveUp();
    /// After a change of the document.
    void Follow();
    std::optional<CEntryLook> Look() const;
    /// Puts the small window beside the cell as it is scrolled now.
    void PlaceChooser(const CXSheetGeometry& geometry);

private:
    void ShowTyped();
    void Enter();
    CDrawingChoice ChoiceOf(const CTypedExposure& typed) const;
    QString SaidOf(const CTypedExposure& typed) const;

    CVelmorltDoc& m_doc;
    QAbstractScrollArea& m_view;
    CAssetThumbnails& m_thumbnails;
    CDrawingChooser m_chooser;
    CExposureEntry m_entry;
    CSheetCell m_cell;
    bool m_possible = false;
};

} // namespace velmor
