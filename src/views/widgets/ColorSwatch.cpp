#include "views/widgets/ColorSwatch.h"

#include "views/ColorSign.h"

#include <QColorDialog>
#include <QEvent>
#include <QPainter>
#include <QPushButton>
#include <cstdint>
#include <qdrawutil.h>

namespace velmor {

namespace {

QColor OpaqueOf(const CColor& color) {
    return QColor(color.red, color.green, color.blue);
}

/// In black every hue looks alike. Whoever presses into the chooser's field of hues while it is black gets them at
/// full value, so that the choice is seen.
class CFullValue final : public QObject {
public:
    explicit CFullValue(QColorDialog& dialog) : QObject(&dialog), m_dialog(dialog) {
        for (QWidget* part : dialog.findChildren<QWidget*>())
            if (part->inherits("QColorPicker"))
                part->installEventFilter(this);
    }
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::MouseButtonPress && m_dialog.currentColor().value() == 0)
            m_dialog.setCurrentColor(Qt::white);
        return false;
    }

private:
    QColorDialog& m_dialog;
};

} // namespace

CColorSwatch::CColorSwatch(const QString& name, const CColor& color) : m_name(name), m_color(color) {
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(name);
    setToolTip("Choose the colour");
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::MinimumExpanding, QSizePolicy::Fixed);
    connect(this, &QAbstractButton::clicked, this, [this] { Choose(); });
}

void CColorSwatch::SetColor(const CColor& color) {
    m_color = color;
    update();
}

void CColorSwatch::Choose() {
    QColorDialog dialog(OpaqueOf(m_color), this);
    dialog.setWindowTitle(m_name);
    new CFullValue(dialog); // belongs to the dialog
    if (dialog.exec() != QDialog::Accepted)
        return;
    const QColor chosen = dialog.selectedColor();
    SetColor({static_cast<std::uint8_t>(chosen.blue()), static_cast<std::uint8_t>(chosen.green()),
              static_cast<std::uint8_t>(chosen.red()), m_color.alpha});
    if (changed)
        changed();
}

QPushButton* CColorSwatch::NewChooserButton(const QString& text) {
    auto* button = new QPushButton(text);
    button->setObjectName(objectName() + "Chooser");
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, [this] { Choose(); });
    return button;
}

void CColorSwatch::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRect inside = hasFocus() ? rect().adjusted(3, 3, -3, -3) : rect();
    PaintColor(painter, inside, QColor(m_color.red, m_color.green, m_color.blue, m_color.alpha));
    qDrawPlainRect(&painter, inside, palette().color(isDown() || underMouse() ? QPalette::Text : QPalette::Mid));
    if (hasFocus())
        qDrawPlainRect(&painter, rect(), palette().color(QPalette::Highlight), 2);
}

} // namespace velmor
