#pragma once

#include "views/ActionList.h"

#include <QMainWindow>

class QLabel;

namespace velmor {

class CCameraView;
class CVelmorltDoc;

/// The camera pane: its tool bar, the camera view, and under it the bar that plays the sheet in it.
class CCamFrame final : public QMainWindow {
public:
    /// `transport` is the bar under the view.
    CCamFrame(CVelmorltDoc& doc, const ActionList& toolBar, const ActionList& transport, QWidget* parent = nullptr);
    ~CCamFrame() override;

    CCameraView& View() { return *m_view; }

private:
    void AddTransport(const ActionList& transport);
    void ShowState();

    CVelmorltDoc& m_doc;
    CCameraView* m_view; // children
    QLabel* m_zoom;
    QLabel* m_played;
};

} // namespace velmor
