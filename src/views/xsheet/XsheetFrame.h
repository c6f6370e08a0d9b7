#pragma once

#include "views/ActionList.h"

#include <QMainWindow>

class QDockWidget;

namespace velmor {

class COtherSheetPane;
class CXSheetView;
class CVelmorltDoc;
class IPrompter;

/// The exposure-sheet pane: its tool bar, the xsheet view, and beside it on request the sheet of another scene.
class CXsheetFrame final : public QMainWindow {
public:
    CXsheetFrame(CVelmorltDoc& doc, IPrompter& prompter, const ActionList& toolBar, QWidget* parent = nullptr);

    CXSheetView& View() { return *m_view; }
    COtherSheetPane& OtherSheet() { return *m_otherSheet; }
    bool ShowsOtherSheet() const;
    void ToggleOtherSheet();

private:
    // Children.
    CXSheetView* m_view;
    COtherSheetPane* m_otherSheet;
    QDockWidget* m_dock;
};

} // namespace velmor
