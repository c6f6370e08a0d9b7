#include "views/dialogs/ReplaceColorDialog.h"

#include "views/ColorSign.h"
#include "views/dialogs/RunDialog.h"
#include "views/widgets/ColorSwatch.h"
#include "views/widgets/FormParts.h"
#include "views/widgets/NumberSlider.h"
#include "views/widgets/RadioGroup.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLocale>
#include <QPainter>

namespace velmor {

namespace {

constexpr int mostTolerance = 255;

QIcon IconOf(const CColor& color) {
    QPixmap sign(32, 20);
    QPainter painter(&sign);
    PaintColor(painter, sign.rect(), QColor(color.red, color.green, color.blue, color.alpha));
    return {sign};
}

} // namespace

CReplaceColorDialog::CReplaceColorDialog(QWidget* parent, const CReplaceColorRequest& request)
    : CDialog(parent, "Replace Color"),
      m_request(request),
      m_from(new CColorSwatch("Replaced Color", request.initial.recoloring.from)),
      m_to(new CColorSwatch("New Color", request.initial.recoloring.to)),
      m_tolerance(new CNumberSlider("tolerance", 0, mostTolerance, NumberKind::Whole)),
      m_what(new CRadioGroup({"&Lines", "&Paint", "&Both"}, static_cast<int>(request.initial.recoloring.what),
                             Qt::Horizontal)),
      m_keepsAlpha(new QCheckBox("Keep &transparency")),
      m_where(new QComboBox),
      m_count(new QLabel) {
    m_from->setObjectName("from");
    m_to->setObjectName("to");
    m_what->setObjectName("what");
    m_where->setObjectName("where");
    m_keepsAlpha->setObjectName("keepsAlpha");
    m_keepsAlpha->setToolTip("Pixels keep their alpha, and are found whatever it is");
    m_keepsAlpha->setChecked(request.initial.recoloring.keepsAlpha);
    m_count->setObjectName("count");
    AddColors();
    AddChoices();
    AddPlaces();
    ShowCount();
    m_tolerance->Edit().BeFirst();
}

QComboBox* CReplaceColorDialog::NewList(const QString& name, CColorSwatch& swatch) {
    auto* list = new QComboBox;
    list->setObjectName(name);
    list->setAccessibleName("Colors of the image");
    list->setIconSize({32, 20});
    list->setPlaceholderText("Colors of the image");
    list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    list->setMinimumContentsLength(18);
    list->setEnabled(!m_request.colors.empty());
    for (const CNamedColor& color : m_request.colors)
        list->addItem(IconOf(color.color), QString::fromStdString(color.name));
    list->setCurrentIndex(-1);
    connect(list, &QComboBox::activated, this, [this, &swatch](int index) {
        swatch.SetColor(m_request.colors[static_cast<std::size_t>(index)].color);
        ShowCount();
    });
    return list;
}

void CReplaceColorDialog::AddColors() {
    auto* grid = new QGridLayout;
    AddLabeled(*grid, 0, 0, "&Color", *m_from);
    grid->addWidget(NewList("fromList", *m_from), 0, 2);
    AddLabeled(*grid, 1, 0, "Becom&es", *m_to);
    grid->addWidget(NewList("toList", *m_to), 1, 2);
    grid->setColumnStretch(2, 1);
    Body().addLayout(grid);
    for (CColorSwatch* swatch : {m_from, m_to})
        swatch->changed = [this] { ShowCount(); };
}

void CReplaceColorDialog::AddChoices() {
    auto* grid = new QGridLayout;
    m_tolerance->Edit().SetValue(m_request.initial.recoloring.tolerance);
    AddLabeled(*grid, 0, 0, "T&olerance", *m_tolerance);
    Body().addLayout(grid);
    Body().addWidget(GroupOf("Replace in", m_what));
    Body().addWidget(m_keepsAlpha);
    connect(&m_tolerance->Edit(), &QLineEdit::textChanged, this, [this] { ShowCount(); });
    connect(m_keepsAlpha, &QCheckBox::toggled, this, [this] { ShowCount(); });
    m_what->changed = [this](int) { ShowCount(); };
}

void CReplaceColorDialog::AddPlaces() {
    const auto add = [this](bool isThere, const QString& text, RecolorWhere where) {
        if (!isThere)
            return;
        m_where->addItem(text, static_cast<int>(where));
        if (where == m_request.initial.where)
            m_where->setCurrentIndex(m_where->count() - 1);
    };
    add(m_request.hasEdited, "The image in the editor", RecolorWhere::Edited);
    add(m_request.chosen > 0, QString("The images chosen in the list (%1)").arg(m_request.chosen),
        RecolorWhere::Chosen);
    add(m_request.all > 0, QString("All images of the folder (%1)").arg(m_request.all), RecolorWhere::All);
    auto* grid = new QGridLayout;
    AddLabeled(*grid, 0, 0, "&Where", *m_where);
    grid->setColumnStretch(1, 1);
    Body().addLayout(grid);
    Body().addWidget(m_count);
    m_count->setVisible(m_request.hasEdited);
}

CReplaceColorValues CReplaceColorDialog::Values() const {
    return {{m_from->Color(), m_to->Color(), m_tolerance->Edit().Whole().value_or(-1),
             static_cast<SelectWhat>(m_what->Chosen()), m_keepsAlpha->isChecked()},
            static_cast<RecolorWhere>(m_where->currentData().toInt())};
}

void CReplaceColorDialog::ShowCount() {
    const CRecoloring recoloring = Values().recoloring;
    if (!m_request.hasEdited || !m_request.count || recoloring.tolerance < 0)
        return;
    const auto pixels = static_cast<qlonglong>(m_request.count(recoloring));
    m_count->setText(
        QString("%1 pixels of the image in the editor have this color").arg(QLocale().toString(pixels)));
}

bool CReplaceColorDialog::Accepts() {
    if (IsAccepted(m_request.accept, Values()))
        return true;
    static_cast<void>(m_tolerance->Edit().Require(0, mostTolerance)); // leads to the number that was refused
    return false;
}

} // namespace velmor
