#include "scene/DialogueOperations.h"

#include "scene/SceneEdit.h"
#include "xsheet/DialogueText.h"

#include <algorithm>
#include <set>

namespace velmor {

namespace {

constexpr std::uint64_t mostTextBytes = 1 << 20;

std::vector<std::string> SpeakersOf(const CDialogue& dialogue) {
    std::set<std::string> speakers;
    for (const CSpokenLine& line : dialogue.Lines())
        speakers.insert(line.speaker);
    return {speakers.begin(), speakers.end()};
}

} // namespace

CDialogueOperations::CFrames CDialogueOperations::Chosen() const {
    const CSceneModel& model = m_context.model;
    const int last = model.Scene().xsheet.FrameCount() - 1;
    if (model.selection.lastFrame > model.selection.firstFrame)
        return {model.selection.firstFrame, std::min(model.selection.lastFrame, last)};
    return {0, last};
}

bool CDialogueOperations::AcceptLine(const CSpokenLine& line) const {
    const CXSheet& xsheet = m_context.model.Scene().xsheet;
    return m_context.Require(xsheet.HasFrame(line.firstFrame) && xsheet.HasFrame(line.lastFrame) &&
                                 line.firstFrame <= line.lastFrame,
                             "The frames of a line have to be in the xsheet, the first one before the last");
}

void CDialogueOperations::AskLine() {
    const CSceneModel& model = m_context.model;
    if (!model.sceneOpen || model.Scene().xsheet.FrameCount() == 0)
        return;
    const CXSheetSelection& selected = model.selection;
    const CSpokenLine* there = model.Scene().dialogue.At(model.cursorFrame);
    CDialogueRequest request{{selected.firstFrame, selected.lastFrame, "", ""},
                             SpeakersOf(model.Scene().dialogue),
                             [this](const CSpokenLine& line) { return AcceptLine(line); }};
    std::optional<int> instead;
    if (there != nullptr && selected.firstFrame == selected.lastFrame) {
        request.initial = *there;
        instead = there->firstFrame;
    }
    if (const std::optional<CSpokenLine> line = m_context.prompter.Ask(request))
        PutLine(*line, instead);
}

bool CDialogueOperations::PutLine(const CSpokenLine& line, std::optional<int> instead) {
    const CScene& scene = m_context.model.Scene();
    CDialogue changed = scene.dialogue;
    if (const CSpokenLine* old = instead ? changed.At(*instead) : nullptr) {
        const CSpokenLine gone = *old;
        changed.Clear(gone.firstFrame, gone.lastFrame);
    }
    CSpokenLine kept = line;
    kept.text = SpokenText(line.text);
    kept.speaker = SpokenText(line.speaker);
    if (kept.text.empty())
        changed.Clear(kept.firstFrame, kept.lastFrame);
    else if (!scene.xsheet.HasFrame(kept.lastFrame) || !changed.Put(std::move(kept)))
        return false;
    if (changed == scene.dialogue)
        return false;
    CSceneEdit edit(m_context, "Dialogue", UpdateHint::Cells);
    edit.Scene().dialogue = std::move(changed);
    return true;
}

void CDialogueOperations::AskAndImport() {
    if (!m_context.model.sceneOpen)
        return;
    const std::vector<Path> files = m_context.prompter.Ask(
        COpenFilesRequest{{"Import Dialogue", "Texts (*.txt)|*.txt|All files (*)|*||", ".txt", "", false, 0}});
    if (!files.empty())
        static_cast<void>(Import(files.front())); // it has said why not
}

bool CDialogueOperations::Import(const Path& file) {
    const std::optional<CFileBytes> bytes = ReadWholeFile(file, mostTextBytes);
    if (!bytes) {
        m_context.Show("Could not read " + Utf8Of(file));
        return false;
    }
    const CScene& scene = m_context.model.Scene();
    CDialogue changed = scene.dialogue;
    const auto span = bytes->Span();
    const CFrames frames = Chosen();
    if (!m_context.Report(ReadDialogueText({reinterpret_cast<const char*>(span.data()), span.size()}, frames.first,
                                           frames.last, changed)))
        return false;
    const bool isWithin = std::ranges::all_of(changed.Lines(), [&scene](const CSpokenLine& line) {
        const CSpokenLine* known = scene.dialogue.At(line.firstFrame); // from when the sheet was longer
        return scene.xsheet.HasFrame(line.lastFrame) || (known != nullptr && *known == line);
    });
    if (!m_context.Require(isWithin, "The dialogue has frames that the xsheet has not"))
        return false;
    if (changed == scene.dialogue)
        return true;
    CSceneEdit edit(m_context, "Import Dialogue", UpdateHint::Cells);
    edit.Scene().dialogue = std::move(changed);
    return true;
}

} // namespace velmor
