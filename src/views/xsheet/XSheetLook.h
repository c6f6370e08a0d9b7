#pragma once

#include "sound/SoundPeaks.h"
#include "views/xsheet/NoteSigns.h"
#include "views/xsheet/XSheetGeometry.h"
#include "xsheet/CameraTrack.h"

#include <QPixmap>
#include <QRegion>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace velmor {

class CXSheetSounds;
struct CScene;
struct CSceneModel;

enum class CellFill { Plain, Selected, Cursor };

/// A held cell as a part of a line.
enum class HoldLine { None, Through, End };

/// A picture in a cell; the same as long as nobody has painted it anew.
struct CCellPicture {
    QPixmap pixmap;

    bool operator==(const CCellPicture& other) const { return pixmap.cacheKey() == other.pixmap.cacheKey(); }
};

/// What one cell shows.
struct CCellLook {
    std::string text;
    CellFill fill = CellFill::Plain;
    bool held = false;    ///< the ditto mark
    bool missing = false; ///< its image could not be read when it was put there
    bool blurred = false;
    bool transparent = false;
    CNoteLook note;
    bool outcome = false;           ///< it is not so yet: an edit would make it so
    int hue = -1;                   ///< of its folder, 0 to 359; below 0 for none
    HoldLine hold = HoldLine::None; ///< in place of the ditto mark
    CCellPicture picture = {};

    bool operator==(const CCellLook&) const = default;
};

/// What the header of a level shows; the effects are those of its cell at the cursor's frame.
struct CLevelLook {
    std::string name;
    bool current = false;
    bool moves = false;
    bool used = false;
    bool blurred = false;
    bool transparent = false;

    bool operator==(const CLevelLook&) const = default;
};

/// What stands beside the cells of a frame.
struct CFrameLook {
    bool current = false;
    bool selected = false;
    CCameraFrame camera;
    bool cameraHeld = false; ///< the camera stands as at the frame before
    std::string sound;       ///< of the sound that starts here
    bool sounding = false;
    bool soundGoesOn = false;     ///< from the frame before
    bool soundContinues = false;  ///< at the next frame
    bool ready = false;           ///< to be played in place
    std::vector<CPeak> wave;      ///< of what is heard, one for each pixel line; empty where none is shown
    std::string spoken;           ///< what of the dialogue is due here
    bool isSpoken = false;        ///< a line of dialogue is
    bool speechContinues = false; ///< at the next frame
    CNoteLook note;

    bool operator==(const CFrameLook&) const = default;
};

/// Where dropped assets would land.
struct CDropMark {
    CSheetCell start;
    int frames = 1;     ///< that they would cover, one each
    bool sound = false; ///< in the sound column; the level means nothing

    bool operator==(const CDropMark&) const = default;
};

/// A handle at the lower edge of what is selected, near which the pointer is.
struct CGripLook {
    bool fills = false; ///< otherwise it slides an edge
    QRect rect;

    bool operator==(const CGripLook&) const = default;
};

/// The line that is being typed into a cell.
struct CEntryLook {
    CSheetCell cell;
    std::string text;
    bool possible = true; ///< otherwise there is nothing that it would do

    bool operator==(const CEntryLook&) const = default;
};

/// What the mouse adds to the picture.
struct CPointerLook {
    std::optional<CHeaderHit> hot; ///< the header button under the mouse
    bool pressed = false;          ///< and it is down
    std::optional<CDropMark> drop;
    std::optional<CGripLook> grip = {};
    std::optional<int> levelTarget = {}; ///< the level in front of which those that are dragged would be put

    bool operator==(const CPointerLook&) const = default;
};

/// All that the xsheet view shows at a moment. Taken from the document at each change, it is what gets painted,
/// and two of them tell what is to be painted again.
struct CXSheetLook {
    bool sceneOpen = false;
    CXSheetGeometry geometry;
    int frameRate = 25;
    bool cameraMoves = false;
    bool focused = false; ///< keys move the cursor
    CPointerLook pointer;
    std::optional<CEntryLook> entry;
    std::vector<CLevelLook> levels; ///< from geometry.firstLevel to EndLevel()
    std::vector<CFrameLook> frames; ///< from geometry.firstFrame to EndFrame()
    std::vector<CCellLook> cells;   ///< of these, frame by frame

    const CCellLook& CellAt(std::size_t frameRow, std::size_t column) const {
        return cells[frameRow * levels.size() + column];
    }
};

/// What playing in place adds.
struct CPlayLook {
    std::optional<int> frame;             ///< the one that is seen instead of the cursor's
    std::function<bool(int frame)> ready; ///< whether a frame's picture is kept; empty when none are
};

/// `outcome` is what an edit would make of the scene, and is shown in its place; null for none.
CXSheetLook LookAt(const CSceneModel& model, const CXSheetSounds& sounds, const CXSheetGeometry& geometry,
                   const CPointerLook& pointer, const CPlayLook& play = {}, const CScene* outcome = nullptr);

/// The bar where levels that are dragged would be put: in front of a level.
QRect TargetRect(const CXSheetGeometry& geometry, int level);
/// The part of the client area that a drop mark covers.
QRect RectOf(const CXSheetGeometry& geometry, const CDropMark& mark);

/// What of the client area differs.
QRegion Difference(const CXSheetLook& before, const CXSheetLook& after);

} // namespace velmor
