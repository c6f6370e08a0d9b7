#pragma once

#include "views/ActionList.h"

#include <QMainWindow>

namespace velmor {

class CCameraView;
class CVelmorltDoc;
class IPrompter;

/// The camera pane: its tool bar and the camera view.
class CCamFrame final : public QMainWindow {
public:
    CCamFrame(CVelmorltDoc& doc, IPrompter& prompter, const ActionList& toolBar, QWidget* parent = nullptr);

    CCameraView& View() { return *m_view; }

private:
    CCameraView* m_view; ///< a child
};

} // namespace velmor
