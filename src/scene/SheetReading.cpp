#include "scene/SheetReading.h"

#include "xsheet/SheetNotesPlace.h"
#include "xsheet/XSheetFile.h"

namespace velmor {

bool ReadSheet(const CSceneContext& context, const CScenePaths& paths, DamagedNotes damaged, CScene& scene) {
    CStatus notes;
    if (!context.Report(LoadXSheet(paths.XSheetFile(), scene, &notes)))
        return false;
    if (notes)
        return true;
    std::string text = notes.Message() + "\nThe scene is opened without its marks and notes.";
    if (Path kept; damaged == DamagedNotes::SetAside && SetSheetNotesAside(paths.XSheetFile(), kept))
        text += "\nThe damaged file is kept as " + Utf8Of(kept.filename());
    context.Show(text);
    return true;
}

} // namespace velmor
