#pragma once

#include "platform/files/Profile.h"
#include "platform/files/Trash.h"
#include "platform/process/InstanceBell.h"
#include "platform/process/InstanceGuard.h"

#include <memory>
#include <optional>

class QObject;
class QSocketNotifier;

namespace velmor {

class CMainFrame;
class CQtPrompter;
class CVelmorltDoc;

/// Where the program lives and keeps what belongs to the user.
struct CProgramFolders {
    Path program;
    Path configuration; ///< of the settings and the instance lock
    Path data;
    CTrash trash = {};
    Path journals = {}; ///< empty for none

    static CProgramFolders OfThisUser();
};

/// The application object: owns the instance guard, the settings, the one document and the main frame, in the order
/// in which they start.
class CApplication {
public:
    explicit CApplication(CProgramFolders folders);
    ~CApplication();

    /// False when start-up fails, because the program is running already; nothing has been made then, and the one
    /// that runs has been asked to come to the front, and to open the scene. `sceneFile` is the xsheet of a scene
    /// to be opened instead of the last one, or demoSign for the demonstration scene; empty for none.
    [[nodiscard]] bool Start(bool showSplash, const Path& sceneFile = {});
    /// In the place of a scene's file.
    static constexpr const char* demoSign = "demo:";
    CMainFrame& Frame() { return *m_frame; }
    CVelmorltDoc& Document() { return *m_doc; }

private:
    void AnswerBell();
    void AnswerRing(const std::string& sceneFile);
    [[nodiscard]] bool Open(const Path& sceneFile);

    CProgramFolders m_folders;
    std::optional<CInstanceGuard> m_guard;
    std::optional<CInstanceBell> m_bell;
    std::unique_ptr<CProfile> m_profile;
    std::unique_ptr<CQtPrompter> m_prompter;
    std::unique_ptr<CVelmorltDoc> m_doc;
    std::unique_ptr<CMainFrame> m_frame;
    std::unique_ptr<QSocketNotifier> m_bellNotifier;
    std::unique_ptr<QObject> m_settling; ///< keeps finished steps safe before the next event
};

} // namespace velmor
