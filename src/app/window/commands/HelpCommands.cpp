#include "app/window/commands/CommandRows.h"
#include "app/window/commands/MenuCommands.h"

namespace velmor::commands {

namespace {

constexpr CCommand rows[] = {
    {CommandId::HelpManual, "&Online Manual", "manual", "",
     "Opens the online acrobat format manuals, You must have Abobe Acrobat installed in your system.", "", Always,
     nullptr, Frame<&CMainFrame::ShowManual>},
    {CommandId::HelpAbout, "&About Personal Velmor..", "about", "",
     "Display program information, version number and copyright", "About", Always, nullptr,
     Frame<&CMainFrame::ShowAbout>},
    {CommandId::HelpDemonstration, "&Demonstration Scene", "open-scene", "",
     "Opens a finished scene to look around in, which is made where there is none", "Demonstration Scene", Always,
     nullptr, Frame<&CMainFrame::OpenDemonstration>},
};

} // namespace

std::span<const CCommand> HelpCommands() {
    return rows;
}

} // namespace velmor::commands
