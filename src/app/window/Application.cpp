#include "app/window/Application.h"

#include "app/window/Demonstration.h"
#include "app/window/MainFrame.h"
#include "app/window/SplashWindow.h"
#include "app/window/Theme.h"
#include "platform/files/AtomicFile.h"
#include "platform/files/SystemPaths.h"
#include "scene/SceneHistory.h"
#include "scene/SceneLifecycle.h"
#include "scene/VelmorltDoc.h"
#include "views/prompter/QtPrompter.h"

#include <QApplication>
#include <QSocketNotifier>

namespace velmor {

namespace {

// Looks at every event of the program before it is handled.
class CSettling : public QObject {
public:
    explicit CSettling(CSceneHistory& history) : m_history(history) {
        QCoreApplication::instance()->installEventFilter(this);
    }

    bool eventFilter(QObject*, QEvent*) override {
        m_history.Settle();
        return false;
    }

private:
    CSceneHistory& m_history;
};

} // namespace

CProgramFolders CProgramFolders::OfThisUser() {
    return {ProgramFolder(), UserConfigurationFolder(), UserDataFolder(), CTrash::OfThisUser(),
            UserStateFolder() / "personal-velmor"};
}

CApplication::CApplication(CProgramFolders folders) : m_folders(std::move(folders)) {}

CApplication::~CApplication() = default;

bool CApplication::Start(bool showSplash, const Path& sceneFile) {
    m_prompter = std::make_unique<CQtPrompter>();
    static_cast<void>(
        CreateFolder(m_folders.configuration)); // without it nothing is remembered, which is no reason not to start
    m_guard = CInstanceGuard::Acquire(m_folders.configuration);
    if (!m_guard) {
        const bool heard = CInstanceBell::Ring(m_folders.configuration, Utf8Of(sceneFile));
        if (!heard || sceneFile.empty())
            m_prompter->ShowMessage("Personal Velmor is already running");
        return false;
    }
    const Path settings = m_folders.configuration / "personal-velmor.ini";
    RemoveAbandonedBeside(settings);
    m_profile = std::make_unique<CProfile>(settings);
    ApplyTheme(*m_profile);
    if (showSplash)
        CSplashWindow::Show();
    m_doc = std::make_unique<CVelmorltDoc>(
        *m_prompter, *m_profile,
        CDocumentFolders{m_folders.program, m_folders.data, m_folders.trash, m_folders.journals});
    m_frame = std::make_unique<CMainFrame>(*m_doc, *m_prompter, *m_profile);
    m_prompter->SetParent(*m_frame, m_profile.get());
    m_settling = std::make_unique<CSettling>(m_doc->History());
    if (sceneFile.empty() || !Open(sceneFile))
        m_doc->Scenes().ReopenLastScene();
    m_frame->show();
    // A desktop lets the first window of what it has started in front, and that was the splash window.
    m_frame->activateWindow();
    AnswerBell();
    return true;
}

void CApplication::AnswerBell() {
    m_bell.emplace(m_folders.configuration);
    if (m_bell->Descriptor() < 0)
        return;
    m_bellNotifier = std::make_unique<QSocketNotifier>(m_bell->Descriptor(), QSocketNotifier::Read);
    QObject::connect(m_bellNotifier.get(), &QSocketNotifier::activated, m_frame.get(), [this] {
        for (const std::string& sceneFile : m_bell->TakeRings())
            AnswerRing(sceneFile);
    });
}

void CApplication::AnswerRing(const std::string& sceneFile) {
    m_frame->BringToFront();
    // While a dialog waits for an answer, its command is not done with the open scene.
    if (!sceneFile.empty() && QApplication::activeModalWidget() == nullptr)
        static_cast<void>(Open(PathOf(sceneFile))); // it has said why not
}

bool CApplication::Open(const Path& sceneFile) {
    return sceneFile == demoSign ? OpenDemonstration(*m_doc, *m_prompter)
                                 : m_doc->Scenes().OpenSceneFile(sceneFile);
}

} // namespace velmor
