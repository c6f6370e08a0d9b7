#include "app/window/Capturing.h"
#include "app/window/commands/CommandRows.h"
#include "app/window/commands/MenuCommands.h"
#include "scene/ImportOperations.h"
#include "scene/MediaOperations.h"
#include "scene/SequenceOperations.h"
#include "scene/SoundOperations.h"

namespace velmor::commands {

namespace {

template<SourceMode Kind>
void Capture(Target& target) {
    target.frame.Capturing().Capture(Kind);
}

constexpr CCommand rows[] = {
    {CommandId::SourcesSelectSource, "&Select Source", "select-source", "",
     "Shows the scanner source selection dialog", "", Always, nullptr, Frame<&CMainFrame::SelectScanSource>},
    {CommandId::SourcesScanCels, "Scan &Cels", "scan-cels", "", "Shows the scanners interface to scan cels",
     "Scan Cels", HasFolder, nullptr, Frame<&CMainFrame::ScanCels>},
    {CommandId::SourcesScanPicture, "Sca&n Picture", "scan-picture", "", "Scans a color image",
     "Scan Color Picture", HasScene, nullptr, Frame<&CMainFrame::ScanPicture>},
    {CommandId::SourcesCameraSettings, "C&amera Settings", "camera-settings", "",
     "Shows the camera settings dialog", "", Always, nullptr,
     [](Target& target) { target.frame.Capturing().Setup(); }},
    {CommandId::SourcesCaptureCels, "Cap&ture Cels", "capture-cels", "",
     "Shows the camera capture dialog for importing cels", "", HasFolder, nullptr, Capture<SourceMode::Cels>},
    {CommandId::SourcesCapturePicture, "Capture Pic&ture", "capture-picture", "",
     "Captures a color picture to the picture assets", "Capture Picture", HasScene, nullptr,
     Capture<SourceMode::Pictures>},
    {CommandId::SourcesImportCels, "&Import Cels", "import-cels", "",
     "Import cel(s) from disk to the current folder", "Import Cels", HasFolder, nullptr,
     Do<&CVelmorltDoc::Imports, &CImportOperations::AskAndImportCels>},
    {CommandId::SourcesImportPicture, "Import Pict&ure", "import-picture", "",
     "Import Picture(s) from disk to the current scene", "Import Pictures", HasScene, nullptr,
     Do<&CVelmorltDoc::Imports, &CImportOperations::AskAndImportPictures>},
    {CommandId::SourcesImportSettings, "I&mport Settings", "import-settings", "",
     "Sets the graylevel threshold to be used in the import functions", "", Always, nullptr,
     Do<&CVelmorltDoc::Imports, &CImportOperations::EditImportSettings>},
    {CommandId::SourcesRecordSound, "&Record Sound", "record-sound", "", "Records a new sound", "Record Sound",
     HasScene, nullptr, Do<&CVelmorltDoc::Media, &CMediaOperations::RecordSound>},
    {CommandId::SourcesImportSound, "Import Soun&d", "import-sound", "", "Imports a sound from a windows wave file",
     "Import Sound", HasScene, nullptr, Do<&CVelmorltDoc::Sounds, &CSoundOperations::AskAndImportSound>},
    {CommandId::SourcesImportSequence, "Import Se&quence...", "import-sequence", "",
     "Imports numbered files at once, as cels or pictures, and exposes them", "Import Sequence", HasScene, nullptr,
     Do<&CVelmorltDoc::Sequences, &CSequenceOperations::AskAndImport>},
};

} // namespace

std::span<const CCommand> SourceCommands() {
    return rows;
}

} // namespace velmor::commands
