#pragma once

#include "app/demo/DemoPrompter.h"
#include "image/CelImg.h"
#include "image/Palette.h"
#include "scene/VelmorltDoc.h"
#include "xsheet/Inbetween.h"

namespace velmor::demo {

/// Works on a document by the commands that a user has, and answers their dialogs. Levels go by their names, frames
/// count from 0. When something went wrong the rest does nothing; Succeeded() tells.
class CAnimator {
public:
    CAnimator(CVelmorltDoc& doc, CDemoPrompter& prompter) : m_doc(doc), m_prompter(prompter) {}

    bool Succeeded() const { return !m_prompter.HasFailed(); }
    CVelmorltDoc& Document() { return m_doc; }
    /// Something outside the document went wrong.
    void Fail(const std::string& text) { m_prompter.ShowMessage(text); }

    /// A scene of PAL size and speed.
    void NewScene(const std::string& name, int frames);
    void AddLevel(const std::string& name);
    void RenameLevel(const std::string& name, const std::string& newName);
    /// A cel folder with these colours after the default ones.
    void NewFolder(const std::string& name, const std::vector<CNamedColor>& colors);
    /// A cel in the current folder, under the number that is proposed, painted by `paint`.
    void NewCel(CSize size, const std::function<void(CCelImg&, const CPalette&)>& paint);

    /// Puts assets on a level from `frame` on, each for `step` frames; cels are those of the current folder.
    void Drop(SourceMode kind, const std::vector<std::string>& names, const std::string& level, int frame,
              int step);
    void DropSound(const std::string& name, int frame);

    void EditCel(const std::string& level, int frame, const CCellDataForm& form);
    void SetTransparency(const std::string& level, int frame, double transparency);
    void SetBlur(const std::string& level, int frame, double blur);
    /// Nothing where there is no frame between.
    void Inbetween(const std::string& level, CInbetweenKeys keys, LevelSource source, InbetweenType type);
    void EditCamera(int frame, const CCameraForm& form);
    void InbetweenCamera(CInbetweenKeys keys, CameraSource source, InbetweenType type);
    void SaveAll();

private:
    int LevelNamed(const std::string& name) const;
    void SelectFrames(int level, CInbetweenKeys frames);

    CVelmorltDoc& m_doc;
    CDemoPrompter& m_prompter;
};

} // namespace velmor::demo
