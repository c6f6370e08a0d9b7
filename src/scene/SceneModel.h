#pragma once

#include "image/CelImg.h"
#include "image/Color.h"
#include "image/Palette.h"
#include "scene/ScenePaths.h"
#include "xsheet/MoveSelection.h"
#include "xsheet/Scene.h"
#include "xsheet/SheetCell.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace velmor {

namespace testing {
struct CSceneAccess;
}

/// What undo brings back. The move flags of the levels are not part of it.
struct CUndoStep {
    std::string name; ///< of the command
    CScene scene;     ///< as it was before
};

/// The tools of the cel editor as the document holds them.
struct CPaintChoices {
    CColor foreground{0, 0, 0, 255};
    CColor background{255, 255, 255, 255};
    int foregroundEntry = -1; ///< the palette entry that the foreground was taken from, -1 for none
    int brush = 0;            ///< 0 to 5, -1 for the rectangle forms
    int pen = 0;              ///< 0 to 3
    int bucketMode = 0;       ///< 0 solid, 1 and 2 gradients
};

/// Everything that the document holds: the scene, which CSceneEdit alone changes, and beside it what a session
/// adds, plain values that the document's operations change.
struct CSceneModel {
    const CScene& Scene() const { return m_scene; }
    /// Nothing when undo is not available.
    const std::optional<CUndoStep>& Undo() const { return m_undo; }

    std::string databaseFolder; ///< ends with the separator
    std::string sceneName;
    bool sceneOpen = false;
    std::string folderName; ///< current cel folder, empty for none
    SourceMode sourceMode = SourceMode::Cels;
    std::vector<std::string> sourceSelection; ///< titles of assets, in list order

    /// The track of the whole xsheet; nothing while a placed sound cannot be loaded.
    std::optional<std::vector<std::uint8_t>> soundBuffer;

    int cursorLevel = 0;
    int cursorFrame = 0;
    int lastSetFrame = 0; ///< the frame last given to SetCursorY
    CSheetCell CursorCell() const { return {cursorLevel, cursorFrame}; }
    CXSheetSelection selection;
    CMoveSelection moveSelection;
    CCellClipboard clipboard;

    CPalette palette;
    CPaintChoices paint;
    CCelImg celImg;       ///< the image under edit
    int openedImages = 0; ///< opened for editing so far: by it a view tells an opening from a refresh

    int importThreshold = 128;
    int motionPathSetup = 1;
    InputMode inputMode = InputMode::Move;
    bool cameraAntialias = false;

    CScenePaths Paths() const { return {databaseFolder, sceneName}; }
    bool HasFolder() const { return sceneOpen && !folderName.empty(); }
    /// Brings cursor, selection and move selection back into an xsheet that has shrunk.
    void ClampToXSheet();
    /// Empties the cel editor without saving when it holds `file`, which is gone or has been replaced: saved later,
    /// the old drawing would come back. Returns whether it did.
    bool DropEditedImage(const Path& file);
    /// Writes the image under edit when it belongs to `file` and has changes.
    CStatus SaveEditedImage(const Path& file);

private:
    friend class CSceneEdit;
    friend struct testing::CSceneAccess;

    CScene m_scene;
    std::optional<CUndoStep> m_undo;
};

} // namespace velmor
