#include "app/cli/Commands.h"
#include "app/cli/ConsolePrompter.h"
#include "app/cli/SceneReader.h"
#include "platform/files/Profile.h"
#include "platform/files/SystemPaths.h"
#include "scene/DialogRequests.h"
#include "scene/SceneLifecycle.h"
#include "scene/SceneSaving.h"
#include "scene/Settings.h"
#include "scene/VelmorltDoc.h"
#include "scene/history/SceneJournal.h"

#include <array>
#include <ctime>
#include <iostream>
#include <limits>

namespace velmor {

namespace {

std::string LocalTime(std::int64_t milliseconds) {
    const std::time_t seconds = milliseconds / 1000;
    std::tm local{};
    std::array<char, 40> text{};
    if (::localtime_r(&seconds, &local) == nullptr)
        return "?";
    return {text.data(), std::strftime(text.data(), text.size(), "%FT%T", &local)};
}

std::string Count(int changes) {
    return std::to_string(changes) + (changes == 1 ? " change" : " changes");
}

// Files, one a line, in one line.
std::string InOneLine(const std::string& files) {
    std::string line;
    for (const char letter : files.substr(0, files.find_last_not_of('\n') + 1))
        line += letter == '\n' ? ", " : std::string(1, letter);
    return line;
}

std::string Description(const CFoundWork& found) {
    const CUnsavedWork& work = found.work;
    std::string text = Count(work.changes) + " from " + LocalTime(work.firstTime);
    text.append(" to ").append(LocalTime(work.lastTime));
    if (!work.misfit.empty())
        return text + ", does not fit: " + InOneLine(work.misfit);
    return text + (found.canBeRead ? ", fits" : ", cannot be read");
}

/// Has an answer ready for the question what is to become of unsaved work.
class CRecoveryPrompter : public CConsolePrompter {
public:
    CRecoveryPrompter(std::string scene, RecoveryAnswer answer) : m_scene(std::move(scene)), m_answer(answer) {}
    void ShowMessage(const std::string& text) override { CConsolePrompter::ShowMessage(m_scene + ": " + text); }

protected:
    void ShowDialog(CAnyDialog dialog) override {
        auto* const* asked = std::get_if<CDialogOf<CRecoveryRequest>*>(&dialog);
        if (asked == nullptr)
            return;
        const bool fits = (*asked)->request.fits || m_answer == RecoveryAnswer::Discard;
        (*asked)->answer = fits ? m_answer : RecoveryAnswer::Later;
        if (!fits)
            ShowMessage((*asked)->request.reason);
    }

private:
    std::string m_scene;
    RecoveryAnswer m_answer;
};

/// What is done to one scene after the other. Each method shows what is wrong and returns whether all went well.
class CRecovery {
public:
    explicit CRecovery(const CRecoverArguments& arguments)
        : m_arguments(arguments),
          m_journals(arguments.journals.empty() ? UserStateFolder() / "personal-velmor"
                                                : PathOf(arguments.journals)) {}

    bool Run(const std::string& scene) const {
        const CScenePaths paths(WithSeparator(m_arguments.scene.database), scene);
        CRecoveryPrompter prompter(scene, m_arguments.discard ? RecoveryAnswer::Discard : RecoveryAnswer::Recover);
        std::optional<CFoundWork> found;
        if (const CStatus looked = FindUnsavedWork(m_journals, paths, scene, found); !looked) {
            prompter.ShowMessage(looked.Message());
            return false;
        }
        if (found && m_arguments.list)
            std::cout << scene << ": " << Description(*found) << '\n';
        return !found || m_arguments.list || Settle(scene, *found, paths, prompter);
    }

private:
    bool Settle(const std::string& scene, const CFoundWork& found, const CScenePaths& paths,
                CRecoveryPrompter& prompter) const {
        // To open a scene without an xsheet would make one.
        if (!FileExists(paths.XSheetFile()) || (!found.canBeRead && !m_arguments.discard)) {
            prompter.ShowMessage(Description(found));
            return false;
        }
        CProfile profile;
        Set(profile, setting::databaseDir, m_arguments.scene.database);
        Set(profile, setting::historyMegabytes, std::numeric_limits<int>::max()); // nothing old has to go for this
        CVelmorltDoc document(prompter, profile, {.program = {}, .data = {}, .journals = m_journals});
        if (!document.Scenes().OpenScene(scene) || (!m_arguments.discard && !document.Saving().SaveAll()))
            return false;
        std::cout << scene << ": " << Count(found.work.changes)
                  << (m_arguments.discard ? " discarded\n" : " recovered\n");
        return true;
    }

    const CRecoverArguments& m_arguments;
    Path m_journals;
};

} // namespace

bool RunRecover(const CRecoverArguments& arguments) {
    CConsolePrompter prompter;
    const CSceneArguments& scene = arguments.scene;
    if (!RequireDatabase(scene.database, prompter))
        return false;
    if (!scene.scene.empty() &&
        !FolderExists(CScenePaths(WithSeparator(scene.database), scene.scene).SceneFolder())) {
        prompter.ShowMessage("Problem openning the scene");
        return false;
    }
    const CRecovery recovery(arguments);
    bool done = true;
    for (const std::string& each :
         scene.scene.empty() ? ListScenes(scene.database) : std::vector<std::string>{scene.scene})
        done = recovery.Run(each) && done;
    return done;
}

} // namespace velmor
