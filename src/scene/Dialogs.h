#pragma once

#include <variant>

namespace velmor {

struct CAppearanceRequest;
struct CBlurRequest;
struct CCameraDataRequest;
struct CCellDataRequest;
struct CCleanupRequest;
struct CColorKeyRequest;
struct CColorRequest;
struct CCompressorRequest;
struct CDatabaseFolderRequest;
struct CDialogueRequest;
struct CDropTypeRequest;
struct CFillSettingsRequest;
struct CFlipRequest;
struct CFlipbookRequest;
struct CFrameCountRequest;
struct CGridSettingsRequest;
struct CImportSettingsRequest;
struct CInbetweenRequest;
struct CLevelRequest;
struct CMotionPathRequest;
struct CMouthRequest;
struct CNameRequest;
struct CNewCelRequest;
struct CNoteListRequest;
struct CNoteRequest;
struct COnionSkinRequest;
struct COpenFilesRequest;
struct COpenSceneRequest;
struct CPenSettingsRequest;
struct CRecoveryRequest;
struct CRenderSetupRequest;
struct CReplaceColorRequest;
struct CRotationRequest;
struct CSaveFileRequest;
struct CSceneSettingsRequest;
struct CSequenceRequest;
struct CSheetExportRequest;
struct CSheetImportRequest;
struct CSoundShapeRequest;
struct CSwapLevelsRequest;
struct CTransparencyRequest;

/// A dialog on its way to the user and back: what it is handed, and the answer, which starts as that of a dialog
/// that is cancelled.
template<class Request>
struct CDialogOf;

/// Any of the dialogs. Their requests stand in DialogRequests.h.
using CAnyDialog =
    std::variant<CDialogOf<CAppearanceRequest>*, CDialogOf<CBlurRequest>*, CDialogOf<CCameraDataRequest>*,
                 CDialogOf<CCellDataRequest>*, CDialogOf<CCleanupRequest>*, CDialogOf<CColorKeyRequest>*,
                 CDialogOf<CColorRequest>*, CDialogOf<CCompressorRequest>*, CDialogOf<CDatabaseFolderRequest>*,
                 CDialogOf<CDialogueRequest>*, CDialogOf<CDropTypeRequest>*, CDialogOf<CFillSettingsRequest>*,
                 CDialogOf<CFlipRequest>*, CDialogOf<CFlipbookRequest>*, CDialogOf<CFrameCountRequest>*,
                 CDialogOf<CGridSettingsRequest>*, CDialogOf<CImportSettingsRequest>*,
                 CDialogOf<CInbetweenRequest>*, CDialogOf<CLevelRequest>*, CDialogOf<CMotionPathRequest>*,
                 CDialogOf<CMouthRequest>*, CDialogOf<CNameRequest>*, CDialogOf<CNewCelRequest>*,
                 CDialogOf<CNoteListRequest>*, CDialogOf<CNoteRequest>*, CDialogOf<COnionSkinRequest>*,
                 CDialogOf<COpenFilesRequest>*, CDialogOf<COpenSceneRequest>*, CDialogOf<CPenSettingsRequest>*,
                 CDialogOf<CRecoveryRequest>*, CDialogOf<CRenderSetupRequest>*, CDialogOf<CReplaceColorRequest>*,
                 CDialogOf<CRotationRequest>*, CDialogOf<CSaveFileRequest>*, CDialogOf<CSceneSettingsRequest>*,
                 CDialogOf<CSequenceRequest>*, CDialogOf<CSheetExportRequest>*, CDialogOf<CSheetImportRequest>*,
                 CDialogOf<CSoundShapeRequest>*, CDialogOf<CSwapLevelsRequest>*, CDialogOf<CTransparencyRequest>*>;

/// The one door through which dialogs are shown. A new dialog is its request, its widget, and a row in the table of
/// the widgets (views/prompter/DialogTable.h).
class IDialogs {
public:
    virtual ~IDialogs() = default;

    /// Shows the dialog of a request until it is closed; what it was answered, as the request says.
    template<class Request>
    typename Request::Answer Ask(const Request& request) {
        CDialogOf<Request> dialog{request};
        ShowDialog(&dialog);
        return dialog.answer;
    }

protected:
    virtual void ShowDialog(CAnyDialog dialog) = 0;
};

} // namespace velmor
