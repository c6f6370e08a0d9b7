#pragma once

#include "scene/ViewList.h"

#include <QWidget>
#include <string>
#include <vector>

class QComboBox;
class QPushButton;

namespace velmor {

class COtherSheetView;
class CVelmorltDoc;

/// Another scene of the database beside the open one: which, its sheet, and a button that copies what is selected
/// there.
class COtherSheetPane final : public QWidget, public IDocView {
public:
    /// The document outlives the pane.
    explicit COtherSheetPane(CVelmorltDoc& doc, QWidget* parent = nullptr);
    ~COtherSheetPane() override;

    COtherSheetView& View() { return *m_view; }
    void OnUpdate(UpdateHint hint) override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    void ListScenes();
    void OpenChosen();

    CVelmorltDoc& m_doc;
    // Children.
    QComboBox* m_scenes;
    QPushButton* m_copy;
    COtherSheetView* m_view;
    std::vector<std::string> m_names;
};

} // namespace velmor
