#pragma once

#include "render/ImageCache.h"
#include "scene/SceneContext.h"

namespace velmor {

struct CFlipbookSettings;

/// The flipbook commands.
class CFlipbookOperations {
public:
    CFlipbookOperations(CSceneContext context, CImageCache& cache) : m_context(context), m_cache(cache) {}

    /// "flipbook.avi" in the database folder.
    Path LastFlipbook() const;
    bool HasLastFlipbook() const;
    /// Asks for the settings and makes the flipbook; true when there is one to be played.
    [[nodiscard]] bool MakeFlipbook();
    /// The path to play; nothing, with its message, when there is no last flipbook.
    std::optional<Path> LastFlipbookToPlay();
    void SaveLastFlipbook();

    /// The generation itself, from accepted settings to a file, with the camera of `cursorFrame` and the sound from
    /// `soundFrame` on (from 0). False when it failed (its messages have been shown).
    [[nodiscard]] bool Generate(const CFlipbookSettings& settings, const Path& output, int cursorFrame,
                                int soundFrame);

private:
    CFlipbookSettings RememberedSettings() const;
    void Remember(const CFlipbookSettings& settings);

    CSceneContext m_context;
    CImageCache& m_cache;
};

} // namespace velmor
