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

    void AskAndImport();

    /// Imports what CheckSequence() accepts. A file that fails is told at the end, and the frames that it would
    /// have been exposed at stay as they are. Stopped by the user, what was imported until then stays, and nothing
    /// is exposed. False, after the message, unless everything was done.
    [[nodiscard]] bool Import(const CSequence& sequence);

private:
    CSequence Propose(std::vector<Path> files) const;
    std::string ProposeFolder(const std::string& stem, const CSequence& sequence) const;
    std::size_t CountReplaced(const CSequence& sequence) const;
    [[nodiscard]] bool Accept(const CSequence& sequence) const;
    bool Exists(const CSequence& sequence, const std::string& name) const;
    void Remember(const CSequence& sequence);
    /// Shows the folder of the cels, which is made if missing.
    [[nodiscard]] bool Enter(const CSequence& sequence);
    /// False when the user has stopped it. Takes what has failed out of `images`, as `failures`.
    [[nodiscard]] bool Store(CSceneEdit& edit, const CSequence& sequence, std::vector<bool>& stored,
                             std::vector<std::string>& failures);
    void Expose(CSceneEdit& edit, const CSequence& sequence, const std::vector<bool>& stored);
    void Tell(std::size_t count, const std::vector<std::string>& failures) const;

    CSceneContext m_context;
    CSceneLifecycle& m_lifecycle;
    CImportOperations& m_imports;
};

} // namespace velmor
