#pragma once

#include "image/Color.h"
#include "image/Geometry.h"
#include "sound/SoundTrack.h"
#include "xsheet/CameraTrack.h"
#include "xsheet/Dialogue.h"
#include "xsheet/FrameNotes.h"
#include "xsheet/XSheet.h"

namespace velmor {

/// Size, rate and background of a scene's frames (its length is the xsheet's frame count).
struct CSceneGeometry {
    int width = 768; ///< pixels
    int height = 576;
    int frameRate = 25; ///< frames per second
    ColorRef background = 0;

    CSize Frame() const { return {width, height}; }
    bool operator==(const CSceneGeometry&) const = default;
};

/// A scene: what an xsheet file and the file of notes beside it hold, undo brings back, and frames are composed
/// from. Copies share what they have in common, so that one can be kept for every step.
struct CScene {
    CSceneGeometry geometry;
    CXSheet xsheet;
    CCameraTrack camera; ///< counts for the xsheet's frames
    CSoundPlacements sounds;
    CDialogue dialogue;
    CFrameNotes frameNotes; ///< count for the xsheet's frames
    /// Lines of the file of notes that a newer version has written and this one keeps as they are.
    CShared<std::string> unknownNotes = CShared<std::string>();

    bool operator==(const CScene&) const = default;
};

} // namespace velmor
