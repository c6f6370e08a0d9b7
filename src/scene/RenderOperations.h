#pragma once

#include "render/ImageCache.h"
#include "render/RenderSetup.h"
#include "scene/SceneContext.h"

namespace velmor {

/// The command that renders the final output.
class CRenderOperations {
public:
    CRenderOperations(CSceneContext context, CImageCache& cache) : m_context(context), m_cache(cache) {}

    /// Asks for the setup and renders; true when there is output, of a stopped rendering as well.
    bool OnAnimationRender();

    /// The rule of the dialog: says what is wrong with the setup, makes its directory, asks before files that are
    /// there are overwritten.
    bool Accept(const CRenderSetup& setup) const;

private:
    CRenderSetup RememberedSetup() const;
    void Remember(const CRenderSetup& setup);
    CStatus CheckTarget(const CRenderSettings& settings) const;
    bool MayOverwrite(const CRenderSettings& settings) const;
    bool Render(const CRenderSetup& setup);

    CSceneContext m_context;
    CImageCache& m_cache;
};

} // namespace velmor
