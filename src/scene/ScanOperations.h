#pragma once

#include "acquire/TwainSession.h"

#include <memory>

namespace velmor {

class CGrabOperations;
class CProfile;
class IPrompter;
class IScannerUi;
struct CSceneModel;
enum class SourceMode;

/// The scan commands: a session with a scanner for each, whose pages go to the document. Where there is no scanner
/// they do nothing but say so in the status bar. The scanner that was chosen and the settings of the last scan are
/// remembered. One command runs at a time: while a scanner's own window is open, ours may be enabled.
class CScanOperations {
public:
    /// What is given outlives the object.
    CScanOperations(const CSceneModel& model, CGrabOperations& grabs, IPrompter& prompter, CProfile& profile,
                    IScannerUi& ui);
    CScanOperations(const CScanOperations&) = delete;
    CScanOperations& operator=(const CScanOperations&) = delete;
    ~CScanOperations();

    /// Takes another source manager than that of this machine; it outlives the object.
    void UseManager(ISourceManager& manager) { m_manager = &manager; }

    /// Lets the user choose a scanner. `window` is the window system's handle of the program's window.
    void SelectSource(void* window);
    /// Scans cels for the current folder, as line art, or pictures, in colour, waiting with `step`, until the user
    /// is done.
    void Acquire(SourceMode kind, void* window, const MessageStep& step);

private:
    struct CScanners;

    CScanners& Scanners();
    ISourceManager& Manager();
    void Remember();

    const CSceneModel& m_model;
    CGrabOperations& m_grabs;
    IPrompter& m_prompter;
    CProfile& m_profile;
    IScannerUi& m_ui;
    std::unique_ptr<CScanners> m_scanners; ///< made at the first use
    ISourceManager* m_manager = nullptr;   ///< in place of theirs
    bool m_isRunning = false;
};

} // namespace velmor
