#pragma once

#include "platform/files/Files.h"
#include "platform/files/Trash.h"
#include "scene/EditedImage.h"

#include <memory>
#include <string>

namespace velmor {

class CAssetOperations;
class CAssetTransforms;
class CCameraAids;
class CCameraOperations;
class CCameraPictures;
class CCellDragging;
class CCellOperations;
class CCelFilling;
class CCelPainting;
class CCleanupOperations;
class CCelSelection;
class CDialogueOperations;
class CFlipbookOperations;
class CGrabOperations;
class CImageCache;
class CImportOperations;
class CDrawingSteps;
class CLightTable;
class CMediaOperations;
class COnion;
class COtherSheet;
class CPaper;
class CPaletteOperations;
class CProfile;
class CRecolorOperations;
class CRenderOperations;
class CSceneHistory;
class CSceneLifecycle;
class CScenePreview;
class CScrubbing;
class CSceneSaving;
class CSequenceOperations;
class CSheetExchange;
class CExposing;
class CSheetDisplay;
class CSheetTiming;
class CSheetNotes;
class CSoundOperations;
class CViewList;
class CXSheetCursor;
class CXSheetOperations;
class IAudioDevices;
class IPrompter;
struct CSceneModel;

/// Where a document finds the program's surroundings.
struct CDocumentFolders {
    Path program;       ///< the program's own folder, where the default database stands
    Path data;          ///< where it stands when that cannot be written
    CTrash trash = {};  ///< where deleted assets, folders and scenes go
    Path journals = {}; ///< where journals are kept; empty for none
};

/// The single document: owns everything about the open scene, and the parts that change it, one for each subject.
/// Views and commands take the parts that they work with. Prompter and profile outlive it. All calls come from one
/// thread; only camera pictures and those of the preview are composed on others.
class CVelmorltDoc {
public:
    CVelmorltDoc(IPrompter& prompter, CProfile& profile, const CDocumentFolders& folders);
    /// The same with sound devices of its own.
    CVelmorltDoc(IPrompter& prompter, CProfile& profile, const CDocumentFolders& folders,
                 std::unique_ptr<IAudioDevices> audio);
    CVelmorltDoc(const CVelmorltDoc&) = delete;
    CVelmorltDoc& operator=(const CVelmorltDoc&) = delete;
    ~CVelmorltDoc();

    /// What is open, to be read; changes go through the parts.
    const CSceneModel& Model() const;
    /// The name of the open scene, or "* No Scene Open *".
    std::string GetTitle() const;
    /// Where views hear of changes.
    CViewList& Views();

    /// Scenes and folders.
    CSceneLifecycle& Scenes();
    CSceneSaving& Saving();
    /// Undo, redo, recovery.
    CSceneHistory& History();
    /// Where the user is in the xsheet, and what is chosen there.
    CXSheetCursor& Cursor();
    /// Levels, frames, cells as a grid.
    CXSheetOperations& XSheet();
    /// How long what is seen stands, and what an edit of that would make of the sheet.
    CSheetTiming& Timing();
    /// Drawings exposed by typing.
    CExposing& Exposing();
    /// How the sheet is looked at.
    CSheetDisplay& SheetDisplay();
    /// Another scene's sheet, to copy from.
    COtherSheet& OtherSheet();
    /// The data of single cells.
    CCellOperations& Cells();
    /// Marks and comments in the sheet.
    CSheetNotes& Notes();
    /// Cells that are placed with the mouse over the camera picture.
    CCellDragging& CellDragging();
    CCameraOperations& Camera();
    /// What helps to place things in the camera view.
    CCameraAids& CameraAids();
    CCameraPictures& CameraPictures();
    CPaletteOperations& Palette();
    CCelPainting& Painting();
    /// Fills that do more than a plain one.
    CCelFilling& Filling();
    /// What is selected of the image under edit.
    CCelSelection& Selection();
    /// The image under edit on its way to its file.
    CEditedImage EditedImage();
    /// The neighbours that shine through the drawing under edit, and the drawings that are pinned under it.
    COnion& Onion();
    CLightTable& LightTable();
    /// What the two make.
    CPaper& Paper();
    /// From drawing to drawing.
    CDrawingSteps& Drawings();
    CAssetOperations& Assets();
    /// What is done to whole images.
    CAssetTransforms& Transforms();
    /// One colour in the place of another.
    CRecolorOperations& Recoloring();
    /// Scanned drawings.
    CCleanupOperations& Cleanups();
    CImportOperations& Imports();
    CSequenceOperations& Sequences();
    /// The xsheet to and from other programs.
    CSheetExchange& Exchange();
    /// Scanned and captured frames.
    CGrabOperations& Grabs();
    CSoundOperations& Sounds();
    /// What is spoken, and the mouths that speak it.
    CDialogueOperations& Dialogue();
    /// Playing and recording.
    CMediaOperations& Media();
    CFlipbookOperations& Flipbooks();
    /// Playing in place.
    CScenePreview& Preview();
    CScrubbing& Scrubbing();
    /// The final output.
    CRenderOperations& Renders();
    CImageCache& ImageCache();

private:
    struct CParts;
    std::unique_ptr<CParts> m_parts;
};

} // namespace velmor
