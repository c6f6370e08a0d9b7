#include "scene/DialogueOperations.h"
#include "scene/SceneEdit.h"
#include "scene/ScenePaths.h"
#include "scene/Settings.h"
#include "scene/SheetExchange.h"
#include "xsheet/MouthChart.h"
#include "xsheet/exchange/SheetExport.h"

#include <algorithm>

namespace velmor {

namespace {

/// Sounds that have a mouth in common, and what the mouth does.
constexpr const char* usualSounds[] = {"a i ah", "e eh",       "o oh oo", "u w q",
                                       "f v",    "l d t n th", "m b p",   "s z c k g"};

std::string RunText(int first, int last, const std::string& drawing) {
    const std::string frames = first == last
                                   ? "Frame " + std::to_string(first + 1)
                                   : "Frames " + std::to_string(first + 1) + "-" + std::to_string(last + 1);
    return frames + ": " + drawing;
}

} // namespace

// At the frames, of a chart that has been read before.
std::vector<std::string> CDialogueOperations::Mouths(const CMouthChoices& choices, const CFrames& frames) const {
    CMouthChart chart;
    static_cast<void>(CMouthChart::Parse(choices.chart, chart));
    return MouthsOf(m_context.model.Scene().dialogue, chart, frames.first, frames.last, std::max(1, choices.hold));
}

CStatus CDialogueOperations::PlanMouths(const CMouthChoices& choices, CSheetImport& planned) const {
    const CSceneModel& model = m_context.model;
    const CScene& scene = model.Scene();
    CMouthChart chart;
    if (CStatus read = CMouthChart::Parse(choices.chart, chart); !read)
        return read;
    if (!model.sceneOpen || !scene.xsheet.HasLevel(choices.level) || choices.folder.empty())
        return CStatus::Failure("Mouths need a level to go into, and a folder with drawings");
    if (scene.dialogue.IsEmpty())
        return CStatus::Failure("There is no dialogue yet");
    // The whole sheet as it is, of which the mouths are the only thing that another program would have changed.
    CExchangeSheet sheet = ExportSheet(model.sceneName, scene.xsheet, {}, {});
    const CFrames frames = Chosen();
    const std::vector<std::string> mouths = Mouths(choices, frames);
    std::vector<std::string>& cells = sheet.tracks[static_cast<std::size_t>(choices.level)].cells;
    for (std::size_t i = 0; i < mouths.size(); ++i)
        if (!mouths[i].empty())
            cells[static_cast<std::size_t>(frames.first) + i] = choices.folder + "/" + mouths[i];
    return m_exchange.Plan(sheet, choices.folder, planned);
}

CMouthPreview CDialogueOperations::Preview(const CMouthChoices& choices) const {
    CMouthPreview preview;
    CSheetImport planned;
    preview.status = PlanMouths(choices, planned);
    if (!preview.status)
        return preview;
    preview.changes = !planned.changes.empty();
    preview.losses = planned.losses;
    const CFrames frames = Chosen();
    const std::vector<std::string> mouths = Mouths(choices, frames);
    const auto cell = [&](int frame) -> const CXSheetCell& { return planned.xsheet.Cell(choices.level, frame); };
    const auto isFilled = [&](int frame) {
        return !mouths[static_cast<std::size_t>(frame - frames.first)].empty() && cell(frame).IsUsed();
    };
    for (int frame = frames.first; frame <= frames.last; ++frame) {
        const int first = frame;
        if (!isFilled(first))
            continue;
        while (frame < frames.last && isFilled(frame + 1) && cell(frame + 1).ShowsSameAs(cell(first)))
            ++frame;
        preview.lines.push_back(RunText(first, frame, cell(first).CelName()));
    }
    return preview;
}

void CDialogueOperations::AskAndFillMouths() {
    const CSceneModel& model = m_context.model;
    if (!model.sceneOpen)
        return;
    const CXSheet& xsheet = model.Scene().xsheet;
    CMouthRequest request;
    for (int level = 0; level < xsheet.LevelCount(); ++level)
        request.levelNames.push_back(xsheet.LevelName(level));
    request.folders = ListCelFolders(model.Paths());
    const std::string folder = FolderOfLevel(xsheet, model.cursorLevel).value_or(model.folderName);
    request.initial = {model.cursorLevel, folder, ChartOf(folder), Get(m_context.profile, setting::mouthHold)};
    request.initial.hold = std::clamp(request.initial.hold, 1, 4);
    request.chartOf = [this](const std::string& of) { return ChartOf(of); };
    request.preview = [this](const CMouthChoices& choices) { return Preview(choices); };
    if (const std::optional<CMouthChoices> choices = m_context.prompter.Ask(request))
        FillMouths(*choices);
}

bool CDialogueOperations::FillMouths(const CMouthChoices& choices) {
    CSheetImport planned;
    if (!m_context.Report(PlanMouths(choices, planned)))
        return false;
    // Not being able to keep it is no fault of the filling.
    static_cast<void>(m_context.profile.WriteString(setting::mouthSection, choices.folder, choices.chart));
    Set(m_context.profile, setting::mouthHold, choices.hold);
    if (planned.changes.empty())
        return false;
    CSceneEdit edit(m_context, "Mouths from Dialogue", structureAndPictureHint);
    edit.Scene().xsheet = std::move(planned.xsheet);
    return true;
}

std::string CDialogueOperations::ChartOf(const std::string& folder) const {
    std::string known = m_context.profile.GetString(setting::mouthSection, folder, "");
    if (!known.empty())
        return known;
    std::string chart;
    std::size_t next = 0;
    if (!folder.empty())
        for (const std::string& drawing : ListCelTitles(m_context.model.Paths(), folder))
            if (next < std::size(usualSounds))
                chart += std::string(usualSounds[next++]) + " = " + drawing + "\n";
    return chart;
}

} // namespace velmor
