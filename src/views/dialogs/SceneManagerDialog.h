#pragma once

#include "scene/SceneManager.h"
#include "views/dialogs/Dialog.h"

#include <functional>

class QPushButton;
class QRadioButton;

namespace velmor {

class CSceneManagerSide;

/// "Scene Manager": shows two scenes side by side and runs the manager's operations on what is chosen.
class CSceneManagerDialog final : public CDialog {
public:
    CSceneManagerDialog(QWidget* parent, CSceneManager& manager);

protected:
    void showEvent(QShowEvent* event) override;

private:
    QLayout* Middle();
    QRadioButton* KindButton(const char* text, const QString& toolTip, SourceMode kind);
    QPushButton* Button(const char* name, const QString& text, const QString& toolTip,
                        std::function<void()> onClick);
    void ShowKind(SourceMode kind);
    void EnableButtons();

    void TransferAssets();
    void TransferPalette();
    void MergePalette();
    void DeleteScene();

    CSceneManager& m_manager;
    SourceMode m_kind = SourceMode::Cels;
    CSceneManagerSide* m_left;
    CSceneManagerSide* m_right;
    QPushButton* m_transferAssets = nullptr;
    QPushButton* m_transferPalette = nullptr;
    QPushButton* m_mergePalette = nullptr;
    QPushButton* m_deleteScene = nullptr;
};

} // namespace velmor
