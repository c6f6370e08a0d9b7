#pragma once

#include "views/ActionList.h"

#include <QMainWindow>

class QLabel;

namespace velmor {

class CCameraView;
class CVelmorltDoc;

/// The camera pane: its tool bar and the camera view.
class CCamFrame final : public QMainWindow {
public:
    CCamFrame(CVelmorltDoc& doc, const ActionList& toolBar, QWidget* parent = nullptr);
    ~CCamFrame() override;

    CCameraView& View() { return *m_view; }

private:
    void ShowZoom();

    CCameraView* m_view; // children
    QLabel* m_zoom;
};

} // namespace velmor
