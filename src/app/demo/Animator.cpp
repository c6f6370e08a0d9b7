#include "app/demo/Animator.h"

#include "scene/AssetOperations.h"
#include "scene/CameraOperations.h"
#include "scene/CelPainting.h"
#include "scene/CellOperations.h"
#include "scene/PaletteOperations.h"
#include "scene/SceneLifecycle.h"
#include "scene/SceneModel.h"
#include "scene/SceneSaving.h"
#include "scene/SoundOperations.h"
#include "scene/XSheetCursor.h"
#include "scene/XSheetOperations.h"

namespace velmor::demo {

int CAnimator::LevelNamed(const std::string& name) const {
    for (int level = 0; level < m_doc.Model().Scene().xsheet.LevelCount(); ++level)
        if (m_doc.Cursor().GetLevelName(level) == name)
            return level;
    m_prompter.ShowMessage("There is no level named " + name);
    return 0;
}

void CAnimator::NewScene(const std::string& name, int frames) {
    CSceneSettings settings = WithPreset({}, palPreset);
    settings.name = name;
    settings.length = frames;
    m_prompter.Expect(settings);
    m_doc.Scenes().NewScene();
}

void CAnimator::AddLevel(const std::string& name) {
    m_prompter.Expect(name);
    m_doc.XSheet().AddLevel();
}

void CAnimator::RenameLevel(const std::string& name, const std::string& newName) {
    m_prompter.Expect(LevelNamed(name));
    m_prompter.Expect(newName);
    m_doc.XSheet().RenameLevel();
}

void CAnimator::NewFolder(const std::string& name, const std::vector<CNamedColor>& colors) {
    m_prompter.Expect(name);
    m_doc.Assets().NewFolder();
    for (const CNamedColor& color : colors) {
        m_prompter.Expect(CColorValues{color.name, color.color});
        m_doc.Palette().AskAndAddColor();
    }
}

void CAnimator::NewCel(CSize size, const std::function<void(CCelImg&, const CPalette&)>& paint) {
    if (!Succeeded())
        return;
    const std::string name = m_doc.Scenes().FindNextCelName();
    m_prompter.Expect(CNewCelValues{name, size});
    m_doc.Assets().NewCel();
    m_doc.Scenes().SetSourceMode(SourceMode::Cels);
    m_doc.Assets().EditCel(name);
    if (!Succeeded())
        return;
    m_doc.Painting().Change("Drawing", [&](CCelImg& image) {
        paint(image, m_doc.Model().palette);
        return CPaintResult();
    });
    m_doc.Assets().UpdateCamera();
}

void CAnimator::Drop(SourceMode kind, const std::vector<std::string>& names, const std::string& level, int frame,
                     int step) {
    m_doc.Scenes().SetSourceMode(kind);
    m_doc.Scenes().SetSourceSelection(names);
    m_doc.XSheet().DropCels(LevelNamed(level), frame, step, false);
}

void CAnimator::DropSound(const std::string& name, int frame) {
    m_doc.Scenes().SetSourceMode(SourceMode::Sounds);
    m_doc.Scenes().SetSourceSelection({name});
    m_doc.Sounds().DropSound(frame);
}

void CAnimator::EditCel(const std::string& level, int frame, const CCellDataForm& form) {
    m_doc.Cursor().SetCursorX(LevelNamed(level));
    m_doc.Cursor().SetCursorY(frame);
    m_prompter.Expect(form);
    m_doc.Cells().EditCellData();
}

void CAnimator::SetTransparency(const std::string& level, int frame, double transparency) {
    m_doc.Cursor().SetCursorY(frame);
    m_prompter.Expect(transparency);
    m_doc.Cells().OnXSheetDoTrans(LevelNamed(level));
}

void CAnimator::SetBlur(const std::string& level, int frame, double blur) {
    m_doc.Cursor().SetCursorY(frame);
    m_prompter.Expect(CBlurForm{.blurX = blur, .blurY = blur, .preserve = true});
    m_doc.Cells().OnXSheetDoBlur(LevelNamed(level));
}

void CAnimator::SelectFrames(int level, CInbetweenKeys frames) {
    m_doc.Cursor().SetSelStartX(level);
    m_doc.Cursor().SetSelEndX(level);
    m_doc.Cursor().SetSelStartY(frames.first);
    m_doc.Cursor().SetSelEndY(frames.last);
}

void CAnimator::Inbetween(const std::string& level, CInbetweenKeys keys, LevelSource source, InbetweenType type) {
    if (keys.last - keys.first < 2)
        return;
    const int number = LevelNamed(level);
    m_doc.Cursor().SetCursorX(number);
    SelectFrames(number, keys);
    m_prompter.Expect(CInbetweenAnswer{true, {static_cast<int>(source), static_cast<int>(type)}});
    m_doc.Cells().Inbetween();
}

void CAnimator::EditCamera(int frame, const CCameraForm& form) {
    m_doc.Cursor().SetCursorY(frame);
    m_prompter.Expect(form);
    m_doc.Camera().EditCameraData();
}

void CAnimator::InbetweenCamera(CInbetweenKeys keys, CameraSource source, InbetweenType type) {
    SelectFrames(0, keys);
    m_prompter.Expect(CInbetweenAnswer{true, {static_cast<int>(source), static_cast<int>(type)}});
    m_doc.Camera().Inbetween();
}

void CAnimator::SaveAll() {
    m_prompter.RequireAllAsked();
    if (Succeeded() && !m_doc.Saving().SaveAll())
        m_prompter.ShowMessage("The scene could not be saved.");
}

} // namespace velmor::demo
