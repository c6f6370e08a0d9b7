#pragma once

#include "SceneFixture.h"
#include "scene/SoundOperations.h"
#include "scene/XSheetCursor.h"
#include "scene/XSheetOperations.h"

namespace velmor::testing {

/// An open scene with the operations of its xsheet, on the default sheet of one level of 100 frames.
class CXSheetScene : public CSceneFixture {
protected:
    /// A cell of folder "Man", 100 x 100 pixels at (384, 288).
    CXSheetCell& Put(int level, int frame, const std::string& name) {
        return scene.xsheet.MutableCell(level, frame) =
                   CXSheetCell::FromFile("Man", name, {384, 288, 1, 1, 0}, 0, 1, 1, {100, 100});
    }
    /// The cel names of a level's first frames, a point for an empty cell.
    std::string Row(int level, int frames) const {
        std::string row;
        for (int frame = 0; frame < frames; ++frame)
            row += scene.xsheet.Cell(level, frame).IsUsed() ? scene.xsheet.Cell(level, frame).CelName() : ".";
        return row;
    }
    /// A sheet of as many empty levels, named "0", "1" and so on.
    void SetLevels(int levels, int frames = 100) {
        scene.xsheet = CXSheet(levels, frames);
        for (int level = 0; level < levels; ++level)
            scene.xsheet.SetLevelName(level, std::to_string(level));
    }
    using Texts = std::vector<std::string>;
    using Hints = std::vector<int>;

    CSoundOperations sounds{Context()};
    CXSheetCursor cursor{Context()};
    CXSheetOperations sheet{Context(), cursor};
};

} // namespace velmor::testing
