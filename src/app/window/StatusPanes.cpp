#include "app/window/StatusPanes.h"

#include "scene/SceneModel.h"
#include "views/Text.h"

#include <QLabel>
#include <QMenu>
#include <QMouseEvent>
#include <QPointer>
#include <QStatusBar>

namespace velmor {

/// A text that opens a menu.
class CMenuLabel final : public QLabel {
public:
    void SetMenu(QMenu& menu) { m_menu = &menu; }

protected:
    void mousePressEvent(QMouseEvent*) override {
        if (m_menu != nullptr)
            m_menu->popup(mapToGlobal(QPoint(0, -m_menu->sizeHint().height())));
    }

private:
    QPointer<QMenu> m_menu;
};

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

CStatusTexts StatusTextsOf(const CSceneModel& model, const CStatusTexts& current, const std::string& exposing,
                           std::optional<int> played) {
    if (!model.sceneOpen)
        return {};
    const char* mode = ModeText(model.inputMode);
    return {mode != nullptr ? mode : current.mode,
            "Current Frm : " + std::to_string(played.value_or(model.cursorFrame) + 1),
            "Total Frm : " + std::to_string(model.Scene().xsheet.FrameCount()), exposing};
}

CStatusPanes::CStatusPanes(QStatusBar& bar) {
    const std::array<const char*, 4> names = {"camera mode", "current frame", "total frames", "exposing"};
    const std::array<QString, 4> widest = {"Mode : ROTATE", "Current Frm : 0000", "Total Frm : 0000",
                                           "On threes, pushing"};
    for (std::size_t pane = 0; pane < m_labels.size(); ++pane) {
        QLabel* label = pane + 1 < m_labels.size() ? new QLabel : m_exposing = new CMenuLabel;
        label->setObjectName(names[pane]);
        label->setMinimumWidth(label->fontMetrics().horizontalAdvance(widest[pane]) + 12);
        bar.addPermanentWidget(label);
        m_labels[pane] = label;
    }
    m_exposing->setToolTip("How drawings are exposed that are typed into the xsheet: click to choose");
}

void CStatusPanes::SetExposingMenu(QMenu& menu) {
    m_exposing->SetMenu(menu);
}

void CStatusPanes::Update(const CSceneModel& model, const std::string& exposing, std::optional<int> played) {
    m_texts = StatusTextsOf(model, m_texts, exposing, played);
    const std::array<const std::string*, 4> texts = {&m_texts.mode, &m_texts.frame, &m_texts.total,
                                                     &m_texts.exposing};
    for (std::size_t pane = 0; pane < m_labels.size(); ++pane) {
        const QString text = ToQt(*texts[pane]);
        if (m_labels[pane]->text() != text)
            m_labels[pane]->setText(text);
        m_labels[pane]->setEnabled(model.sceneOpen);
    }
}

} // namespace velmor
