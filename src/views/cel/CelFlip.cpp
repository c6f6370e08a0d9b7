#include "views/cel/CelFlip.h"

#include "render/ImageCache.h"
#include "scene/EditedImage.h"
#include "scene/SceneModel.h"
#include "scene/VelmorltDoc.h"
#include "scene/paper/FlippedPicture.h"

#include <algorithm>
#include <utility>

namespace velmor {

namespace {

constexpr int ticksInFrame = 3; // so that no frame comes late by more than a third

} // namespace

CCelFlip::CCelFlip(CVelmorltDoc& doc, std::function<void(CDisplayBitmap)> show, std::function<void()> back)
    : m_doc(doc), m_show(std::move(show)), m_back(std::move(back)) {
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { ShowFrame(); });
}

bool CCelFlip::Show(const CDrawing& drawing) {
    if (drawing == m_shown)
        return true;
    const CSceneModel& model = m_doc.Model();
    CDisplayBitmap bitmap;
    const CSize size{model.celImg.Width(), model.celImg.Height()};
    if (!FlippedPicture(FileOf(model, drawing), size, m_grid, m_doc.ImageCache(), bitmap))
        return false; // of a file that is gone or broken other views tell
    m_shown = drawing;
    m_show(std::move(bitmap));
    return true;
}

void CCelFlip::To(DrawingDirection direction, const CGridSettings& grid) {
    const std::optional<CNeighbour> neighbour = m_doc.Drawings().Neighbour(direction);
    if (!neighbour)
        return;
    m_timer.stop();
    m_grid = grid;
    Show(neighbour->drawing);
}

void CCelFlip::Play(const CGridSettings& grid) {
    const CSceneModel& model = m_doc.Model();
    const CXSheet& sheet = model.Scene().xsheet;
    const CSheetCell cursor = model.CursorCell();
    if (!sheet.HasLevel(cursor.level) || !sheet.HasFrame(cursor.frame))
        return;
    const int frame = StandingFrame(sheet, cursor, EditedDrawing(model));
    const std::optional<CHold> run = RunAround(sheet, {cursor.level, frame});
    if (!run || !m_doc.EditedImage().Save())
        return;
    m_grid = grid;
    m_played = *run;
    m_clock.start();
    m_timer.start(std::max(1000 / (std::max(model.Scene().geometry.frameRate, 1) * ticksInFrame), 1));
    ShowFrame();
}

void CCelFlip::ShowFrame() {
    const CSceneModel& model = m_doc.Model();
    const CXSheet& sheet = model.Scene().xsheet;
    const qint64 frames = m_clock.elapsed() * model.Scene().geometry.frameRate / 1000;
    const int frame = m_played.firstFrame + static_cast<int>(frames % (m_played.endFrame - m_played.firstFrame));
    if (!sheet.HasLevel(model.cursorLevel) || !sheet.HasFrame(frame) ||
        !sheet.Cell(model.cursorLevel, frame).IsUsed() || !Show(DrawingOf(sheet.Cell(model.cursorLevel, frame))))
        End(); // it was edited meanwhile
}

void CCelFlip::End() {
    const bool wasOn = IsOn();
    Forget();
    if (wasOn)
        m_back();
}

void CCelFlip::Forget() {
    m_timer.stop();
    m_shown = {};
}

} // namespace velmor
