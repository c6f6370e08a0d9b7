#include "app/cli/Commands.h"
#include "app/cli/ConsolePrompter.h"
#include "app/demo/DemoDatabase.h"

namespace velmor {

bool RunDemo(const CSceneArguments& arguments) {
    CConsolePrompter console;
    return demo::MakeDemoDatabase(arguments.database, console);
}

} // namespace velmor
