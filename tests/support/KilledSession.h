#pragma once

#include "RandomAnimator.h"
#include "platform/files/Profile.h"
#include "platform/process/Interrupt.h"
#include "scene/DialogRequests.h"
#include "xsheet/XSheetFile.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

namespace velmor::testing {

inline std::string DigestOf(const CSceneModel& model) {
    const CSceneState state = CSceneState::Of(model);
    const CSheetBytes encoded = EncodeSheet(state.scene);
    std::vector<std::uint8_t> sheet = encoded.xsheet;
    sheet.insert(sheet.end(), encoded.notes.begin(), encoded.notes.end());
    const std::hash<std::string_view> hash;
    std::string files;
    for (const auto& [name, bytes] : state.files)
        files.append(name).append(bytes);
    return std::to_string(hash({reinterpret_cast<const char*>(sheet.data()), sheet.size()})) + "." +
           std::to_string(hash(files));
}

inline void Say(const std::string& line) {
    const std::string text = line + "\n";
    static_cast<void>(!::write(STDOUT_FILENO, text.data(), text.size()));
}

inline int Fail(const std::string& text) {
    Say("FAILED " + text);
    return 1;
}

inline bool IsThatOrOneStepFurther(CVelmorltDoc& doc, const std::string& digest) {
    if (DigestOf(doc.Model()) == digest)
        return true;
    doc.History().Undo();
    const bool isOne = DigestOf(doc.Model()) == digest;
    doc.History().Redo();
    return isOne;
}

/// What helps to find out why another state came back.
inline std::string WhereItIs(CVelmorltDoc& doc, CScriptedPrompter& prompter) {
    std::string text;
    for (int step = 0; step < 4; ++step) {
        text += doc.History().UndoText() + " (" + DigestOf(doc.Model()) + "), ";
        doc.History().Undo();
    }
    for (int step = 0; step < 8; ++step) {
        text += doc.History().RedoText();
        doc.History().Redo();
        text += " (" + DigestOf(doc.Model()) + "), ";
    }
    for (const std::string& message : prompter.TakeMessages())
        text += " said: " + message;
    return text;
}

/// Puts something around the open document, which lives as long as the session.
using BeginSession = std::function<std::shared_ptr<void>(CVelmorltDoc&, IPrompter&, CProfile&)>;

/// A session that is killed: FOLDER SEED [DIGEST]. Opens the scene of the folder, recovering what the last one
/// left, and does this and that to it. After each command, when it is said to be safe, a line with the digest of
/// everything that is open goes out. DIGEST is the last line of the session before: what comes back has to be that
/// state, or the one that a single step makes of it; any, when it is "any".
///
/// `settle` is what happens between two commands; it begins when `begin` has been called for the open document.
inline int RunKilledSession(int argc, char** argv, const BeginSession& begin,
                            const std::function<void(CVelmorltDoc&)>& settle) {
    if (argc < 3)
        return Fail("no folder");
    SurviveFileSizeLimit();
    const Path folder = argv[1];
    CScriptedPrompter prompter;
    CProfile profile(folder / "settings.ini");
    prompter.Answer(RecoveryAnswer::Recover);
    CVelmorltDoc doc(prompter, profile, {folder, folder / "data", {}, folder / "journals"});
    doc.Scenes().ReopenLastScene();
    prompter.ForgetAnswers();
    const bool mayBeAny = argc > 3 && std::string(argv[3]) == "any";
    CRandomAnimator animator(doc, prompter, static_cast<unsigned>(std::stoul(argv[2])));
    if (argc == 3) {
        CSceneSettings settings;
        settings.name = "Killed";
        settings.length = 25;
        settings.preset = customPreset;
        prompter.Answer(settings);
        doc.Scenes().NewScene();
        animator.SetUp();
    } else {
        std::vector<std::string> messages = prompter.TakeMessages();
        // A sheet that a full disk has kept from its journal may name a sound that was renamed since.
        std::erase_if(messages, [](const std::string& message) {
            return message.find("Could not find sound") != std::string::npos;
        });
        if (!doc.Model().sceneOpen)
            return Fail("no scene");
        if (!messages.empty() && !mayBeAny)
            return Fail(messages.front());
        if (!mayBeAny && !IsThatOrOneStepFurther(doc, argv[3]))
            return Fail("another state than " + std::string(argv[3]) + " came back, after " +
                        WhereItIs(doc, prompter));
    }
    const std::shared_ptr<void> around = begin(doc, prompter, profile);
    settle(doc);
    Say(DigestOf(doc.Model()));
    for (int command = 0; command < 500; ++command) {
        animator.Act(false);
        settle(doc);
        Say(DigestOf(doc.Model()));
    }
    return 0;
}

} // namespace velmor::testing
