#pragma once

#include "scene/SceneManager.h"

#include <QGroupBox>
#include <functional>
#include <string>
#include <vector>

class QComboBox;
class QListView;
class QStringListModel;

namespace velmor {

/// One side of the scene manager: a scene, one of its cel folders, and the assets of the kind that is shown.
class CSceneManagerSide final : public QGroupBox {
public:
    enum class Use { From, Into };

    /// `name` begins the object names of the parts ("left": "leftScene", "leftFolder", "leftAssets"). `manager`
    /// outlives the widget. `onChange` is called when the user has chosen something else.
    CSceneManagerSide(const QString& title, const QString& name, const CSceneManager& manager, Use use,
                      std::function<void()> onChange);

    CSceneManager::CSide Chosen() const;
    /// In the order of the list.
    std::vector<std::string> SelectedAssets() const;

    void ShowKind(SourceMode kind);
    /// Reads the scenes again; what was chosen stays chosen where it still exists.
    void RefreshScenes();
    void RefreshAssets();

private:
    void RefreshFolders();

    const CSceneManager& m_manager;
    SourceMode m_kind = SourceMode::Cels;
    std::function<void()> m_onChange;
    QComboBox* m_scenes;
    QComboBox* m_folders;
    QListView* m_assets;
    QStringListModel* m_names;
};

} // namespace velmor
