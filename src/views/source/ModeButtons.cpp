#include "views/source/ModeButtons.h"

#include <QButtonGroup>
#include <QEvent>
#include <QToolButton>

namespace velmor {

CModeButtons::CModeButtons(QWidget* parent, std::function<void(SourceMode mode)> chosen)
    : QWidget(parent), m_group(new QButtonGroup(this)) {
    Add("SND", "sounds", "View Sound Sources in the Scene", SourceMode::Sounds);
    Add("PIC", "pictures", "View Picture Sources in the Scene", SourceMode::Pictures);
    Add("CEL", "cels", "View Cel Sources in the Scene", SourceMode::Cels);
    connect(m_group, &QButtonGroup::idClicked, this, [this, told = std::move(chosen)](int id) {
        MarkPressed();
        told(static_cast<SourceMode>(id));
    });
}

void CModeButtons::Add(const char* text, const char* name, const char* toolTip, SourceMode mode) {
    auto* button = new QToolButton(this);
    button->setObjectName(name);
    button->setText(text);
    button->setToolTip(toolTip);
    button->setAccessibleName(toolTip);
    button->setCheckable(true);
    button->setFocusPolicy(Qt::TabFocus);
    QFont font = button->font(); // three beside each other in the narrowest view
    font.setPointSizeF(font.pointSizeF() * 0.9);
    button->setFont(font);
    m_group->addButton(button, static_cast<int>(mode));
}

void CModeButtons::Show(SourceMode mode, bool enabled) {
    setEnabled(enabled);
    m_group->button(static_cast<int>(mode))->setChecked(true);
    MarkPressed();
}

// A pressed button alone is hard to tell from the others in a dark theme.
void CModeButtons::MarkPressed() {
    for (QAbstractButton* button : m_group->buttons()) {
        QPalette colors;
        if (button->isChecked() && button->isEnabled()) {
            colors.setColor(QPalette::Button, palette().color(QPalette::Highlight));
            colors.setColor(QPalette::ButtonText, palette().color(QPalette::HighlightedText));
        }
        button->setPalette(colors);
    }
}

void CModeButtons::resizeEvent(QResizeEvent*) {
    const QList<QAbstractButton*> buttons = m_group->buttons();
    const int count = static_cast<int>(buttons.size());
    for (int i = 0; i < count; ++i) {
        const int left = width() * i / count;
        buttons[i]->setGeometry(left, 0, width() * (i + 1) / count - left, height());
    }
}

void CModeButtons::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        MarkPressed();
}

} // namespace velmor
