#include "app/cli/Commands.h"
#include "app/cli/ConsolePrompter.h"
#include "app/demo/Animator.h"
#include "app/demo/DemoScene.h"
#include "platform/files/Profile.h"
#include "scene/ScenePaths.h"
#include "scene/Settings.h"

namespace velmor {

bool RunDemo(const CSceneArguments& arguments) {
    CProfile profile;
    Set(profile, setting::databaseDir, arguments.database);
    CConsolePrompter console;
    demo::CDemoPrompter prompter(console);
    CVelmorltDoc document(prompter, profile, {});
    const CScenePaths paths(WithSeparator(arguments.database), demo::demoScene);
    std::error_code ignored;
    const bool wasThere = std::filesystem::exists(paths.SceneFolder(), ignored);
    demo::CAnimator animator(document, prompter);
    if (demo::MakeDemoScene(animator))
        return true;
    if (!wasThere) // half a scene is of no use, and would stand in the way of the next attempt
        std::filesystem::remove_all(paths.SceneFolder(), ignored);
    return false;
}

} // namespace velmor
