#pragma once

#include "scene/SceneContext.h"
#include "scene/Sequence.h"

#include <string>
#include <vector>

namespace velmor {

class CSequenceImport;

/// Asks which numbered files are to come in, and what is to become of them.
class CSequenceOperations {
public:
    CSequenceOperations(CSceneContext context, CSequenceImport& import) : m_context(context), m_import(import) {}

    void AskAndImport();

private:
    CSequence Propose(std::vector<Path> files) const;
    std::string ProposeFolder(const std::string& stem, const CSequence& sequence) const;
    std::size_t CountReplaced(const CSequence& sequence) const;
    bool Exists(const CSequence& sequence, const std::string& name) const;
    [[nodiscard]] bool Accept(const CSequence& sequence) const;
    void Remember(const CSequence& sequence);

    CSceneContext m_context;
    CSequenceImport& m_import;
};

} // namespace velmor
