#pragma once

#include "image/RealPoint.h"
#include "scene/paper/InkCache.h"
#include "scene/paper/SkinStack.h"

#include <cstddef>
#include <optional>
#include <span>

namespace velmor {

class CLightTable;
class COnion;
struct CDrawing;
struct CNeighbour;
struct CPegPlace;
struct CPinnedDrawing;
struct CSceneModel;

/// The sheets of paper around the drawing under edit, and around the picture of the current frame. They are made
/// when they are asked for after something has changed, so that painting costs nothing more.
class CPaper {
public:
    /// What is given outlives the object.
    CPaper(const CSceneModel& model, const COnion& onion, const CLightTable& table)
        : m_model(model), m_onion(onion), m_table(table) {}

    /// Onion skin and light table, for the image under edit. False when nothing has changed since the last call.
    bool Refresh();
    const CSkinSheet& Sheet() const { return m_cel.Sheet(); }

    /// The pinned drawing that is seen at a point of the image: the uppermost with ink at most `reach` pixels from
    /// it, otherwise the uppermost of all. Nothing when none is seen.
    std::optional<std::size_t> PinAt(CRealPoint point, double reach);

    /// The neighbours of the drawing at the cursor, each in its own place, for the current frame's picture. They
    /// all lie under it.
    bool RefreshCamera();
    const CSkinSheet& CameraSheet() const { return m_camera.Sheet(); }

private:
    /// Nothing comes of a file that is gone.
    void Order(std::vector<CSkinOrder>& orders, const CDrawing& drawing, CSkinOrder order) const;
    void OrderNeighbours(std::vector<CSkinOrder>& orders, std::span<const CNeighbour> neighbours, int most,
                         ColorRef tint) const;
    void OrderInFrame(std::vector<CSkinOrder>& orders, std::span<const CNeighbour> neighbours, int most,
                      ColorRef tint) const;
    /// In the middle of the image under edit, as far off the pegs as given.
    CPlacement Placed(const CPegPlace& pegs) const;
    bool HasInkNear(const CPinnedDrawing& pin, CRealPoint point, double reach);

    const CSceneModel& m_model;
    const COnion& m_onion;
    const CLightTable& m_table;
    CInkCache m_inks;
    CSkinStack m_cel;
    CSkinStack m_camera;
};

} // namespace velmor
