#pragma once

#include "views/dialogs/AddColorDialog.h"
#include "views/dialogs/AppearanceDialog.h"
#include "views/dialogs/BlurDialog.h"
#include "views/dialogs/CameraDataDialog.h"
#include "views/dialogs/CellDataDialog.h"
#include "views/dialogs/CleanupDialog.h"
#include "views/dialogs/ColorKeyDialog.h"
#include "views/dialogs/CompressorDialog.h"
#include "views/dialogs/DatabaseFolderDialog.h"
#include "views/dialogs/DialogueDialog.h"
#include "views/dialogs/FillSettingsDialog.h"
#include "views/dialogs/FlipDialog.h"
#include "views/dialogs/FrameCountDialog.h"
#include "views/dialogs/GridSettingsDialog.h"
#include "views/dialogs/ImportSettingsDialog.h"
#include "views/dialogs/MotionPathDialog.h"
#include "views/dialogs/MouthDialog.h"
#include "views/dialogs/NameDialog.h"
#include "views/dialogs/NewCelDialog.h"
#include "views/dialogs/NoteDialog.h"
#include "views/dialogs/NoteListDialog.h"
#include "views/dialogs/OnionSkinDialog.h"
#include "views/dialogs/OpenSceneDialog.h"
#include "views/dialogs/PenSettingsDialog.h"
#include "views/dialogs/RecoveryDialog.h"
#include "views/dialogs/RenderSetupDialog.h"
#include "views/dialogs/ReplaceColorDialog.h"
#include "views/dialogs/RotateDialog.h"
#include "views/dialogs/SceneSettingsDialog.h"
#include "views/dialogs/SelectLevelDialog.h"
#include "views/dialogs/SequenceDialog.h"
#include "views/dialogs/SheetExportDialog.h"
#include "views/dialogs/SheetImportDialog.h"
#include "views/dialogs/SoundShapeDialog.h"
#include "views/dialogs/SwapLevelsDialog.h"
#include "views/dialogs/TransparencyDialog.h"

#include <type_traits>
#include <utility>

namespace velmor {

template<class Request, class Dialog>
struct CDialogRow {};

template<class... Rows>
struct CDialogRows : Rows... {};

/// Which widget asks what a request asks. It is made of its parent and the request, and says what it holds when it
/// is confirmed by Values(). What is answered otherwise is shown by CQtPrompter itself.
using CDialogTable = CDialogRows<
    CDialogRow<CAppearanceRequest, CAppearanceDialog>, CDialogRow<CBlurRequest, CBlurDialog>,
    CDialogRow<CCameraDataRequest, CCameraDataDialog>, CDialogRow<CCellDataRequest, CCellDataDialog>,
    CDialogRow<CCleanupRequest, CCleanupDialog>, CDialogRow<CColorKeyRequest, CColorKeyDialog>,
    CDialogRow<CColorRequest, CAddColorDialog>, CDialogRow<CCompressorRequest, CCompressorDialog>,
    CDialogRow<CDatabaseFolderRequest, CDatabaseFolderDialog>, CDialogRow<CDialogueRequest, CDialogueDialog>,
    CDialogRow<CFillSettingsRequest, CFillSettingsDialog>, CDialogRow<CFlipRequest, CFlipDialog>,
    CDialogRow<CFrameCountRequest, CFrameCountDialog>, CDialogRow<CGridSettingsRequest, CGridSettingsDialog>,
    CDialogRow<CImportSettingsRequest, CImportSettingsDialog>, CDialogRow<CLevelRequest, CSelectLevelDialog>,
    CDialogRow<CMotionPathRequest, CMotionPathDialog>, CDialogRow<CMouthRequest, CMouthDialog>,
    CDialogRow<CNameRequest, CNameDialog>, CDialogRow<CNewCelRequest, CNewCelDialog>,
    CDialogRow<CNoteListRequest, CNoteListDialog>, CDialogRow<CNoteRequest, CNoteDialog>,
    CDialogRow<COnionSkinRequest, COnionSkinDialog>, CDialogRow<COpenSceneRequest, COpenSceneDialog>,
    CDialogRow<CPenSettingsRequest, CPenSettingsDialog>, CDialogRow<CRecoveryRequest, CRecoveryDialog>,
    CDialogRow<CRenderSetupRequest, CRenderSetupDialog>, CDialogRow<CReplaceColorRequest, CReplaceColorDialog>,
    CDialogRow<CRotationRequest, CRotateDialog>, CDialogRow<CSceneSettingsRequest, CSceneSettingsDialog>,
    CDialogRow<CSequenceRequest, CSequenceDialog>, CDialogRow<CSheetExportRequest, CSheetExportDialog>,
    CDialogRow<CSheetImportRequest, CSheetImportDialog>, CDialogRow<CSoundShapeRequest, CSoundShapeDialog>,
    CDialogRow<CSwapLevelsRequest, CSwapLevelsDialog>, CDialogRow<CTransparencyRequest, CTransparencyDialog>>;

template<class Request, class Dialog>
Dialog* FindDialog(const CDialogRow<Request, Dialog>& row); // for its type alone

template<class Request>
using DialogFor = std::remove_pointer_t<decltype(FindDialog<Request>(std::declval<CDialogTable>()))>;

/// Whether the camera picture shows what the dialog would change, while it is open.
template<class Request>
inline constexpr bool showsInPicture =
    std::is_same_v<Request, CBlurRequest> || std::is_same_v<Request, CCellDataRequest> ||
    std::is_same_v<Request, CTransparencyRequest>;

} // namespace velmor
