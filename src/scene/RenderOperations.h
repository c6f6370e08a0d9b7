#pragma once

#include "render/ImageCache.h"
#include "render/RenderSetup.h"
#include "scene/SceneContext.h"

#include <functional>
#include <utility>

namespace velmor {

/// The command that renders the final output.
class CRenderOperations {
public:
    /// `play` shows an AVI in the movie player.
    CRenderOperations(CSceneContext context, CImageCache& cache, std::function<void(const Path&)> play)
        : m_context(context), m_cache(cache), m_play(std::move(play)) {}

    /// Asks for the setup and renders; true when there is output, of a stopped rendering as well.
    void AskAndRender();

    /// The rule of the dialog: says what is wrong with the setup, makes its directory, asks before files that are
    /// there are overwritten.
    [[nodiscard]] bool Accept(const CRenderSetup& setup) const;

private:
    CRenderSetup RememberedSetup() const;
    void Remember(const CRenderSetup& setup);
    CStatus CheckTarget(const CRenderSettings& settings) const;
    bool MayOverwrite(const CRenderSettings& settings) const;
    [[nodiscard]] bool Render(const CRenderSetup& setup);
    /// Shows where complete output is.
    void Offer(const CRenderSettings& settings) const;

    CSceneContext m_context;
    CImageCache& m_cache;
    std::function<void(const Path&)> m_play;
};

} // namespace velmor
