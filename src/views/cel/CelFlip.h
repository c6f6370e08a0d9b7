#pragma once

#include "image/DisplayBitmap.h"
#include "scene/paper/DrawingSteps.h"

#include <QElapsedTimer>
#include <QTimer>

#include <functional>
#include <string>

namespace velmor {

class CVelmorltDoc;

/// Other drawings in the place of the one under edit, as when paper is flipped: a neighbour, or those of the
/// cursor's level as they play. Nothing is changed by it.
class CCelFlip {
public:
    /// `show` gets what is to be seen, `back` is called when it is over. The document outlives the object.
    CCelFlip(CVelmorltDoc& doc, std::function<void(CDisplayBitmap)> show, std::function<void()> back);

    bool IsOn() const { return !m_shown.IsEmpty(); }
    bool IsPlaying() const { return m_timer.isActive(); }
    /// The drawing that is seen; an empty one while none is.
    const CDrawing& Shown() const { return m_shown; }

    /// Shows the neighbour of the image under edit; nothing happens when there is none.
    void To(DrawingDirection direction, const CGridSettings& grid);
    /// Plays the level round and round, at the scene's rate. What was painted is written first.
    void Play(const CGridSettings& grid);
    void End();
    /// The same when something else is to be seen anyway.
    void Forget();

private:
    bool Show(const CDrawing& drawing);
    void ShowFrame();

    CVelmorltDoc& m_doc;
    std::function<void(CDisplayBitmap)> m_show;
    std::function<void()> m_back;
    CGridSettings m_grid;
    CDrawing m_shown;
    CHold m_played;
    QElapsedTimer m_clock; ///< since the playing began
    QTimer m_timer;
};

} // namespace velmor
