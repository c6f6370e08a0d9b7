#pragma once

#include "scene/SceneContext.h"

#include <memory>
#include <optional>

namespace velmor {

class CScenePreview;
struct CMixedSound;
class CXSheetCursor;
class IAudioOutput;

/// Going through the sheet by hand: the cursor comes to the frame, whose picture is composed, and exactly its sound
/// is heard. What the last frame had to say ends with the next one.
class CScrubbing {
public:
    /// What is given outlives the object.
    CScrubbing(CSceneContext context, CXSheetCursor& cursor, CScenePreview& preview, IAudioOutput& output)
        : m_context(context), m_cursor(cursor), m_preview(preview), m_output(output) {}
    CScrubbing(const CScrubbing&) = delete;
    CScrubbing& operator=(const CScrubbing&) = delete;
    ~CScrubbing() { End(); }

    /// Whether dragging in the column of frame numbers does it without a key held; remembered.
    bool IsByColumn() const;
    void SetByColumn(bool byColumn);

    /// A frame of the sheet. What is played in place stops.
    void To(int frame);
    /// The hand is taken off; the cursor stays.
    void End();

private:
    void PlayFrame(int frame);

    CSceneContext m_context;
    CXSheetCursor& m_cursor;
    CScenePreview& m_preview;
    IAudioOutput& m_output;
    std::optional<int> m_frame;                 ///< the one under the hand
    bool m_isOpen = false;                      ///< the sound device
    std::shared_ptr<const CMixedSound> m_mixed; ///< what it was opened for; null for the track
};

} // namespace velmor
