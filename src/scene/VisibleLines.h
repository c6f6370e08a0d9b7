#pragma once

#include "image/paint/MaskPlane.h"
#include "image/render/Render.h"
#include "platform/files/Files.h"

#include <vector>

namespace velmor {

struct CSceneModel;

/// The lines of the other cels of the current frame where they lie over the image under edit: line and paint are
/// often kept on cels of their own. What is not to be seen at all does not count, nor do pictures. An image that
/// the frame does not show is taken to lie in its middle.
class CVisibleLines {
public:
    /// As large as the image under edit. Kept until a file, a cell or that image is another. Cels that cannot be
    /// read are left out. May throw std::bad_alloc.
    const CMaskPlane& Of(const CSceneModel& model);

private:
    struct CLayer {
        Path file;
        CFileIdentity identity;
        CPlacement placement;

        bool operator==(const CLayer&) const = default;
    };

    static std::vector<CLayer> LayersOf(const CSceneModel& model, CPlacement& own);
    void Add(const CLayer& layer, const CPlacement& own);

    std::vector<CLayer> m_layers;
    CPlacement m_own;
    CMaskPlane m_lines;
};

} // namespace velmor
