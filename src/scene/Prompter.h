#pragma once

#include "platform/Progress.h"
#include "platform/files/Files.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace velmor {

struct CSceneSettingsRequest;
struct CSceneSettings;
struct CNameRequest;
struct CNewCelRequest;
struct CNewCelValues;
struct CLevelRequest;
struct CFrameCountRequest;
struct CCellDataRequest;
struct CCellDataForm;
struct CBlurRequest;
struct CBlurForm;
struct CTransparencyRequest;
struct CCameraDataRequest;
struct CCameraForm;
struct CInbetweenRequest;
struct CInbetweenAnswer;
struct CLineCheckRequest;
struct CColorRequest;
struct CColorValues;
struct CFlipbookRequest;
struct CFlipbookAnswer;
struct CRenderSetupRequest;
struct CRenderSetup;
struct CRenderedRequest;
struct CCompressorRequest;
struct CFileRequest;
struct CRotationValues;
struct CColorKeyRequest;
struct CColorKeyValues;
struct CDropTypeRequest;
struct CGridSettingsRequest;
struct CGridSettings;
struct CAppearanceRequest;
class CMovie;
class CSceneManager;
class CSoundRecorder;
enum class Appearance;
enum class FlipDirection;

/// Whether the user can take back what a question asks for.
enum class Consequence { Undoable, Final };

/// The document's way to the user: messages, questions and dialogs. The window shows them, tests answer from a
/// script, the command line prints messages and refuses dialogs. A dialog that was cancelled answers nothing.
class IPrompter {
public:
    virtual ~IPrompter() = default;

    /// The system's message box.
    virtual void ShowMessage(const std::string& text) = 0;
    /// The application's own dialog, titled "Velmor Message!", with an OK button only.
    virtual void ShowVelmorMessage(const std::string& text) = 0;
    /// The same dialog with OK and Cancel; true for OK. What is final does not happen by a press of Return alone.
    [[nodiscard]] virtual bool Confirm(const std::string& text, Consequence consequence = Consequence::Final) = 0;
    /// Yes and No; true for Yes. Asked before something is overwritten, stopped or left, so Return means No.
    [[nodiscard]] virtual bool AskYesNo(const std::string& text) = 0;
    /// Long work begins; it ends when the object dies. `title` is the progress dialog's.
    virtual std::unique_ptr<IProgress> BeginProgress(const std::string& title) = 0;
    /// A moment of work without progress: a wait cursor until the handle dies.
    virtual std::shared_ptr<void> BeginWait() = 0;

    virtual std::optional<CSceneSettings> AskSceneSettings(const CSceneSettingsRequest& request) = 0;
    virtual std::optional<std::string> AskSceneToOpen(const std::vector<std::string>& scenes) = 0;
    /// Global Settings: the database folder.
    virtual std::optional<std::string> AskDatabaseFolder(const std::string& current) = 0;
    virtual std::optional<std::string> AskName(const CNameRequest& request) = 0;
    virtual std::optional<CNewCelValues> AskNewCel(const CNewCelRequest& request) = 0;
    virtual std::optional<int> AskLevel(const CLevelRequest& request) = 0;
    virtual std::optional<std::pair<int, int>> AskLevelsToSwap(const std::vector<std::string>& levelNames) = 0;
    virtual std::optional<int> AskFrameCount(const CFrameCountRequest& request) = 0;
    virtual std::optional<CCellDataForm> AskCellData(const CCellDataRequest& request) = 0;
    virtual std::optional<CBlurForm> AskBlur(const CBlurRequest& request) = 0;
    virtual std::optional<double> AskTransparency(const CTransparencyRequest& request) = 0;
    virtual std::optional<CCameraForm> AskCameraData(const CCameraDataRequest& request) = 0;
    /// 0 all levels, 1 movement-selected levels, 2 none.
    virtual std::optional<int> AskMotionPathSetup(int current) = 0;
    virtual CInbetweenAnswer AskInbetween(const CInbetweenRequest& request) = 0;
    virtual void RunLineCheck(const CLineCheckRequest& request) = 0;
    virtual std::optional<CColorValues> AskColor(const CColorRequest& request) = 0;
    /// Import Settings: the grey threshold, 0 to 255.
    virtual std::optional<int> AskImportThreshold(int current) = 0;
    virtual CFlipbookAnswer AskFlipbook(const CFlipbookRequest& request) = 0;
    virtual std::optional<CRenderSetup> AskRenderSetup(const CRenderSetupRequest& request) = 0;
    /// The final output is complete: shows where it is and opens it if the user likes.
    virtual void OfferRendered(const CRenderedRequest& request) = 0;
    /// The name of the compressor that was chosen.
    virtual std::optional<std::string> AskCompressor(const CCompressorRequest& request) = 0;
    /// Empty when cancelled.
    virtual std::vector<Path> AskFilesToOpen(const CFileRequest& request) = 0;
    virtual std::optional<Path> AskFileToSave(const CFileRequest& request) = 0;
    virtual std::optional<CRotationValues> AskRotation() = 0;
    virtual std::optional<FlipDirection> AskFlip() = 0;
    virtual std::optional<CColorKeyValues> AskColorKey(const CColorKeyRequest& request) = 0;
    /// True for "Drop"; the choices are then in the request's CDropType.
    [[nodiscard]] virtual bool AskDropType(const CDropTypeRequest& request) = 0;
    virtual std::optional<CGridSettings> AskGridSettings(const CGridSettingsRequest& request) = 0;
    /// Light, dark, or as the system has it; shown as it is chosen.
    virtual std::optional<Appearance> AskAppearance(const CAppearanceRequest& request) = 0;
    /// Returns when the dialog is closed.
    virtual void RunSceneManager(CSceneManager& manager) = 0;

    /// A text for the status bar.
    virtual void ShowStatus(const std::string& text) = 0;
    /// Shows a status text and waits, with the program alive, until `isPlaying` no longer holds or a key is
    /// pressed.
    virtual void WaitWhilePlaying(const std::string& status, const std::function<bool()>& isPlaying) = 0;
    /// The record dialog; true when the recording is to be saved.
    [[nodiscard]] virtual bool RunRecorder(CSoundRecorder& recorder) = 0;
    /// The movie player; returns when it is closed.
    virtual void PlayMovie(CMovie& movie) = 0;
};

} // namespace velmor
