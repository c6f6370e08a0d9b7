#include "app/cli/Commands.h"
#include "app/cli/ConsolePrompter.h"
#include "platform/files/SystemPaths.h"
#include "platform/process/RunProgram.h"

namespace velmor {

namespace {

// Beside this program, where a build has it, or in the folder of the window's programs. Empty when it is in none.
Path PrintingProgram() {
    const Path folder = ProgramFolder();
    for (const Path& candidate : {folder / "velmor-print", folder.parent_path() / "velmor-print",
                                  folder.parent_path() / "lib" / "personal-velmor" / "velmor-print"})
        if (FileExists(candidate))
            return candidate;
    return {};
}

} // namespace

bool RunPrint(const CPrintArguments& arguments) {
    const Path program = PrintingProgram();
    if (program.empty()) {
        CConsolePrompter().ShowMessage(
            "Printing needs the program velmor-print, which is installed with the window");
        return false;
    }
    std::vector<std::string> words{arguments.scene.database, arguments.scene.scene, arguments.output,
                                   arguments.paper};
    if (arguments.dialogue)
        words.emplace_back("dialogue");
    return RunProgram(program, words) == 0;
}

} // namespace velmor
