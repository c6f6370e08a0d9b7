#pragma once

#include "app/window/CommandActions.h"
#include "app/window/PaneStack.h"
#include "app/window/StatusPanes.h"
#include "platform/files/Files.h"
#include "scene/ViewList.h"

#include <QMainWindow>
#include <memory>
#include <optional>

class QSplitter;
class QToolBar;

namespace velmor {

class CCamFrame;
class CCapturing;
class CCelFrame;
class CPrinting;
class CProfile;
class CScanning;
class CSourceView;
class CVelmorltDoc;
class CXsheetFrame;
class IPrompter;

/// The bars of the panes.
enum class PaneBar : std::size_t { CameraTools, XsheetTools, CelTools, Colors, Brushes, Transport };
inline constexpr std::size_t paneBars = 6;

/// A state of the image under edit that is not on disk.
struct CUnsavedImage {
    Path file;
    int changes = 0;

    bool operator==(const CUnsavedImage&) const = default;
};

/// The one window: menus, the main toolbar, the status bar and the four views in their fixed arrangement.
class CMainFrame final : public QMainWindow, public IDocView {
public:
    /// Document, prompter and profile outlive the frame.
    CMainFrame(CVelmorltDoc& doc, IPrompter& prompter, CProfile& profile);
    ~CMainFrame() override;

    CCamFrame& CameraPane() { return *m_cameraPane; }
    CXsheetFrame& XsheetPane() { return *m_xsheetPane; }
    CCelFrame& CelPane() { return *m_celPane; }
    CSourceView& SourceView() { return *m_sourceView; }
    const CPaneStack& Panes() const { return *m_panes; }
    /// Opens a pane that is collapsed, beside the others.
    void ShowPane(StackedPane pane) { m_panes->Open(pane); }
    CCapturing& Capturing() { return *m_capturing; }
    QAction* Action(CommandId id) const { return m_commands.Action(id); }
    /// Over the windows of other programs, with the dialog that is open, if one is.
    void BringToFront();
    /// Brings enabling, check marks and status panes up to date; done by itself whenever the program is idle.
    void UpdateCommands();

    void PrintXSheet();
    bool PrintsDialogue() const;
    void TogglePrintDialogue();
    void PreviewPrint();
    void PreviewGuides();
    void SetUpPrinter();
    void Exit();
    void SelectScanSource();
    void ScanCels();
    void ScanPicture();
    void ShowCameraAndXSheet();
    void ShowCamera();
    void ShowXSheet();
    void ShowCelEditor();
    void ToggleToolBar();
    void ToggleStatusBar();
    void TogglePaneBar(PaneBar bar);
    void ToggleAssetThumbnails();
    void ToggleSoundWaves();
    void ChooseAppearance();
    bool IsToolBarShown() const;
    bool IsStatusBarShown() const;
    bool IsPaneBarShown(PaneBar bar) const;
    void ShowManual();
    void OpenDemonstration();
    void ShowAbout();

    void OnUpdate(UpdateHint hint) override;

protected:
    void closeEvent(QCloseEvent* event) override;
    bool event(QEvent* event) override;

private:
    void CreateMenus();
    void CreateToolBar();
    void CreateViews();
    /// Shows a pane alone and gives it the keyboard.
    void ShowAlone(StackedPane pane, const PaneHeights& heights);
    void RestoreLayout();
    void SaveLayout();
    void OnFocusMoved(const QWidget* focus);
    void SaveLeftImage();

    CVelmorltDoc& m_doc;
    IPrompter& m_prompter;
    CProfile& m_profile;
    int m_openedImages; ///< the model's, when it was looked at last
    CCommandActions m_commands;
    CStatusPanes m_statusPanes;
    std::unique_ptr<CPrinting> m_printing;
    std::unique_ptr<CScanning> m_scanning;
    std::unique_ptr<CCapturing> m_capturing;

    // Children of the window.
    QToolBar* m_toolBar = nullptr;
    QSplitter* m_outerSplitter = nullptr;
    CPaneStack* m_panes = nullptr;
    CSourceView* m_sourceView = nullptr;
    CCamFrame* m_cameraPane = nullptr;
    CXsheetFrame* m_xsheetPane = nullptr;
    CCelFrame* m_celPane = nullptr;
    std::array<QToolBar*, paneBars> m_paneBars{}; // of the panes

    bool m_isInCelEditor = false;            ///< the keyboard is
    std::optional<CUnsavedImage> m_reported; ///< what could not be written the last time
};

} // namespace velmor
