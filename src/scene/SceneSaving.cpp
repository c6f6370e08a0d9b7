#include "scene/CommandState.h"
#include "scene/EditedImage.h"
#include "scene/SceneEdit.h"
#include "scene/SceneLifecycle.h"
#include "xsheet/XSheetFile.h"

// How the open scene gets to its files.

namespace velmor {

bool CSceneLifecycle::WriteXSheetFile() const {
    const CSceneModel& model = m_context.model;
    const Path file = model.Paths().XSheetFile();
    const CStatus saved = velmor::SaveXSheet(file, model.Scene());
    if (!saved)
        m_context.Show(saved.Message() + ":: Writing file ->" + Utf8Of(file));
    return static_cast<bool>(saved);
}

bool CSceneLifecycle::SaveXSheet() {
    return !m_context.model.sceneOpen || WriteXSheetFile();
}

bool CSceneLifecycle::CloseEditedImage() {
    return CEditedImage(m_context).Close();
}

bool CSceneLifecycle::SaveAll() {
    return SaveWhatCanBe().empty();
}

bool CSceneLifecycle::SaveAllOrAsk(const std::string& deed) {
    return MayLeave(deed, SaveWhatCanBe());
}

std::vector<Path> CSceneLifecycle::SaveWhatCanBe() {
    const std::shared_ptr<void> wait = m_context.prompter.BeginWait();
    CSceneModel& model = m_context.model;
    const std::vector<Path> resisting = WriteAll();
    if (HasEditedImage(model) && !model.celImg.IsModified()) {
        CEditedImage(m_context).ReadAgain();
        m_context.Update(UpdateHint::EditedImage);
    }
    if (resisting.empty())
        CSceneEdit::ForgetUndo(m_context);
    return resisting;
}

std::vector<Path> CSceneLifecycle::WriteAll() {
    const CSceneModel& model = m_context.model;
    std::vector<Path> resisting;
    if (!SaveXSheet())
        resisting.push_back(model.Paths().XSheetFile());
    if (!CEditedImage(m_context).Write())
        resisting.push_back(model.celImg.FilePath());
    return resisting;
}

bool CSceneLifecycle::MayLeave(const std::string& deed, const std::vector<Path>& unsaved) const {
    if (unsaved.empty())
        return true;
    std::string question = "The scene could not be saved.\nDo you want to " + deed + " without saving it ?\n";
    for (const Path& file : unsaved)
        question.append("\n").append(Utf8Of(file));
    return m_context.prompter.AskYesNo(question);
}

} // namespace velmor
