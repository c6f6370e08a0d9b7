#include "views/dialogs/AddColorDialog.h"

#include "views/Text.h"
#include "views/dialogs/RunDialog.h"
#include "views/widgets/ColorSwatch.h"
#include "views/widgets/FormParts.h"
#include "views/widgets/NumberSlider.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <cstdint>

namespace velmor {

namespace {

constexpr int mostOpacity = 255;
constexpr int swatchHeight = 56;

} // namespace

CAddColorDialog::CAddColorDialog(QWidget* parent, const CColorRequest& request)
    : CDialog(parent, "Add Color"),
      m_accept(request.accept),
      m_swatch(new CColorSwatch("Color", request.initial.color)),
      m_opacity(new CNumberSlider("opacity", 0, mostOpacity, NumberKind::Whole)),
      m_name(new QLineEdit(ToQt(request.initial.name))),
      m_repaints(new QCheckBox(ToQt(request.repaintText), this)) {
    m_swatch->setObjectName("swatch");
    m_swatch->setMinimumHeight(swatchHeight);
    m_name->setObjectName("name");
    auto* top = new QHBoxLayout;
    top->addWidget(m_swatch, 1);
    top->addWidget(m_swatch->NewChooserButton("&Edit >>"));
    auto* grid = new QGridLayout;
    AddLabeled(*grid, 0, 0, "&Opacity :", *m_opacity);
    AddLabeled(*grid, 1, 0, "Color &Name :", *m_name);
    Body().addLayout(top);
    Body().addLayout(grid);
    m_repaints->setObjectName("repaints");
    m_repaints->setChecked(request.initial.repaints);
    m_repaints->setToolTip("The palette and the repainting are a step of undo each");
    m_repaints->setVisible(!request.repaintText.empty());
    if (!request.repaintText.empty())
        Body().addWidget(m_repaints);
    Body().addStretch();
    m_opacity->Edit().SetValue(request.initial.color.alpha);
    connect(&m_opacity->Edit(), &QLineEdit::textChanged, this, [this] { ShowOpacity(); });
    m_name->setFocus(Qt::TabFocusReason);
    m_name->selectAll();
}

void CAddColorDialog::ShowOpacity() {
    const std::optional<int> opacity = m_opacity->Edit().Whole();
    if (!opacity || *opacity < 0 || *opacity > mostOpacity)
        return;
    CColor color = m_swatch->Color();
    color.alpha = static_cast<std::uint8_t>(*opacity);
    m_swatch->SetColor(color);
}

CColorValues CAddColorDialog::Values() const {
    return {FromQt(m_name->text()), m_swatch->Color(), m_repaints->isChecked()};
}

bool CAddColorDialog::Accepts() {
    return m_opacity->Edit().Require(0, mostOpacity) && IsAccepted(m_accept, Values());
}

} // namespace velmor
