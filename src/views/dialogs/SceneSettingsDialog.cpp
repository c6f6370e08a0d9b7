#include "views/dialogs/SceneSettingsDialog.h"

#include "views/Text.h"
#include "views/dialogs/RunDialog.h"
#include "views/widgets/ColorSwatch.h"
#include "views/widgets/FormParts.h"
#include "views/widgets/NumberEdit.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QPushButton>

namespace velmor {

namespace {

CColor ColorOf(ColorRef color) {
    return {BlueOf(color), GreenOf(color), RedOf(color)};
}

// 0, which no scene takes, for what is no number.
int NumberIn(const CNumberEdit& edit) {
    return edit.Whole().value_or(0);
}

QHBoxLayout* Row(std::initializer_list<QWidget*> widgets) {
    auto* row = new QHBoxLayout;
    for (QWidget* widget : widgets)
        row->addWidget(widget);
    row->addStretch(1);
    return row;
}

} // namespace

CSceneSettingsDialog::CSceneSettingsDialog(QWidget* parent, const CSceneSettingsRequest& request)
    : CDialog(parent, request.newScene ? "New Scene" : "Scene Settings"),
      m_request(request),
      m_name(new QLineEdit(ToQt(request.initial.name))),
      m_length(new CNumberEdit("length", NumberKind::Whole)),
      m_presets(new QComboBox),
      m_width(new CNumberEdit("width", NumberKind::Whole)),
      m_height(new CNumberEdit("height", NumberKind::Whole)),
      m_rate(new CNumberEdit("rate", NumberKind::Whole)),
      m_rates(new QComboBox),
      m_background(new CColorSwatch("Background colour", ColorOf(request.initial.geometry.background))) {
    m_name->setObjectName("name");
    m_length->SetValue(request.initial.length);
    m_presets->setObjectName("presets");
    m_width->SetValue(request.initial.geometry.width);
    m_height->SetValue(request.initial.geometry.height);
    m_rate->SetValue(request.initial.geometry.frameRate);
    m_rates->setObjectName("rates");
    AddFields();
    m_presets->setCurrentIndex(request.initial.preset);
    ChoosePreset(m_presets->currentIndex());
    connect(m_presets, &QComboBox::currentIndexChanged, this, &CSceneSettingsDialog::ChoosePreset);
    SetReadOnly(*m_name, !request.newScene);
    (request.newScene ? m_name : m_length)->setFocus();
    layout()->setSizeConstraint(QLayout::SetFixedSize);
}

void CSceneSettingsDialog::AddFields() {
    m_name->setMinimumWidth(fontMetrics().averageCharWidth() * 42);
    for (const CFramePreset& preset : framePresets)
        m_presets->addItem(preset.name);
    m_presets->addItem("Custom");
    QFormLayout& form = AddForm();
    form.addRow("Scene &Name :", m_name);
    form.addRow(LabelFor("&Length :", *m_length), Row({m_length, new QLabel("frames")}));
    form.addRow("&Presets:", m_presets);
    form.addRow(LabelFor("Frame &Size :", *m_width), SizeFields());
    form.addRow(LabelFor("Frame &Rate:", *m_rate), RateFields());
    form.addRow(LabelFor("&BackGround Color", *m_background), BackgroundFields());
    if (m_request.newScene)
        AddHint("A new scene starts at 25 frames per second. Scene Settings changes its rate.");
}

QLayout* CSceneSettingsDialog::SizeFields() {
    m_width->setAccessibleName("Width in pixels");
    m_height->setAccessibleName("Height in pixels");
    return Row({m_width, new QLabel("by"), m_height, new QLabel("pixels")});
}

QLayout* CSceneSettingsDialog::RateFields() {
    for (const int rate : offeredFrameRates)
        m_rates->addItem(QString::number(rate));
    m_rates->addItem("Custom");
    m_rates->setAccessibleName("Usual frame rates");
    connect(m_rates, &QComboBox::activated, this, [this](int index) {
        if (index < static_cast<int>(offeredFrameRates.size()))
            m_rate->SetValue(offeredFrameRates[static_cast<std::size_t>(index)]);
        else
            EnterAgain(*m_rate);
    });
    connect(m_rate, &QLineEdit::textChanged, this, &CSceneSettingsDialog::SelectTypedRate);
    return Row({m_rate, m_rates, new QLabel("frames per second")});
}

QLayout* CSceneSettingsDialog::BackgroundFields() {
    m_background->setObjectName("background");
    m_background->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    return Row({m_background, m_background->NewChooserButton("Set >> ")});
}

void CSceneSettingsDialog::ChoosePreset(int preset) {
    const bool custom = preset == customPreset;
    for (CNumberEdit* edit : {m_width, m_height, m_rate})
        SetReadOnly(*edit, !custom);
    m_rates->setEnabled(custom);
    const CSceneGeometry geometry = WithPreset(Values(), preset).geometry;
    if (!custom) {
        m_width->SetValue(geometry.width);
        m_height->SetValue(geometry.height);
        m_rate->SetValue(geometry.frameRate);
    }
    SelectTypedRate();
}

void CSceneSettingsDialog::SelectTypedRate() {
    const int index = m_rates->findText(QString::number(NumberIn(*m_rate)));
    m_rates->setCurrentIndex(index >= 0 ? index : m_rates->count() - 1);
}

CSceneSettings CSceneSettingsDialog::Values() const {
    CSceneSettings settings = m_request.initial;
    settings.name = FromQt(m_name->text());
    settings.length = NumberIn(*m_length);
    const CColor background = m_background->Color();
    settings.geometry = {NumberIn(*m_width), NumberIn(*m_height), NumberIn(*m_rate),
                         MakeColorRef(background.red, background.green, background.blue)};
    settings.preset = m_presets->currentIndex();
    return settings;
}

bool CSceneSettingsDialog::Accepts() {
    return IsAccepted(m_request.accept, Values());
}

} // namespace velmor
