#include "views/camera/SpacingHand.h"

#include "scene/CameraAids.h"
#include "scene/CellDragging.h"
#include "scene/SceneModel.h"
#include "scene/VelmorltDoc.h"

namespace velmor {

std::optional<CInbetweenKeys> KeysAround(const CPathRun& run, int frame,
                                         const std::optional<CInbetweenKeys>& selected) {
    const int last = run.firstFrame + static_cast<int>(run.points.size()) - 1;
    if (selected && frame > selected->first && frame < selected->last && selected->first >= run.firstFrame &&
        selected->last <= last)
        return selected;
    if (frame <= run.firstFrame || frame >= last)
        return std::nullopt;
    const auto isKey = [&run](int at) {
        return run.points[static_cast<std::size_t>(at - run.firstFrame)].mark == PathMark::Key;
    };
    CInbetweenKeys keys{frame - 1, frame + 1};
    while (!isKey(keys.first)) // the ends of a run are keys
        --keys.first;
    while (!isKey(keys.last))
        ++keys.last;
    return keys;
}

std::optional<CInbetweenKeys> CSpacingHand::SelectedKeys(int level) const {
    const CSceneModel& model = m_doc.Model();
    const CXSheetSelection& selection = model.selection;
    if (level < selection.firstLevel || level > selection.lastLevel ||
        selection.lastFrame - selection.firstFrame < 2)
        return std::nullopt;
    return FindLevelKeys(model.Scene().xsheet, level, selection.firstFrame, selection.lastFrame);
}

std::optional<CSpacingHand::CTick> CSpacingHand::TickAt(CRealPoint client, const CViewMapping& mapping) const {
    if (!m_doc.Model().sceneOpen || !m_doc.CameraAids().Choices().spacing)
        return std::nullopt;
    std::optional<CTick> found;
    double nearest = reach;
    for (const CLevelPath& level : m_marks().paths)
        for (const CPathRun& run : level.path)
            for (std::size_t i = 0; i < run.points.size(); ++i) {
                const CPoint at = run.points[i].at;
                const CRealPoint shown =
                    mapping.ToClient(CRealPoint{static_cast<double>(at.x), static_cast<double>(at.y)});
                const double away = Distance(shown, client);
                if (away >= nearest)
                    continue;
                const int frame = run.firstFrame + static_cast<int>(i);
                if (const auto keys = KeysAround(run, frame, SelectedKeys(level.level))) {
                    found = {level.level, frame, *keys};
                    nearest = away;
                }
            }
    return found;
}

std::string CSpacingHand::CursorAt(CRealPoint client, const CViewMapping& mapping) const {
    return TickAt(client, mapping) ? "cursor-spacing" : "";
}

bool CSpacingHand::TakeHold(const CCameraHandPoint& at, const CViewMapping& mapping) {
    const std::optional<CTick> tick = TickAt(at.at, mapping);
    if (!tick)
        return false;
    m_tick = *tick;
    std::vector<CRealPoint> positions;
    for (int frame = m_tick.keys.first; frame <= m_tick.keys.last; ++frame) {
        const CXSheetCell& cell = m_doc.Model().Scene().xsheet.Cell(m_tick.level, frame);
        positions.push_back({cell.PosX(), cell.PosY()});
    }
    m_spacing.emplace(positions);
    return true;
}

void CSpacingHand::Move(const CCameraHandPoint& to, const CViewMapping& mapping) {
    if (!m_spacing)
        return;
    const std::vector<CRealPoint> positions = m_spacing->Dragged(
        static_cast<std::size_t>(m_tick.frame - m_tick.keys.first),
        CameraAt(m_tick.frame).ToStage(mapping.ToImage(to.at)), to.keys.testFlag(Qt::ControlModifier));
    m_doc.CellDragging().Change("Spacing", [&](CXSheet& xsheet) {
        CCellDragging::Place(xsheet, m_tick.level, m_tick.keys.first, positions);
    });
}

} // namespace velmor
