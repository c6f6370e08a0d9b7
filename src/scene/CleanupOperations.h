#pragma once

#include "scene/CleanupBatch.h"

#include <functional>
#include <optional>
#include <string>

namespace velmor {

struct CCleanupPreview;
struct CCleanupValues;

/// Asks how scanned drawings are to be cleaned up, and does it; and what of it is done to the cel under edit by a
/// command of its own.
class CCleanupOperations {
public:
    /// Lines grow and shrink by so much under a command.
    static constexpr int weightStep = 1;

    explicit CCleanupOperations(CSceneContext context) : m_context(context) {}

    /// Cels of the folder or pictures, whichever the list of assets shows: those that are chosen there, or all.
    void AskAndCleanUp();

    /// Takes off the cel under edit specks of the size that was last chosen.
    void DespeckleEdited();
    void ThickenEdited();
    void ThinEdited();

private:
    void ChangeEdited(const char* step, const std::function<CStatus(CCelImg&)>& change);
    CCleanupValues Remembered() const;
    void Remember(const CCleanupValues& values);
    [[nodiscard]] bool Accept(const CCleanupOrder& order) const;
    CCleanupPreview Preview(const CCleanupOrder& order, const std::string& name);

    CSceneContext m_context;
    /// The pegs of the reference that were found last, for previews of one drawing after the other.
    std::optional<CCleanupOrder> m_referenceOrder;
    std::optional<CPegReference> m_reference;
    CStatus m_referenceFound;
};

} // namespace velmor
