#include "views/capture/VideoSourceDialog.h"

#include "views/Text.h"
#include "views/widgets/FormParts.h"
#include "views/widgets/NumberSlider.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QSlider>
#include <QVBoxLayout>
#include <algorithm>

namespace velmor {

CVideoSourceDialog::CVideoSourceDialog(QWidget* parent, ICaptureDevice& device,
                                       std::vector<CCaptureControl> controls)
    : CDialog(parent, "Video Source"), m_device(device), m_controls(std::move(controls)) {
    setObjectName("VideoSource");
    auto* content = new QWidget;
    auto* form = new QFormLayout(content);
    form->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    for (const CCaptureControl& control : m_controls)
        AddRow(*form, control);
    auto* scroll = new QScrollArea;
    scroll->setWidget(content);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setMinimumWidth(content->sizeHint().width() + 24);
    Body().addWidget(scroll, 1);

    auto* usual = new QPushButton("&Defaults");
    usual->setObjectName("defaults");
    usual->setToolTip("Sets everything to what the device starts with");
    usual->setAutoDefault(false);
    connect(usual, &QPushButton::clicked, this, [this] { SetUsual(); });
    Body().addWidget(usual, 0, Qt::AlignLeft);

    RemoveCancel();
    OkButton().setText("&Close");
    ShowAll();
    resize(width(), std::min(560, content->sizeHint().height() + 130));
}

void CVideoSourceDialog::AddRow(QFormLayout& form, const CCaptureControl& control) {
    QWidget* field = nullptr;
    switch (control.kind) {
    case CaptureControlKind::Number:
        field = NumberField(control);
        break;
    case CaptureControlKind::Switch:
        field = SwitchField(control);
        break;
    case CaptureControlKind::Menu:
        field = MenuField(control);
        break;
    }
    form.addRow(LabelFor(ToQt(control.name) + " :", *field), field);
}

QWidget* CVideoSourceDialog::NumberField(const CCaptureControl& control) {
    auto* field =
        new CNumberSlider(QString("control%1").arg(control.id), control.least, control.most, NumberKind::Whole);
    field->Slider().setSingleStep(control.step);
    field->Edit().SetStep(control.step);
    // Typed numbers count once they are in the device's range, whose multiples it rounds to by itself.
    connect(&field->Edit(), &QLineEdit::textChanged, this, [this, field, control] {
        const std::optional<int> value = field->Edit().Whole();
        if (value && *value >= control.least && *value <= control.most)
            Set(control.id, *value);
    });
    m_rows.push_back({control.id, [field](const CCaptureControl& present) {
                          field->setEnabled(present.isActive);
                          // What is being typed stays.
                          if (!field->Edit().hasFocus())
                              field->Edit().SetValue(present.value);
                      }});
    field->Edit().SetValue(control.value);
    return field;
}

QWidget* CVideoSourceDialog::SwitchField(const CCaptureControl& control) {
    auto* field = new QCheckBox;
    field->setObjectName(QString("control%1").arg(control.id));
    connect(field, &QCheckBox::toggled, this, [this, id = control.id](bool on) { Set(id, on ? 1 : 0); });
    m_rows.push_back({control.id, [field](const CCaptureControl& present) {
                          field->setEnabled(present.isActive);
                          field->setChecked(present.value != 0);
                      }});
    return field;
}

QWidget* CVideoSourceDialog::MenuField(const CCaptureControl& control) {
    auto* field = new QComboBox;
    field->setObjectName(QString("control%1").arg(control.id));
    for (const auto& [value, name] : control.choices)
        field->addItem(ToQt(name), value);
    connect(field, &QComboBox::currentIndexChanged, this,
            [this, field, id = control.id] { Set(id, field->currentData().toInt()); });
    m_rows.push_back({control.id, [field](const CCaptureControl& present) {
                          field->setEnabled(present.isActive);
                          field->setCurrentIndex(field->findData(present.value));
                      }});
    return field;
}

void CVideoSourceDialog::Set(std::uint32_t id, int value) {
    if (m_isShowing)
        return;
    static_cast<void>(m_device.SetControl(id, value)); // what it has become is shown
    m_controls = m_device.Controls();
    ShowAll();
}

void CVideoSourceDialog::SetUsual() {
    // Those that another one holds switched off come free when that one has been set.
    for (int pass = 0; pass < 2; ++pass)
        for (const CCaptureControl& control : m_device.Controls())
            if (control.isActive)
                static_cast<void>(m_device.SetControl(control.id, control.usual)); // what it has become is shown
    m_controls = m_device.Controls();
    ShowAll();
}

void CVideoSourceDialog::ShowAll() {
    m_isShowing = true;
    for (const CCaptureControl& control : m_controls) {
        const auto row = std::ranges::find(m_rows, control.id, &CRow::id);
        if (row != m_rows.end())
            row->show(control);
    }
    m_isShowing = false;
}

} // namespace velmor
