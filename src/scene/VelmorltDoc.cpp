#include "scene/VelmorltDoc.h"

#include "image/Palette.h"
#include "platform/sound/Audio.h"
#include "render/FrameRequests.h"
#include "render/FrameWorker.h"
#include "render/ImageCache.h"
#include "scene/AssetOperations.h"
#include "scene/AssetTransforms.h"
#include "scene/CameraOperations.h"
#include "scene/CellOperations.h"
#include "scene/EditedImage.h"
#include "scene/FlipbookOperations.h"
#include "scene/GrabOperations.h"
#include "scene/ImportOperations.h"
#include "scene/MediaOperations.h"
#include "scene/PaletteOperations.h"
#include "scene/RenderOperations.h"
#include "scene/SceneContext.h"
#include "scene/SceneLifecycle.h"
#include "scene/SoundOperations.h"
#include "scene/XSheetOperations.h"
#include "sound/SoundFile.h"

#include <set>

namespace velmor {

namespace {

/// Faults of camera pictures that the user has been told. Stepping through a scene meets the same broken file at
/// every frame; it is told once, and again after the scene was opened anew.
class CToldFaults final : public IDocView {
public:
    /// True for a fault that has not been told yet; it counts as told then.
    bool IsNew(const std::string& fault) { return m_faults.insert(fault).second; }
    void OnUpdate(UpdateHint hint) override {
        if (hint == everythingHint)
            m_faults.clear();
    }

private:
    std::set<std::string> m_faults;
};

} // namespace

struct CVelmorltDoc::CParts {
    CParts(IPrompter& prompter, CProfile& profile, const CTrash& trash)
        : context{model, prompter, views, profile},
          lifecycle(context, palette, sounds, trash),
          assets(context, lifecycle, imports, sounds, trash) {
        views.Add(toldFaults);
        sounds.SetCanPlay([this] { return audio->Output().CanPlay(); });
    }

    CSceneModel model;
    CViewList views;
    CSceneContext context;
    CImageCache cache{CImageCache::usualBytes};
    CFrameWorker worker{cache};
    std::shared_ptr<const CCameraPicture> shownPicture; ///< the last one whose error has been looked at
    CToldFaults toldFaults;

    CSoundOperations sounds{context};
    CPaletteOperations palette{context};
    CSceneLifecycle lifecycle;
    CXSheetOperations xsheet{context, sounds};
    CCellOperations cels{context};
    CCameraOperations camera{context, xsheet};
    CImportOperations imports{context, lifecycle};
    CGrabOperations grabs{context, imports};
    CAssetOperations assets;
    CAssetTransforms transforms{context};
    CFlipbookOperations flipbooks{context, cache};
    CRenderOperations renders{context, cache, [this](const Path& movie) { media.PlayMovie(movie); }};
    std::unique_ptr<IAudioDevices> audio = MakeAudioDevices(samplesPerSecond);
    CMediaOperations media{context, sounds, flipbooks, *audio};
};

CVelmorltDoc::CVelmorltDoc(IPrompter& prompter, CProfile& profile, const CDocumentFolders& folders)
    : m_parts(std::make_unique<CParts>(prompter, profile, folders.trash)) {
    m_parts->lifecycle.ConstructFromSettings(folders.program, folders.data);
}

CVelmorltDoc::~CVelmorltDoc() = default;

CViewList& CVelmorltDoc::Views() {
    return m_parts->views;
}

const CSceneModel& CVelmorltDoc::Model() const {
    return m_parts->model;
}

CCelImg& CVelmorltDoc::EditedImage() {
    return m_parts->model.celImg;
}

std::string CVelmorltDoc::GetTitle() const {
    return m_parts->model.sceneOpen ? m_parts->model.sceneName : "* No Scene Open *";
}

bool CVelmorltDoc::IsSceneOpen() const {
    return m_parts->model.sceneOpen;
}

SourceMode CVelmorltDoc::GetSourceMode() const {
    return m_parts->model.sourceMode;
}

void CVelmorltDoc::SetSourceSelection(std::vector<std::string> names) {
    m_parts->model.sourceSelection = std::move(names);
}

int CVelmorltDoc::GetFrameCount() const {
    return m_parts->model.xsheet.FrameCount();
}

int CVelmorltDoc::GetLevelCount() const {
    return m_parts->model.xsheet.LevelCount();
}

int CVelmorltDoc::GetCursorX() const {
    return m_parts->model.cursorLevel;
}

int CVelmorltDoc::GetCursorY() const {
    return m_parts->model.cursorFrame;
}

int CVelmorltDoc::GetColorCount() const {
    return m_parts->model.palette.Count();
}

CColor CVelmorltDoc::GetFGColor() const {
    return m_parts->model.paint.foreground;
}

CColor CVelmorltDoc::GetBGColor() const {
    return m_parts->model.paint.background;
}

CImportOperations& CVelmorltDoc::Imports() {
    return m_parts->imports;
}

CGrabOperations& CVelmorltDoc::Grabs() {
    return m_parts->grabs;
}

CSoundOperations& CVelmorltDoc::Sounds() {
    return m_parts->sounds;
}

CFlipbookOperations& CVelmorltDoc::Flipbooks() {
    return m_parts->flipbooks;
}

CImageCache& CVelmorltDoc::ImageCache() {
    return m_parts->cache;
}

CStatus CVelmorltDoc::CreateBitmap() {
    const CSceneModel& model = m_parts->model;
    if (!model.sceneOpen) // what the text means is "with no scene open"
        return CStatus::Failure("Internal error : CreateBitmap called with scene open!");
    const CShot shot{model.xsheet, model.geometry, model.Paths().SceneFolder(), model.cameraAntialias};
    if (!m_parts->worker.Start(RequestCameraPicture(shot, model.cursorFrame, model.camera.At(model.cursorFrame))))
        m_parts->context.Show("The system did not start a new background process for rendering!");
    return {};
}

std::shared_ptr<const CCameraPicture> CVelmorltDoc::GetCameraBitmap(PictureErrors errors) {
    std::shared_ptr<const CCameraPicture> picture = m_parts->worker.Picture();
    if (errors == PictureErrors::Show && picture && picture != m_parts->shownPicture) {
        m_parts->shownPicture = picture; // before the message, whose loop may ask again
        if (!picture->error.empty() && m_parts->toldFaults.IsNew(picture->error))
            m_parts->context.Show(picture->error);
    }
    return picture;
}

void CVelmorltDoc::SetCameraBitmapCallback(std::function<void()> finished) {
    m_parts->worker.SetFinishedCallback(std::move(finished));
}

void CVelmorltDoc::ReopenLastScene() {
    m_parts->lifecycle.ReopenLastScene();
}

std::string CVelmorltDoc::GetSceneName() const {
    return m_parts->lifecycle.GetSceneName();
}

std::string CVelmorltDoc::GetFolderName() const {
    return m_parts->lifecycle.GetFolderName();
}

void CVelmorltDoc::SetFolderName(const std::string& folder) {
    m_parts->lifecycle.SetFolderName(folder);
}

std::string CVelmorltDoc::FindNextCelName() const {
    return m_parts->lifecycle.FindNextCelName();
}

bool CVelmorltDoc::OpenScene(const std::string& name) {
    return m_parts->lifecycle.OpenScene(name);
}

bool CVelmorltDoc::LoadXSheet() {
    return m_parts->lifecycle.LoadXSheet();
}

void CVelmorltDoc::SetSourceMode(SourceMode mode) {
    m_parts->lifecycle.SetSourceMode(mode);
}

void CVelmorltDoc::OnFileNewscene() {
    m_parts->lifecycle.OnFileNewscene();
}

void CVelmorltDoc::OnFileOpenscene() {
    m_parts->lifecycle.OnFileOpenscene();
}

void CVelmorltDoc::OnFileScenesettings() {
    m_parts->lifecycle.OnFileScenesettings();
}

bool CVelmorltDoc::OnFileSaveall() {
    return m_parts->lifecycle.OnFileSaveall();
}

bool CVelmorltDoc::SaveAllOrAsk(const std::string& deed) {
    return m_parts->lifecycle.SaveAllOrAsk(deed);
}

void CVelmorltDoc::OnFileScenemanager() {
    m_parts->lifecycle.OnFileScenemanager();
}

void CVelmorltDoc::OnFileSettings() {
    m_parts->lifecycle.OnFileSettings();
}

std::string CVelmorltDoc::GetLevelName(int level) const {
    return m_parts->xsheet.GetLevelName(level);
}

bool CVelmorltDoc::GetLevelSmoothed(int level) const {
    return m_parts->xsheet.GetLevelSmoothed(level);
}

std::string CVelmorltDoc::GetXsheetData(int level, int frame) const {
    return m_parts->xsheet.GetXsheetData(level, frame);
}

void CVelmorltDoc::SetCursorX(int level) {
    m_parts->xsheet.SetCursorX(level);
}

void CVelmorltDoc::SetCursorY(int frame) {
    m_parts->xsheet.SetCursorY(frame);
}

void CVelmorltDoc::SetSelStartX(int level) {
    m_parts->xsheet.SetSelStartX(level);
}

void CVelmorltDoc::SetSelEndX(int level) {
    m_parts->xsheet.SetSelEndX(level);
}

void CVelmorltDoc::SetSelStartY(int frame) {
    m_parts->xsheet.SetSelStartY(frame);
}

void CVelmorltDoc::SetSelEndY(int frame) {
    m_parts->xsheet.SetSelEndY(frame);
}

void CVelmorltDoc::SetLevelCanMove(int level) {
    m_parts->xsheet.SetLevelCanMove(level);
}

void CVelmorltDoc::SelectCamera() {
    m_parts->xsheet.SelectCamera();
}

void CVelmorltDoc::OnXsheetMultiplelevelmoveselections() {
    m_parts->xsheet.OnXsheetMultiplelevelmoveselections();
}

void CVelmorltDoc::OnXsheetAddlevel() {
    m_parts->xsheet.OnXsheetAddlevel();
}

void CVelmorltDoc::OnXsheetDeletelevel() {
    m_parts->xsheet.OnXsheetDeletelevel();
}

void CVelmorltDoc::OnXsheetRenamelevel() {
    m_parts->xsheet.OnXsheetRenamelevel();
}

void CVelmorltDoc::OnXsheetSwaplevels() {
    m_parts->xsheet.OnXsheetSwaplevels();
}

void CVelmorltDoc::OnXsheetAddframes() {
    m_parts->xsheet.OnXsheetAddframes();
}

void CVelmorltDoc::OnXsheetDeleteframes() {
    m_parts->xsheet.OnXsheetDeleteframes();
}

void CVelmorltDoc::OnEditCopy() {
    m_parts->xsheet.OnEditCopy();
}

void CVelmorltDoc::OnEditCut() {
    m_parts->xsheet.OnEditCut();
}

void CVelmorltDoc::OnEditPaste() {
    m_parts->xsheet.OnEditPaste();
}

void CVelmorltDoc::OnEditReversecels() {
    m_parts->xsheet.OnEditReversecels();
}

void CVelmorltDoc::OnEditCondensecels() {
    m_parts->xsheet.OnEditCondensecels();
}

void CVelmorltDoc::OnEditExpandcels() {
    m_parts->xsheet.OnEditExpandcels();
}

void CVelmorltDoc::OnEditUndo() {
    m_parts->xsheet.OnEditUndo();
}

void CVelmorltDoc::AskAndDropCels(int level, int frame, CPoint screenPoint) {
    m_parts->xsheet.AskAndDropCels(level, frame, screenPoint);
}

void CVelmorltDoc::DropCels(int level, int frame, int step, bool insert) {
    m_parts->xsheet.DropCels(level, frame, step, insert);
}

std::optional<std::array<CPoint, 4>> CVelmorltDoc::GetXSheetCelPoints(int level) const {
    return m_parts->cels.GetXSheetCelPoints(level);
}

std::optional<CPoint> CVelmorltDoc::GetXSheetCellCentre(int level, int frame) const {
    return m_parts->cels.GetXSheetCellCentre(level, frame);
}

void CVelmorltDoc::OnXsheetEditceldata() {
    m_parts->cels.OnXsheetEditceldata();
}

void CVelmorltDoc::OnXSheetDoTrans(int level) {
    m_parts->cels.OnXSheetDoTrans(level);
}

void CVelmorltDoc::OnXSheetDoBlur(int level) {
    m_parts->cels.OnXSheetDoBlur(level);
}

void CVelmorltDoc::OnXsheetInbetweenleveldata() {
    m_parts->cels.OnXsheetInbetweenleveldata();
}

double CVelmorltDoc::GetCamPosX(int frame) const {
    return m_parts->camera.GetCamPosX(frame);
}

double CVelmorltDoc::GetCamPosY(int frame) const {
    return m_parts->camera.GetCamPosY(frame);
}

int CVelmorltDoc::GetCamRotDegree(int frame) const {
    return m_parts->camera.GetCamRotDegree(frame);
}

double CVelmorltDoc::GetCamZoom(int frame) const {
    return m_parts->camera.GetCamZoom(frame);
}

void CVelmorltDoc::StartCamInput() {
    m_parts->camera.StartCamInput();
}

bool CVelmorltDoc::ProcessCamInput(int dx, int dy) {
    return m_parts->camera.ProcessCamInput(dx, dy);
}

void CVelmorltDoc::EndCamInput(int dx, int dy) {
    m_parts->camera.EndCamInput(dx, dy);
}

void CVelmorltDoc::OnCameraMovemode() {
    m_parts->camera.OnCameraMovemode();
}

void CVelmorltDoc::OnCameraRotatemode() {
    m_parts->camera.OnCameraRotatemode();
}

void CVelmorltDoc::OnCameraZoommode() {
    m_parts->camera.OnCameraZoommode();
}

void CVelmorltDoc::OnCameraAntialias() {
    m_parts->camera.OnCameraAntialias();
}

int CVelmorltDoc::GetMotionPathSetup() const {
    return m_parts->camera.GetMotionPathSetup();
}

void CVelmorltDoc::OnCameraMotionpathsetup() {
    m_parts->camera.OnCameraMotionpathsetup();
}

void CVelmorltDoc::OnXsheetEditcameradata() {
    m_parts->camera.OnXsheetEditcameradata();
}

void CVelmorltDoc::OnXsheetInbetweencameradata() {
    m_parts->camera.OnXsheetInbetweencameradata();
}

void CVelmorltDoc::OnAnimationLinecheck() {
    m_parts->camera.OnAnimationLinecheck();
}

CColor CVelmorltDoc::GetColor(int index) const {
    return m_parts->palette.GetColor(index);
}

std::string CVelmorltDoc::GetColorName(int index) const {
    return m_parts->palette.GetColorName(index);
}

void CVelmorltDoc::SetFGColor(int index) {
    m_parts->palette.SetFGColor(index);
}

void CVelmorltDoc::SetBGColor(int index) {
    m_parts->palette.SetBGColor(index);
}

void CVelmorltDoc::SetFGColorValue(ColorRef color) {
    m_parts->palette.SetFGColorValue(color);
}

void CVelmorltDoc::SetBGColorValue(ColorRef color) {
    m_parts->palette.SetBGColorValue(color);
}

void CVelmorltDoc::SetFGAlpha(std::uint8_t alpha) {
    m_parts->palette.SetFGAlpha(alpha);
}

void CVelmorltDoc::AddColor(const CColor& color, const std::string& name) {
    m_parts->palette.AddColor(color, name);
}

void CVelmorltDoc::EditColor(int index) {
    m_parts->palette.EditColor(index);
}

void CVelmorltDoc::DeleteColor(int index) {
    m_parts->palette.DeleteColor(index);
}

void CVelmorltDoc::OnAddColor() {
    m_parts->palette.OnAddColor();
}

void CVelmorltDoc::OnDeleteColor(int index) {
    m_parts->palette.OnDeleteColor(index);
}

void CVelmorltDoc::SetBrush(int brush) {
    m_parts->palette.SetBrush(brush);
}

void CVelmorltDoc::SetPen(int pen) {
    m_parts->palette.SetPen(pen);
}

void CVelmorltDoc::SetBucketMode(int mode) {
    m_parts->palette.SetBucketMode(mode);
}

bool CVelmorltDoc::SaveColors() const {
    return m_parts->palette.SaveColors();
}

bool CVelmorltDoc::LoadColors() {
    return m_parts->palette.LoadColors();
}

bool CVelmorltDoc::LoadSound(const std::string& name, std::vector<std::uint8_t>& samples) const {
    return m_parts->sounds.LoadSound(name, samples);
}

std::optional<std::string> CVelmorltDoc::GetSoundName(int frame) const {
    return m_parts->sounds.GetSoundName(frame);
}

void CVelmorltDoc::DropSound(int frame) {
    m_parts->sounds.DropSound(frame);
}

void CVelmorltDoc::OnEditRemovesound() {
    m_parts->sounds.OnEditRemovesound();
}

void CVelmorltDoc::PrepareSoundBuffer() {
    m_parts->sounds.PrepareSoundBuffer();
}

std::optional<std::span<const std::uint8_t>> CVelmorltDoc::GetSoundBuffer() const {
    return m_parts->sounds.GetSoundBuffer();
}

int CVelmorltDoc::GetFPS() const {
    return m_parts->sounds.GetFPS();
}

void CVelmorltDoc::OnSourcesImportsound() {
    m_parts->sounds.OnSourcesImportsound();
}

void CVelmorltDoc::OnSourcesImportcels() {
    m_parts->imports.OnSourcesImportcels();
}

void CVelmorltDoc::OnSourcesImportpicture() {
    m_parts->imports.OnSourcesImportpicture();
}

void CVelmorltDoc::OnSourcesImportsettings() {
    m_parts->imports.OnSourcesImportsettings();
}

void CVelmorltDoc::OnSourcesRecordsound() {
    m_parts->media.OnSourcesRecordsound();
}

void CVelmorltDoc::OnAnimationPlaysoundonxsheet() {
    m_parts->media.OnAnimationPlaysoundonxsheet();
}

void CVelmorltDoc::OnAnimationPlayselectedsound() {
    m_parts->media.OnAnimationPlayselectedsound();
}

void CVelmorltDoc::OnAssetsPlaysound() {
    m_parts->media.OnAssetsPlaysound();
}

void CVelmorltDoc::OnAssetsNewfolder() {
    m_parts->assets.OnAssetsNewfolder();
}

void CVelmorltDoc::OnAssetsNewcel() {
    m_parts->assets.OnAssetsNewcel();
}

void CVelmorltDoc::OnAssetsDeleteassets() {
    m_parts->assets.OnAssetsDeleteassets();
}

void CVelmorltDoc::OnAssetsDeletefolder() {
    m_parts->assets.OnAssetsDeletefolder();
}

void CVelmorltDoc::OnAssetsRenamecel() {
    m_parts->assets.OnAssetsRenamecel();
}

void CVelmorltDoc::OnAssetsDuplicate() {
    m_parts->assets.OnAssetsDuplicate();
}

void CVelmorltDoc::OnAssetsRotatecels() {
    m_parts->transforms.OnAssetsRotatecels();
}

void CVelmorltDoc::OnAssetsFlip() {
    m_parts->transforms.OnAssetsFlip();
}

void CVelmorltDoc::OnAssetsColorkey() {
    m_parts->transforms.OnAssetsColorkey();
}

void CVelmorltDoc::OnCelColorkey(CColor key) {
    m_parts->transforms.OnCelColorkey(key);
}

void CVelmorltDoc::EditCel(const std::string& name) {
    // A sound is heard rather than edited.
    if (GetSourceMode() == SourceMode::Sounds)
        m_parts->media.PlaySoundAsset(name);
    else
        m_parts->assets.EditCel(name);
}

void CVelmorltDoc::EditDrawing(int level, int frame) {
    m_parts->assets.EditDrawing(level, frame);
}

bool CVelmorltDoc::SaveEditedImage() {
    return CEditedImage(m_parts->context).Save();
}

void CVelmorltDoc::OnCelUpdatecamera() {
    m_parts->assets.OnCelUpdatecamera();
}

void CVelmorltDoc::OnAnimationMakeflipbook() {
    static_cast<void>(m_parts->media.OnAnimationMakeflipbook());
}

void CVelmorltDoc::OnAnimationPlaylastflipbook() {
    m_parts->media.OnAnimationPlaylastflipbook();
}

void CVelmorltDoc::OnAnimationRender() {
    static_cast<void>(m_parts->renders.OnAnimationRender());
}

void CVelmorltDoc::OnAnimationSavelastflipbook() {
    m_parts->flipbooks.OnAnimationSavelastflipbook();
}

} // namespace velmor
