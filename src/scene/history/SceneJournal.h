#pragma once

#include "platform/Status.h"
#include "scene/ScenePaths.h"
#include "scene/history/History.h"

#include <optional>
#include <string>

namespace velmor {

/// Where the journal of a scene lies in the folder of all journals. It bears the place of the scene, since another
/// database may have one of the same name.
Path JournalFile(const Path& journals, const CScenePaths& paths, const std::string& scene);

/// Unsaved work as seen from outside.
struct CFoundWork {
    CUnsavedWork work;
    bool canBeRead = true; ///< whether it leads from the files, which it goes with, to what was open
};

/// Looks into the journal of a scene that is not open, and leaves no trace in journal or scene. Nothing is found
/// where there is no journal. Fails when it cannot be opened: another program has it, or it is damaged.
CStatus FindUnsavedWork(const Path& journals, const CScenePaths& paths, const std::string& scene,
                        std::optional<CFoundWork>& found);

} // namespace velmor
