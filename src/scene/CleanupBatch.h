#pragma once

#include "image/clean/Cleanup.h"
#include "scene/SceneContext.h"

#include <optional>
#include <string>
#include <vector>

namespace velmor {

class CSceneEdit;

/// Images that are to be cleaned up, and how.
struct CCleanupOrder {
    SourceMode kind = SourceMode::Cels; ///< cels or pictures
    std::string folder;                 ///< of cels
    std::vector<std::string> names;
    CCleanup cleanup;
    std::string reference; ///< the image on whose pegs all are put; empty: level, in the middle
    std::string step = "Clean Up";
};

/// What became of one of them.
struct CCleanedAsset {
    std::string name;
    CStatus status; ///< why nothing was done to it
    CCleanedUp done;
};

/// Cleans up scanned drawings in their files, as one step of the history. A drawing that cannot be read is left
/// out, the others are done. Stopped by the user, or by a file that cannot be written, what was done before stays
/// done: one undo takes it back. A drawing that is open in the cel editor is saved first and shown as it is
/// afterwards.
class CCleanupBatch {
public:
    explicit CCleanupBatch(CSceneContext context) : m_context(context) {}

    /// An image as it is now, with what was painted and not saved.
    CStatus Read(const CCleanupOrder& order, const std::string& name, CCelImg& image) const;
    /// Where all are to be put; nothing where that is not by one of them. Fails when its pegs are not found.
    CStatus FindReference(const CCleanupOrder& order, std::optional<CPegReference>& reference) const;

    /// Cleans up, and says which drawings resist. Returns what became of those that were come to; nothing, after
    /// the message, without the pegs of the reference.
    std::optional<std::vector<CCleanedAsset>> Run(const CCleanupOrder& order);

private:
    std::vector<CCleanedAsset> CleanAll(CSceneEdit& edit, const CCleanupOrder& order,
                                        const std::optional<CPegReference>& reference);
    /// False when the file cannot be written.
    [[nodiscard]] bool CleanOne(CSceneEdit& edit, const CCleanupOrder& order,
                                const std::optional<CPegReference>& reference, CCleanedAsset& asset);
    void Tell(const CCleanupOrder& order, const std::vector<CCleanedAsset>& cleaned) const;

    CSceneContext m_context;
};

/// A line for each name with its reason, under a line that says how many they are; the first ones of many.
std::string ListOfTroubles(const std::string& heading, const std::vector<std::string>& troubles);

/// "3 of 24 cels" in the words of the kind.
std::string CountOfAssets(std::size_t count, std::size_t all, SourceMode kind);

} // namespace velmor
