#include "app/window/StatusPanes.h"

#include "scene/SceneModel.h"
#include "views/Text.h"

#include <QLabel>
#include <QStatusBar>

namespace velmor {

namespace {

const char* ModeText(InputMode mode) {
    switch (mode) {
    case InputMode::Move:
        return "Mode : MOVE";
    case InputMode::Rotate:
        return "Mode : ROTATE";
    case InputMode::Zoom:
        return "Mode : ZOOM";
    }
    return nullptr;
}

} // namespace

CStatusTexts StatusTextsOf(const CSceneModel& model, const CStatusTexts& current, std::optional<int> played) {
    if (!model.sceneOpen)
        return {};
    const char* mode = ModeText(model.inputMode);
    return {mode != nullptr ? mode : current.mode,
            "Current Frm : " + std::to_string(played.value_or(model.cursorFrame) + 1),
            "Total Frm : " + std::to_string(model.Scene().xsheet.FrameCount())};
}

CStatusPanes::CStatusPanes(QStatusBar& bar) {
    const std::array<const char*, 3> names = {"camera mode", "current frame", "total frames"};
    const std::array<QString, 3> widest = {"Mode : ROTATE", "Current Frm : 0000", "Total Frm : 0000"};
    for (std::size_t pane = 0; pane < m_labels.size(); ++pane) {
        auto* label = new QLabel;
        label->setObjectName(names[pane]);
        label->setMinimumWidth(label->fontMetrics().horizontalAdvance(widest[pane]) + 12);
        bar.addPermanentWidget(label);
        m_labels[pane] = label;
    }
}

void CStatusPanes::Update(const CSceneModel& model, std::optional<int> played) {
    m_texts = StatusTextsOf(model, m_texts, played);
    const std::array<const std::string*, 3> texts = {&m_texts.mode, &m_texts.frame, &m_texts.total};
    for (std::size_t pane = 0; pane < m_labels.size(); ++pane) {
        const QString text = ToQt(*texts[pane]);
        if (m_labels[pane]->text() != text)
            m_labels[pane]->setText(text);
        m_labels[pane]->setEnabled(model.sceneOpen);
    }
}

} // namespace velmor
