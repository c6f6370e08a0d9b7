#pragma once

#include "views/ActionList.h"

#include <QMainWindow>

namespace velmor {

class CXSheetView;
class CVelmorltDoc;
class IPrompter;

/// The exposure-sheet pane: its tool bar and the xsheet view.
class CXsheetFrame final : public QMainWindow {
public:
    CXsheetFrame(CVelmorltDoc& doc, IPrompter& prompter, const ActionList& toolBar, QWidget* parent = nullptr);

    CXSheetView& View() { return *m_view; }

private:
    CXSheetView* m_view; ///< a child
};

} // namespace velmor
