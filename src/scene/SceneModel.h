#pragma once

#include "image/CelImg.h"
#include "image/Color.h"
#include "image/Palette.h"
#include "image/paint/KeptTiles.h"
#include "scene/FillChoices.h"
#include "scene/ScenePaths.h"
#include "scene/history/History.h"
#include "scene/paper/PinnedDrawing.h"
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

/// The tools of the cel editor as the document holds them.
struct CPaintChoices {
    CColor foreground{0, 0, 0, 255};
    CColor background{255, 255, 255, 255};
    int foregroundEntry = -1; ///< the palette entry that the foreground was taken from, -1 for none
    int brush = 0;            ///< 0 to 5, -1 for the rectangle forms
    int pen = 0;              ///< 0 to 3
    int bucketMode = 0;       ///< 0 solid, 1 and 2 gradients
    CFillChoices fill;
};

/// What is being done to the image under edit over several events, a selection that floats for instance. The image
/// has it already; the history gets it when it is finished.
struct CUnfinishedPainting {
    std::string name;
    CKeptTiles before;
};

/// Everything that the document holds: the scene, which CSceneEdit alone changes, and beside it what a session
/// adds, plain values that the document's operations change.
struct CSceneModel {
    const CScene& Scene() const { return m_scene; }
    /// What was done to it, and to the scene's files. The move flags of the levels are not part of that.
    CHistory history;

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
    std::vector<CPinnedDrawing> pins; ///< on the light table

    CPalette palette;
    CPaintChoices paint;
    CCelImg celImg;                                ///< the image under edit
    std::optional<CUnfinishedPainting> unfinished; ///< changed by CCelPainting alone
    int openedImages = 0; ///< opened for editing so far: by it a view tells an opening from a refresh

    int importThreshold = 128;
    int motionPathSetup = 1;
    InputMode inputMode = InputMode::Move;
    bool cameraAntialias = false;

    CScenePaths Paths() const { return {databaseFolder, sceneName}; }
    /// A file of the open scene as the history names it: from the scene's folder on, with '/'. Empty for others.
    std::string SceneFile(const Path& file) const;
    /// Where the user is, for the history.
    CHistorySession Session() const;
    bool HasFolder() const { return sceneOpen && !folderName.empty(); }
    /// Brings cursor, selection and move selection back into an xsheet that has shrunk.
    void ClampToXSheet();
    /// Empties the cel editor without saving when it holds `file`, which is gone or has been replaced: saved later,
    /// the old drawing would come back. Returns whether it did.
    bool DropEditedImage(const Path& file);
    /// What is unfinished becomes a step of the history. Before anything else is done to the image under edit, its
    /// file or the history.
    void FinishPainting();
    /// Writes the image under edit when it has changes.
    CStatus SaveEditedImage();
    /// The same, if it belongs to `file`.
    CStatus SaveEditedImage(const Path& file);
    /// The image under edit has just come from its file, or gone into it.
    void NoteEditedImage();

private:
    friend class CSceneEdit;
    friend struct testing::CSceneAccess;

    CScene m_scene;
};

} // namespace velmor
