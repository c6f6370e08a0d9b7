#include "views/widgets/FormParts.h"

#include "scene/DialogRequests.h"
#include "views/Text.h"
#include "views/widgets/NumberEdit.h"

#include <QCheckBox>
#include <QFrame>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>

namespace velmor {

namespace {

// A label's text without its mnemonic and colon.
QString SpokenName(const QString& label) {
    const QString doubled = "&&";
    QStringList parts = label.split(doubled);
    for (QString& part : parts)
        part.remove('&').remove(':');
    return parts.join('&').trimmed();
}

// A field that is made of several passes its name on to them.
void Name(QWidget& field, const QString& name) {
    field.setAccessibleName(name);
    if (field.focusProxy() == nullptr)
        return;
    for (QWidget* part : field.findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
        if (part->focusPolicy() != Qt::NoFocus)
            part->setAccessibleName(name);
}

} // namespace

QLabel* LabelFor(const QString& text, QWidget& field) {
    auto* label = new QLabel(text);
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    label->setBuddy(&field);
    Name(field, SpokenName(text));
    return label;
}

void AddLabeled(QGridLayout& grid, int row, int column, const QString& text, QWidget& field) {
    grid.addWidget(LabelFor(text, field), row, column);
    grid.addWidget(&field, row, column + 1);
}

void AddShown(QGridLayout& grid, int row, int column, const QString& label, const QString& name,
              const QString& value) {
    auto* title = new QLabel(label);
    title->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    grid.addWidget(title, row, column);
    auto* shown = new QLabel(value);
    shown->setObjectName(name);
    shown->setTextFormat(Qt::PlainText);
    shown->setTextInteractionFlags(Qt::TextSelectableByMouse);
    QFont bold = shown->font();
    bold.setBold(true);
    shown->setFont(bold);
    grid.addWidget(shown, row, column + 1);
}

QGroupBox* GroupOf(const QString& title, QLayout* content) {
    auto* group = new QGroupBox(title);
    group->setLayout(content);
    return group;
}

QGroupBox* GroupOf(const QString& title, QWidget* content) {
    auto* layout = new QVBoxLayout;
    layout->addWidget(content);
    return GroupOf(title, layout);
}

QWidget* IdentityPanel(const CCellIdentity& cel) {
    auto* panel = new QWidget;
    auto* grid = new QGridLayout(panel);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    AddShown(*grid, 0, 0, "Name : ", "name", ToQt(cel.name));
    AddShown(*grid, 0, 2, "Frame :", "frame", QString::number(cel.frame));
    AddShown(*grid, 1, 0, "Folder : ", "folder", ToQt(cel.folder));
    AddShown(*grid, 1, 2, "Level :", "level", ToQt(cel.level));
    auto* line = new QFrame;
    line->setFrameStyle(QFrame::HLine | QFrame::Sunken);
    grid->addWidget(line, 2, 0, 1, 4);
    return panel;
}

void KeepAspect(QCheckBox& preserve, CNumberEdit& x, CNumberEdit& y) {
    const auto follow = [&preserve, &x, &y] {
        y.setDisabled(preserve.isChecked());
        if (preserve.isChecked())
            y.ShowSameAs(x);
    };
    QObject::connect(&preserve, &QCheckBox::toggled, &y, follow);
    QObject::connect(&x, &QLineEdit::textChanged, &y, follow);
    follow();
}

} // namespace velmor
