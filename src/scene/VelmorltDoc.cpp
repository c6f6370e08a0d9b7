#include "scene/VelmorltDoc.h"

#include "platform/sound/Audio.h"
#include "render/ImageCache.h"
#include "scene/AssetOperations.h"
#include "scene/AssetTransforms.h"
#include "scene/CameraAids.h"
#include "scene/CameraOperations.h"
#include "scene/CameraPictures.h"
#include "scene/CelFilling.h"
#include "scene/CelPainting.h"
#include "scene/CelSelection.h"
#include "scene/CellDragging.h"
#include "scene/CellOperations.h"
#include "scene/CleanupOperations.h"
#include "scene/DialogueOperations.h"
#include "scene/FlipbookOperations.h"
#include "scene/GrabOperations.h"
#include "scene/ImportOperations.h"
#include "scene/MediaOperations.h"
#include "scene/PaletteOperations.h"
#include "scene/RecolorOperations.h"
#include "scene/RenderOperations.h"
#include "scene/SceneHistory.h"
#include "scene/SceneLifecycle.h"
#include "scene/SceneSaving.h"
#include "scene/SequenceImport.h"
#include "scene/SequenceOperations.h"
#include "scene/SheetExchange.h"
#include "scene/SoundOperations.h"
#include "scene/XSheetCursor.h"
#include "scene/XSheetOperations.h"
#include "scene/exposing/Exposing.h"
#include "scene/exposing/SheetTiming.h"
#include "scene/notes/SheetNotes.h"
#include "scene/paper/DrawingSteps.h"
#include "scene/paper/LightTable.h"
#include "scene/paper/Onion.h"
#include "scene/paper/Paper.h"
#include "scene/preview/ScenePreview.h"
#include "scene/preview/Scrubbing.h"
#include "scene/sheet/OtherSheet.h"
#include "scene/sheet/SheetDisplay.h"
#include "sound/SoundFile.h"

namespace velmor {

struct CVelmorltDoc::CParts {
    CParts(IPrompter& prompter, CProfile& profile, const CDocumentFolders& folders,
           std::unique_ptr<IAudioDevices> devices)
        : context{model, prompter, views, profile},
          scenes(context, palette, sounds, saving, folders.trash),
          history(context, scenes, palette, folders.journals),
          assets(
              context, scenes, imports, sounds, [this](const std::string& sound) { media.PlaySoundAsset(sound); },
              folders.trash),
          audio(std::move(devices)) {
        scenes.SetOpened([this] { return history.Begin(); });
        palette.SetRepaint({[this] { return recoloring.RepaintQuestion(); },
                            [this](const CColor& from, const CColor& to) { recoloring.Repaint(from, to); }});
        sounds.SetCanPlay([this] { return audio->Output().CanPlay(); });
        media.SetBeforePlaying([this] {
            preview.GoBack();
            scrubbing.End();
        });
    }

    CSceneModel model;
    CViewList views;
    CSceneContext context;
    CImageCache cache{CImageCache::usualBytes};

    CCameraPictures cameraPictures{context, cache};
    CSoundOperations sounds{context};
    CPaletteOperations palette{context};
    CCelPainting painting{model};
    CCelFilling filling{model, painting};
    CCelSelection selection{context, painting};
    CSceneSaving saving{context};
    CSceneLifecycle scenes;
    CSceneHistory history;
    CXSheetCursor cursor{context};
    CXSheetOperations xsheet{context, cursor};
    CSheetTiming timing{context, cursor};
    CExposing exposing{context, cursor, timing};
    CSheetDisplay sheetDisplay{context};
    COtherSheet otherSheet{context};
    CCellOperations cells{context};
    CSheetNotes notes{context, cursor};
    CCellDragging cellDragging{context};
    CCameraAids cameraAids{context};
    CCameraOperations camera{context, cursor};
    CImportOperations imports{context, scenes};
    CSequenceImport sequenceImport{context, scenes, imports};
    CSequenceOperations sequences{context, sequenceImport};
    CSheetExchange exchange{context};
    CDialogueOperations dialogue{context, exchange};
    CGrabOperations grabs{context, imports};
    CAssetOperations assets;
    COnion onion{context};
    CLightTable lightTable{context};
    CPaper paper{model, onion, lightTable};
    CDrawingSteps drawings{context, onion, scenes, assets, cursor};
    CAssetTransforms transforms{context};
    CRecolorOperations recoloring{context};
    CCleanupOperations cleanups{context};
    CFlipbookOperations flipbooks{context, cache};
    CRenderOperations renders{context, cache, [this](const Path& movie) { media.PlayMovie(movie); }};
    std::unique_ptr<IAudioDevices> audio;
    CMediaOperations media{context, sounds, flipbooks, *audio};
    CScenePreview preview{context, cursor, cache, audio->Output()};
    CScrubbing scrubbing{context, cursor, preview, audio->Output()};
};

CVelmorltDoc::CVelmorltDoc(IPrompter& prompter, CProfile& profile, const CDocumentFolders& folders)
    : CVelmorltDoc(prompter, profile, folders, MakeAudioDevices(samplesPerSecond)) {}

CVelmorltDoc::CVelmorltDoc(IPrompter& prompter, CProfile& profile, const CDocumentFolders& folders,
                           std::unique_ptr<IAudioDevices> audio)
    : m_parts(std::make_unique<CParts>(prompter, profile, folders, std::move(audio))) {
    m_parts->scenes.ConstructFromSettings(folders.program, folders.data);
}

CVelmorltDoc::~CVelmorltDoc() = default;

const CSceneModel& CVelmorltDoc::Model() const {
    return m_parts->model;
}

std::string CVelmorltDoc::GetTitle() const {
    return Model().sceneOpen ? Model().sceneName : "* No Scene Open *";
}

CEditedImage CVelmorltDoc::EditedImage() {
    return CEditedImage(m_parts->context);
}

// clang-format off
CViewList& CVelmorltDoc::Views() { return m_parts->views; }
CSceneLifecycle& CVelmorltDoc::Scenes() { return m_parts->scenes; }
CSceneSaving& CVelmorltDoc::Saving() { return m_parts->saving; }
CSceneHistory& CVelmorltDoc::History() { return m_parts->history; }
CXSheetCursor& CVelmorltDoc::Cursor() { return m_parts->cursor; }
CXSheetOperations& CVelmorltDoc::XSheet() { return m_parts->xsheet; }
CSheetTiming& CVelmorltDoc::Timing() { return m_parts->timing; }
CExposing& CVelmorltDoc::Exposing() { return m_parts->exposing; }
CSheetDisplay& CVelmorltDoc::SheetDisplay() { return m_parts->sheetDisplay; }
COtherSheet& CVelmorltDoc::OtherSheet() { return m_parts->otherSheet; }
CCellOperations& CVelmorltDoc::Cells() { return m_parts->cells; }
CSheetNotes& CVelmorltDoc::Notes() { return m_parts->notes; }
CCellDragging& CVelmorltDoc::CellDragging() { return m_parts->cellDragging; }
CCameraAids& CVelmorltDoc::CameraAids() { return m_parts->cameraAids; }
CCameraOperations& CVelmorltDoc::Camera() { return m_parts->camera; }
CCameraPictures& CVelmorltDoc::CameraPictures() { return m_parts->cameraPictures; }
CPaletteOperations& CVelmorltDoc::Palette() { return m_parts->palette; }
CCelPainting& CVelmorltDoc::Painting() { return m_parts->painting; }
COnion& CVelmorltDoc::Onion() { return m_parts->onion; }
CLightTable& CVelmorltDoc::LightTable() { return m_parts->lightTable; }
CPaper& CVelmorltDoc::Paper() { return m_parts->paper; }
CDrawingSteps& CVelmorltDoc::Drawings() { return m_parts->drawings; }
CCelFilling& CVelmorltDoc::Filling() { return m_parts->filling; }
CCelSelection& CVelmorltDoc::Selection() { return m_parts->selection; }
CAssetOperations& CVelmorltDoc::Assets() { return m_parts->assets; }
CAssetTransforms& CVelmorltDoc::Transforms() { return m_parts->transforms; }
CRecolorOperations& CVelmorltDoc::Recoloring() { return m_parts->recoloring; }
CCleanupOperations& CVelmorltDoc::Cleanups() { return m_parts->cleanups; }
CImportOperations& CVelmorltDoc::Imports() { return m_parts->imports; }
CSequenceOperations& CVelmorltDoc::Sequences() { return m_parts->sequences; }
CSheetExchange& CVelmorltDoc::Exchange() { return m_parts->exchange; }
CGrabOperations& CVelmorltDoc::Grabs() { return m_parts->grabs; }
CSoundOperations& CVelmorltDoc::Sounds() { return m_parts->sounds; }
CDialogueOperations& CVelmorltDoc::Dialogue() { return m_parts->dialogue; }
CMediaOperations& CVelmorltDoc::Media() { return m_parts->media; }
CFlipbookOperations& CVelmorltDoc::Flipbooks() { return m_parts->flipbooks; }
CScenePreview& CVelmorltDoc::Preview() { return m_parts->preview; }
CScrubbing& CVelmorltDoc::Scrubbing() { return m_parts->scrubbing; }
CRenderOperations& CVelmorltDoc::Renders() { return m_parts->renders; }
CImageCache& CVelmorltDoc::ImageCache() { return m_parts->cache; }
// clang-format on

} // namespace velmor
