#include "views/camera/CellHandleHand.h"

#include "scene/CameraAids.h"
#include "scene/CellDragging.h"
#include "scene/SceneModel.h"
#include "scene/VelmorltDoc.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <numbers>

namespace velmor {

namespace {

constexpr double cornerReach = 24; ///< client pixels outside of a corner, where it turns

// Whether a point lies in a quadrangle, whichever way round it goes.
bool IsInside(const std::array<CRealPoint, 4>& corners, CRealPoint point) {
    int left = 0;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const CRealPoint a = corners[i];
        const CRealPoint b = corners[(i + 1) % corners.size()];
        left += (b.x - a.x) * (point.y - a.y) - (b.y - a.y) * (point.x - a.x) > 0 ? 1 : 0;
    }
    return left == 0 || left == 4;
}

} // namespace

CRealPoint CCellHandleHand::OnStage(CRealPoint client, const CViewMapping& mapping) const {
    return CameraAt(m_doc.Model().cursorFrame).ToStage(mapping.ToImage(client));
}

std::optional<CCellHandleHand::CGrip> CCellHandleHand::GripOf(int level, CRealPoint client,
                                                              const CViewMapping& mapping) const {
    const int frame = m_doc.Model().cursorFrame;
    const CXSheetCell& cell = m_doc.Model().Scene().xsheet.Cell(level, frame);
    if (!m_doc.Model().moveSelection.IsLevelSelected(level) || !cell.IsUsed())
        return std::nullopt;
    const CCameraMap camera = CameraAt(frame);
    std::array<CRealPoint, 4> corners = CellCornersOnStage(cell.Transform(), cell.Size());
    for (CRealPoint& corner : corners)
        corner = mapping.ToClient(camera.ToView(corner));
    const bool isInside = IsInside(corners, client);
    std::optional<CGrip> grip;
    double nearest = isInside ? reach : cornerReach;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const double away = Distance(corners[i], client);
        if (away > nearest)
            continue;
        nearest = away;
        const CRealPoint opposite = corners[(i + 2) % corners.size()];
        const bool isRising = (corners[i].x - opposite.x) * (corners[i].y - opposite.y) < 0; // y points down
        grip = {level, static_cast<int>(i), away <= reach ? CellHandle::Scale : CellHandle::Turn, isRising};
    }
    return grip;
}

// What lies in front comes first.
std::optional<CCellHandleHand::CGrip> CCellHandleHand::GripAt(CRealPoint client,
                                                              const CViewMapping& mapping) const {
    const CSceneModel& model = m_doc.Model();
    if (!model.sceneOpen || !m_doc.CameraAids().Choices().handles)
        return std::nullopt;
    for (int level = 0; level < model.Scene().xsheet.LevelCount(); ++level)
        if (const std::optional<CGrip> grip = GripOf(level, client, mapping))
            return grip;
    return std::nullopt;
}

std::string CCellHandleHand::CursorAt(CRealPoint client, const CViewMapping& mapping) const {
    const std::optional<CGrip> grip = GripAt(client, mapping);
    if (!grip)
        return {};
    if (grip->handle == CellHandle::Turn)
        return "cursor-rotate";
    return grip->isRising ? "cursor-scale-rising" : "cursor-scale-falling";
}

bool CCellHandleHand::TakeHold(const CCameraHandPoint& at, const CViewMapping& mapping) {
    const std::optional<CGrip> grip = GripAt(at.at, mapping);
    if (!grip)
        return false;
    m_level = grip->level;
    m_frame = m_doc.Model().cursorFrame;
    const CXSheetCell& cell = m_doc.Model().Scene().xsheet.Cell(m_level, m_frame);
    m_drag.emplace(cell.Transform(), cell.Size(), grip->handle, grip->corner, OnStage(at.at, mapping));
    return true;
}

void CCellHandleHand::Move(const CCameraHandPoint& to, const CViewMapping& mapping) {
    if (!m_drag || m_doc.Model().cursorFrame != m_frame)
        return;
    const CCellTransform cell = m_drag->To(
        OnStage(to.at, mapping), {to.keys.testFlag(Qt::ShiftModifier), to.keys.testFlag(Qt::ControlModifier)});
    m_doc.CellDragging().Change(m_drag->Handle() == CellHandle::Scale ? "Scale" : "Turn",
                                [&](CXSheet& xsheet) { xsheet.MutableCell(m_level, m_frame).SetTransform(cell); });
    Tell(cell);
}

void CCellHandleHand::Tell(const CCellTransform& cell) const {
    std::array<char, 100> text{};
    if (m_drag->Handle() == CellHandle::Scale)
        static_cast<void>(std::snprintf(text.data(), text.size(), "Scale %.1f %% x %.1f %%", cell.scaleX * 100,
                                        cell.scaleY * 100));
    else
        static_cast<void>(std::snprintf(text.data(), text.size(), "Rotation %.1f degrees",
                                        cell.rotation * 180 / std::numbers::pi));
    m_tell(text.data());
}

} // namespace velmor
