#pragma once

#include "image/Color.h"
#include "image/Geometry.h"
#include "platform/Status.h"
#include "platform/files/Files.h"
#include "platform/files/Trash.h"

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace velmor {

class CCelImg;
class CFlipbookOperations;
class CGrabOperations;
class CImageCache;
class CImportOperations;
class CProfile;
class CSceneLifecycle;
class CSoundOperations;
class CViewList;
class IPrompter;
struct CCameraPicture;
struct CSceneModel;
enum class SourceMode;

/// Whether taking a camera picture shows what went wrong with it.
enum class PictureErrors { Show, Keep };

/// Where a document finds the program's surroundings.
struct CDocumentFolders {
    Path program;      ///< the program's own folder, where the default database stands
    Path data;         ///< where it stands when that cannot be written
    CTrash trash = {}; ///< where deleted assets, folders and scenes go
};

/// The single document: owns everything about the open scene and hands each operation to the class that knows its
/// rules. Prompter and profile outlive it. All calls come from one thread; only camera pictures are composed on
/// another.
class CVelmorltDoc {
public:
    CVelmorltDoc(IPrompter& prompter, CProfile& profile, const CDocumentFolders& folders);
    CVelmorltDoc(const CVelmorltDoc&) = delete;
    CVelmorltDoc& operator=(const CVelmorltDoc&) = delete;
    ~CVelmorltDoc();

    CViewList& Views();
    /// The values of the scene, for views to read. Changes go through the operations.
    const CSceneModel& Model() const;
    /// The name of the open scene, or "* No Scene Open *".
    std::string GetTitle() const;

    // Scenes and folders.
    void ReopenLastScene();
    bool IsSceneOpen() const;
    std::string GetSceneName() const;
    std::string GetFolderName() const;
    void SetFolderName(const std::string& folder);
    std::string FindNextCelName() const;
    [[nodiscard]] bool OpenScene(const std::string& name);
    [[nodiscard]] bool LoadXSheet();
    SourceMode GetSourceMode() const;
    void SetSourceMode(SourceMode mode);
    void SetSourceSelection(std::vector<std::string> names);
    void OnFileNewscene();
    void OnFileOpenscene();
    void OnFileScenesettings();
    [[nodiscard]] bool OnFileSaveall();
    /// Saves all; true when nothing is left unsaved, or when the user wants to do it ("exit") all the same.
    [[nodiscard]] bool SaveAllOrAsk(const std::string& deed);
    void OnFileSettings();
    void OnFileScenemanager();

    // Xsheet.
    int GetFrameCount() const;
    int GetLevelCount() const;
    int GetCursorX() const;
    int GetCursorY() const;
    std::string GetLevelName(int level) const;
    bool GetLevelSmoothed(int level) const;
    std::string GetXsheetData(int level, int frame) const;
    void SetCursorX(int level);
    void SetCursorY(int frame);
    void SetSelStartX(int level);
    void SetSelEndX(int level);
    void SetSelStartY(int frame);
    void SetSelEndY(int frame);
    void SetLevelCanMove(int level);
    void SelectCamera();
    void OnXsheetMultiplelevelmoveselections();
    void OnXsheetAddlevel();
    void OnXsheetDeletelevel();
    void OnXsheetRenamelevel();
    void OnXsheetSwaplevels();
    void OnXsheetAddframes();
    void OnXsheetDeleteframes();
    void OnEditCopy();
    void OnEditCut();
    void OnEditPaste();
    void OnEditReversecels();
    void OnEditCondensecels();
    void OnEditExpandcels();
    void OnEditUndo();
    void DropCels(int level, int frame, int step, bool insert);
    /// Selects the cell, asks how the selected assets are to be exposed and drops them there; nothing for a cell
    /// outside the xsheet. `screenPoint` is where the mouse let go.
    void AskAndDropCels(int level, int frame, CPoint screenPoint);

    // Cells.
    std::optional<std::array<CPoint, 4>> GetXSheetCelPoints(int level) const;
    std::optional<CPoint> GetXSheetCellCentre(int level, int frame) const;
    void OnXsheetEditceldata();
    void OnXSheetDoTrans(int level);
    void OnXSheetDoBlur(int level);
    void OnXsheetInbetweenleveldata();

    // Camera.
    double GetCamPosX(int frame) const;
    double GetCamPosY(int frame) const;
    int GetCamRotDegree(int frame) const;
    double GetCamZoom(int frame) const;
    void StartCamInput();
    bool ProcessCamInput(int dx, int dy);
    void EndCamInput(int dx, int dy);
    void OnCameraMovemode();
    void OnCameraRotatemode();
    void OnCameraZoommode();
    void OnCameraAntialias();
    int GetMotionPathSetup() const;
    void OnCameraMotionpathsetup();
    void OnXsheetEditcameradata();
    void OnXsheetInbetweencameradata();
    void OnAnimationLinecheck();

    // The camera picture.
    /// Starts composing the current frame. Fails, with the text, when no scene is open.
    CStatus CreateBitmap();
    /// Null while a picture is being composed. The error of a picture is shown once; Keep leaves that to a later
    /// call.
    std::shared_ptr<const CCameraPicture> GetCameraBitmap(PictureErrors errors = PictureErrors::Show);
    /// `finished` is called on another thread each time a picture is there.
    void SetCameraBitmapCallback(std::function<void()> finished);

    // Palette and painting choices.
    CColor GetColor(int index) const;
    std::string GetColorName(int index) const;
    int GetColorCount() const;
    void SetFGColor(int index);
    void SetBGColor(int index);
    void SetFGColorValue(ColorRef color);
    void SetBGColorValue(ColorRef color);
    void SetFGAlpha(std::uint8_t alpha);
    CColor GetFGColor() const;
    CColor GetBGColor() const;
    void AddColor(const CColor& color, const std::string& name);
    void EditColor(int index);
    void DeleteColor(int index);
    void OnAddColor();
    void OnDeleteColor(int index);
    void SetBrush(int brush);
    void SetPen(int pen);
    void SetBucketMode(int mode);
    [[nodiscard]] bool SaveColors() const;
    [[nodiscard]] bool LoadColors();

    // Sounds.
    [[nodiscard]] bool LoadSound(const std::string& name, std::vector<std::uint8_t>& samples) const;
    std::optional<std::string> GetSoundName(int frame) const;
    void DropSound(int frame);
    void OnEditRemovesound();
    void PrepareSoundBuffer();
    std::optional<std::span<const std::uint8_t>> GetSoundBuffer() const;
    int GetFPS() const;
    void OnSourcesImportsound();
    void OnSourcesRecordsound();
    void OnAnimationPlaysoundonxsheet();
    void OnAnimationPlayselectedsound();
    void OnAssetsPlaysound();

    // Assets and the image under edit.
    void OnAssetsNewfolder();
    void OnAssetsNewcel();
    void OnAssetsDeleteassets();
    void OnAssetsDeletefolder();
    void OnAssetsRenamecel();
    void OnAssetsDuplicate();
    void OnAssetsRotatecels();
    void OnAssetsFlip();
    void OnAssetsColorkey();
    void EditCel(const std::string& name);
    /// Loads the drawing of a cell into the cel editor and goes to its folder.
    void EditDrawing(int level, int frame);
    /// Writes the image under edit to its file when it has changes, and has the camera picture composed again;
    /// keeps it open. Shows what went wrong, with the file; true when nothing is left unsaved.
    [[nodiscard]] bool SaveEditedImage();
    void OnCelUpdatecamera();
    /// Asks for tolerance and process and keys the picture under edit; its pixels change in memory only.
    void OnCelColorkey(CColor key);
    /// For the painting functions; whoever changes pixels tells the views.
    CCelImg& EditedImage();

    // Import.
    void OnSourcesImportcels();
    void OnSourcesImportpicture();
    void OnSourcesImportsettings();
    CImportOperations& Imports();
    CGrabOperations& Grabs();
    CSoundOperations& Sounds();

    // Flipbook and final output.
    void OnAnimationMakeflipbook();
    void OnAnimationPlaylastflipbook();
    void OnAnimationSavelastflipbook();
    CFlipbookOperations& Flipbooks();
    void OnAnimationRender();
    CImageCache& ImageCache();

private:
    struct CParts;
    std::unique_ptr<CParts> m_parts;
};

} // namespace velmor
