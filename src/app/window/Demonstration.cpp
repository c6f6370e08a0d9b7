#include "app/window/Demonstration.h"

#include "app/demo/DemoDatabase.h"
#include "app/demo/DemoScene.h"
#include "scene/Prompter.h"
#include "scene/SceneLifecycle.h"
#include "scene/SceneModel.h"
#include "scene/VelmorltDoc.h"

namespace velmor {

bool OpenDemonstration(CVelmorltDoc& doc, IPrompter& prompter) {
    const std::string database = doc.Model().databaseFolder;
    if (!FolderExists(CScenePaths(database, demo::demoScene).SceneFolder())) {
        const std::shared_ptr<void> wait = prompter.BeginWait();
        if (!demo::MakeDemoDatabase(database, prompter))
            return false;
    }
    if (!doc.Scenes().OpenScene(demo::demoScene))
        return false;
    if (FolderExists(doc.Model().Paths().CelFolder(demo::demoFolder)))
        doc.Scenes().SetFolderName(demo::demoFolder);
    return true;
}

} // namespace velmor
