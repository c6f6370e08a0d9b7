#include "app/demo/Animator.h"

#include "scene/SceneModel.h"

namespace velmor::demo {

int CAnimator::LevelNamed(const std::string& name) const {
    for (int level = 0; level < m_doc.GetLevelCount(); ++level)
        if (m_doc.GetLevelName(level) == name)
            return level;
    m_prompter.ShowMessage("There is no level named " + name);
    return 0;
}

void CAnimator::NewScene(const std::string& name, int frames) {
    CSceneSettings settings = WithPreset({}, palPreset);
    settings.name = name;
    settings.length = frames;
    m_prompter.Expect(settings);
    m_doc.OnFileNewscene();
}

void CAnimator::AddLevel(const std::string& name) {
    m_prompter.Expect(name);
    m_doc.OnXsheetAddlevel();
}

void CAnimator::RenameLevel(const std::string& name, const std::string& newName) {
    m_prompter.Expect(LevelNamed(name));
    m_prompter.Expect(newName);
    m_doc.OnXsheetRenamelevel();
}

void CAnimator::NewFolder(const std::string& name, const std::vector<CNamedColor>& colors) {
    m_prompter.Expect(name);
    m_doc.OnAssetsNewfolder();
    for (const CNamedColor& color : colors) {
        m_prompter.Expect(CColorValues{color.name, color.color});
        m_doc.OnAddColor();
    }
}

void CAnimator::NewCel(CSize size, const std::function<void(CCelImg&, const CPalette&)>& paint) {
    if (!Succeeded())
        return;
    const std::string name = m_doc.FindNextCelName();
    m_prompter.Expect(CNewCelValues{name, size});
    m_doc.OnAssetsNewcel();
    m_doc.SetSourceMode(SourceMode::Cels);
    m_doc.EditCel(name);
    if (!Succeeded())
        return;
    paint(m_doc.EditedImage(), m_doc.Model().palette);
    m_doc.OnCelUpdatecamera();
}

void CAnimator::Drop(SourceMode kind, const std::vector<std::string>& names, const std::string& level, int frame,
                     int step) {
    m_doc.SetSourceMode(kind);
    m_doc.SetSourceSelection(names);
    m_doc.DropCels(LevelNamed(level), frame, step, false);
}

void CAnimator::DropSound(const std::string& name, int frame) {
    m_doc.SetSourceMode(SourceMode::Sounds);
    m_doc.SetSourceSelection({name});
    m_doc.DropSound(frame);
}

void CAnimator::EditCel(const std::string& level, int frame, const CCellDataForm& form) {
    m_doc.SetCursorX(LevelNamed(level));
    m_doc.SetCursorY(frame);
    m_prompter.Expect(form);
    m_doc.OnXsheetEditceldata();
}

void CAnimator::SetTransparency(const std::string& level, int frame, double transparency) {
    m_doc.SetCursorY(frame);
    m_prompter.Expect(transparency);
    m_doc.OnXSheetDoTrans(LevelNamed(level));
}

void CAnimator::SetBlur(const std::string& level, int frame, double blur) {
    m_doc.SetCursorY(frame);
    m_prompter.Expect(CBlurForm{.blurX = blur, .blurY = blur, .preserve = true});
    m_doc.OnXSheetDoBlur(LevelNamed(level));
}

void CAnimator::SelectFrames(int level, CInbetweenKeys frames) {
    m_doc.SetSelStartX(level);
    m_doc.SetSelEndX(level);
    m_doc.SetSelStartY(frames.first);
    m_doc.SetSelEndY(frames.last);
}

void CAnimator::Inbetween(const std::string& level, CInbetweenKeys keys, LevelSource source, InbetweenType type) {
    if (keys.last - keys.first < 2)
        return;
    const int number = LevelNamed(level);
    m_doc.SetCursorX(number);
    SelectFrames(number, keys);
    m_prompter.Expect(CInbetweenAnswer{true, {static_cast<int>(source), static_cast<int>(type)}});
    m_doc.OnXsheetInbetweenleveldata();
}

void CAnimator::EditCamera(int frame, const CCameraForm& form) {
    m_doc.SetCursorY(frame);
    m_prompter.Expect(form);
    m_doc.OnXsheetEditcameradata();
}

void CAnimator::InbetweenCamera(CInbetweenKeys keys, CameraSource source, InbetweenType type) {
    SelectFrames(0, keys);
    m_prompter.Expect(CInbetweenAnswer{true, {static_cast<int>(source), static_cast<int>(type)}});
    m_doc.OnXsheetInbetweencameradata();
}

void CAnimator::SaveAll() {
    m_prompter.RequireAllAsked();
    if (Succeeded() && !m_doc.OnFileSaveall())
        m_prompter.ShowMessage("The scene could not be saved.");
}

} // namespace velmor::demo
