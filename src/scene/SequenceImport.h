#pragma once

#include "scene/SceneContext.h"
#include "scene/Sequence.h"

#include <string>
#include <vector>

namespace velmor {

class CImportOperations;
class CSceneEdit;
class CSceneLifecycle;

/// Brings a numbered sequence of files in at once: as the cels of a folder or as pictures, and onto a level.
class CSequenceImport {
public:
    CSequenceImport(CSceneContext context, CSceneLifecycle& lifecycle, CImportOperations& imports)
        : m_context(context), m_lifecycle(lifecycle), m_imports(imports) {}

    /// Imports what CheckSequence() accepts, replacing assets of the same names. A file that fails is told at the
    /// end, and the frames that it would have been exposed at stay as they are. Stopped by the user, what was
    /// imported until then stays, and nothing is exposed. False, after the message, unless everything was done.
    [[nodiscard]] bool Import(const CSequence& sequence);

private:
    /// Shows the folder of the cels, which is made if missing.
    [[nodiscard]] bool Enter(const CSequence& sequence);
    /// False when the user has stopped it. `stored` says of each image whether it is there now, `failures` why not.
    [[nodiscard]] bool Store(CSceneEdit& edit, const CSequence& sequence, std::vector<bool>& stored,
                             std::vector<std::string>& failures);
    void Expose(CSceneEdit& edit, const CSequence& sequence, const std::vector<bool>& stored);
    void Tell(std::size_t count, const std::vector<std::string>& failures) const;

    CSceneContext m_context;
    CSceneLifecycle& m_lifecycle;
    CImportOperations& m_imports;
};

} // namespace velmor
