#include "scene/preview/Scrubbing.h"

#include "platform/sound/Audio.h"
#include "render/preview/PreviewStretch.h"
#include "scene/Settings.h"
#include "scene/XSheetCursor.h"
#include "scene/preview/ScenePreview.h"

#include <algorithm>
#include <utility>

namespace velmor {

bool CScrubbing::IsByColumn() const {
    return Get(m_context.profile, setting::previewScrub) != 0;
}

void CScrubbing::SetByColumn(bool byColumn) {
    Set(m_context.profile, setting::previewScrub, byColumn ? 1 : 0);
}

void CScrubbing::To(int frame) {
    const CSceneModel& model = m_context.model;
    if (!model.sceneOpen || !model.Scene().xsheet.HasFrame(frame) || std::exchange(m_frame, frame) == frame)
        return;
    m_preview.GoBack();
    m_cursor.GoTo({model.cursorLevel, frame});
    PlayFrame(frame);
}

void CScrubbing::PlayFrame(int frame) {
    const CSceneModel& model = m_context.model;
    if (!model.soundBuffer || model.Scene().sounds.Count() == 0)
        return;
    // Once for all of the frames that are passed: opening a device takes longer than a frame lasts.
    if (!m_isOpen) {
        m_mixed = m_preview.Mixed(); // nothing is waited for: while it is mixed, the track is heard
        m_isOpen = m_output.CanPlay() && (m_mixed ? m_output.OpenStereo(mixRate) : m_output.Open());
    }
    if (!m_isOpen)
        return;
    // What it does not take is not heard; the frame is seen all the same.
    const int rate = std::max(1, model.Scene().geometry.frameRate);
    if (m_mixed)
        static_cast<void>(m_output.PlayStereo(FrameSound(*m_mixed, rate, frame)));
    else
        static_cast<void>(m_output.Play(FrameSound(*model.soundBuffer, SamplesPerFrame(rate), frame)));
}

void CScrubbing::End() {
    m_frame.reset();
    m_mixed.reset();
    if (!std::exchange(m_isOpen, false))
        return;
    m_output.Reset();
    static_cast<void>(m_output.Close());
}

} // namespace velmor
