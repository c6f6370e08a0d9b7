#include "scene/SceneSaving.h"

#include "scene/CommandState.h"
#include "scene/EditedImage.h"
#include "scene/SceneEdit.h"
#include "xsheet/XSheetFile.h"

namespace velmor {

bool CSceneSaving::SaveXSheet() {
    const CSceneModel& model = m_context.model;
    if (!model.sceneOpen)
        return true;
    const Path file = model.Paths().XSheetFile();
    if (CHistory& history = m_context.model.history; history.HasJournal())
        history.NoteSheetSaving([&model] { return EncodeSheet(model.Scene()); });
    const CStatus saved = velmor::SaveXSheet(file, model.Scene());
    if (!saved)
        m_context.Show(saved.Message() + ":: Writing file ->" + Utf8Of(file));
    else if (CHistory& history = m_context.model.history; history.HasJournal())
        history.NoteSheetSaved(model.Paths().SceneFolder());
    return static_cast<bool>(saved);
}

bool CSceneSaving::SaveAll() {
    return SaveWhatCanBe().empty();
}

bool CSceneSaving::SaveAllOrAsk(const std::string& deed) {
    return MayLeave(deed, SaveWhatCanBe());
}

bool CSceneSaving::WriteAllOrAsk() {
    return MayLeave("go on", WriteAll());
}

std::vector<Path> CSceneSaving::SaveWhatCanBe() {
    const std::shared_ptr<void> wait = m_context.prompter.BeginWait();
    CSceneModel& model = m_context.model;
    std::vector<Path> resisting = WriteAll();
    if (HasEditedImage(model) && !model.celImg.IsModified()) {
        CEditedImage(m_context).ReadAgain();
        m_context.Update(UpdateHint::EditedImage);
    }
    return resisting;
}

std::vector<Path> CSceneSaving::WriteAll() {
    const CSceneModel& model = m_context.model;
    std::vector<Path> resisting;
    if (!SaveXSheet())
        resisting.push_back(model.Paths().XSheetFile());
    if (!CEditedImage(m_context).Write())
        resisting.push_back(model.celImg.FilePath());
    if (resisting.empty())
        m_context.model.history.NoteAllSaved(model.Session());
    return resisting;
}

bool CSceneSaving::MayLeave(const std::string& deed, const std::vector<Path>& unsaved) const {
    if (unsaved.empty())
        return true;
    std::string question = "The scene could not be saved.\nDo you want to " + deed + " without saving it ?\n";
    for (const Path& file : unsaved)
        question.append("\n").append(Utf8Of(file));
    return m_context.prompter.AskYesNo(question);
}

} // namespace velmor
