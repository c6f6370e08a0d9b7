#include "scene/CellDragging.h"

#include "scene/CommandState.h"
#include "scene/InbetweenDialog.h"
#include "scene/SceneEdit.h"
#include "xsheet/Spacing.h"

namespace velmor {

void CCellDragging::Begin() {
    m_from.reset();
    if (!m_context.model.sceneOpen)
        return;
    m_from = m_context.model.Scene();
    m_left = *m_from;
}

void CCellDragging::Change(const std::string& name, const std::function<void(CXSheet&)>& change) {
    if (m_from && m_context.model.Scene() != m_left)
        m_from.reset(); // an undo, for instance
    if (!m_from)
        return;
    CSceneEdit edit(m_context, name, UpdateHint::CameraRedraw);
    edit.GoOnFrom(*m_from);
    edit.XSheet() = m_from->xsheet;
    change(edit.XSheet());
    m_left = edit.Scene();
}

void CCellDragging::End() {
    const bool hasChanged = m_from && m_left != *m_from;
    EndStep();
    if (hasChanged)
        m_context.Update(pictureHint);
}

void CCellDragging::GiveUp() {
    Change("", [](CXSheet&) {}); // which takes the step away
    EndStep();
}

void CCellDragging::EndStep() {
    m_context.model.history.Finish();
    m_from.reset();
    m_left = {};
}

void CCellDragging::Place(CXSheet& xsheet, int level, int firstFrame, std::span<const CRealPoint> positions) {
    if (!xsheet.HasLevel(level))
        return;
    int frame = firstFrame;
    for (const CRealPoint& position : positions) {
        if (xsheet.HasFrame(frame) && xsheet.Cell(level, frame).IsUsed())
            static_cast<void>(xsheet.MutableCell(level, frame).SetPos(position.x, position.y)); // it is used
        ++frame;
    }
}

std::optional<CInbetweenKeys> CCellDragging::KeysOfPath() const {
    const CSceneModel& model = m_context.model;
    std::optional<CInbetweenKeys> keys;
    if (CanInbetween(model) && model.Scene().xsheet.HasLevel(model.cursorLevel))
        keys = FindLevelKeys(model.Scene().xsheet, model.cursorLevel, model.selection.firstFrame,
                             model.selection.lastFrame);
    if (!keys)
        m_context.prompter.ShowVelmorMessage(
            "A path is drawn from the first to the last used cel of a selection of at least three frames");
    return keys;
}

void CCellDragging::PlaceAlong(CInbetweenKeys keys, std::span<const CRealPoint> drawn) {
    const int level = m_context.model.cursorLevel;
    const CXSheet& sheet = m_context.model.Scene().xsheet;
    if (drawn.empty() || !sheet.HasLevel(level) || !sheet.HasFrame(keys.last))
        return;
    const CXSheetCell& first = sheet.Cell(level, keys.first);
    const CXSheetCell& last = sheet.Cell(level, keys.last);
    const std::vector<CRealPoint> positions = SpreadAlong(
        drawn, {first.PosX(), first.PosY()}, {last.PosX(), last.PosY()}, keys, RememberedPace(m_context.profile));
    Begin();
    Change("Draw Path", [&](CXSheet& xsheet) {
        Place(xsheet, level, keys.first + 1, std::span(positions).subspan(1, positions.size() - 2));
    });
    End();
}

} // namespace velmor
