#include "views/dialogs/DropTypeDialog.h"

#include "views/dialogs/DialogPlacement.h"
#include "views/widgets/NumberEdit.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <qdrawutil.h>

namespace velmor {

namespace {

constexpr int stepDigits = 5;

} // namespace

CDropTypeDialog::CDropTypeDialog(QWidget* parent, CDropType& choices)
    : CDialog(parent, ""), m_choices(choices), m_step(new CNumberEdit("step", NumberKind::Whole)) {
    setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint);
    m_step->setFixedWidth(m_step->fontMetrics().horizontalAdvance('0') * stepDigits + m_step->sizeHint().height());
    m_step->setAccessibleName("Frames of each cel");
    AddTypes();
    AddInsert();
    OkButton().setText("&Drop");
    CancelButton().setText("&X");
    CancelButton().setAccessibleName("Do not drop");
    CancelButton().setToolTip("Do not drop");
    ShowStep();
    if (m_choices.HasFreeStep())
        m_step->BeFirst();
    connect(m_step, &QLineEdit::textChanged, this, [this] { static_cast<void>(TakeStep()); });
}

void CDropTypeDialog::AddTypes() {
    auto* group = new QButtonGroup(this);
    const QStringList labels{"On &One's", "On &Two's", "On T&hree's", "On &Four's", "O&n"};
    auto* freeStep = new QHBoxLayout;
    for (int type = 0; type <= CDropType::free; ++type) {
        auto* button = new QRadioButton(labels[type]);
        group->addButton(button, type);
        button->setObjectName("type" + QString::number(type));
        button->setChecked(type == m_choices.Type());
        if (type == CDropType::free)
            freeStep->addWidget(button);
        else
            Body().addWidget(button);
    }
    freeStep->addWidget(m_step);
    freeStep->addWidget(new QLabel("s"));
    freeStep->addStretch();
    Body().addLayout(freeStep);
    group->checkedButton()->setFocus();
    connect(group, &QButtonGroup::idToggled, this, [this](int type, bool on) {
        if (!on)
            return;
        m_choices.ChooseType(type);
        ShowStep();
    });
    // With the keyboard the choice goes on among the buttons.
    connect(group, &QButtonGroup::idClicked, this, [this, group](int type) {
        if (type == CDropType::free && group->button(type)->underMouse())
            m_step->BeFirst();
    });
}

void CDropTypeDialog::AddInsert() {
    auto* insert = new QCheckBox("&Insert Cel(s)");
    insert->setObjectName("insert");
    insert->setToolTip("What stands at and below the point moves down");
    insert->setChecked(m_choices.Insert());
    Body().addWidget(insert);
    connect(insert, &QCheckBox::toggled, this, [this](bool on) { m_choices.ChooseInsert(on); });
}

void CDropTypeDialog::ShowStep() {
    m_step->SetValue(m_choices.Step());
    m_step->setEnabled(m_choices.HasFreeStep());
}

bool CDropTypeDialog::TakeStep() {
    if (!m_choices.HasFreeStep() || m_choices.EnterStep(m_step->Whole().value_or(0)))
        return true;
    m_step->Mark("Enter a whole number from 1 to " + QString::number(CDropType::mostStep));
    return false;
}

bool CDropTypeDialog::Accepts() {
    if (TakeStep())
        return true;
    m_step->Refuse(m_step->toolTip());
    return false;
}

void CDropTypeDialog::PlaceAt(QPoint screenPoint) {
    ensurePolished();
    adjustSize();
    move(KeptOnScreen(screenPoint, size(), ScreenAreaAt(screenPoint)));
}

// Without a title bar the window needs an edge of its own.
void CDropTypeDialog::paintEvent(QPaintEvent* event) {
    CDialog::paintEvent(event);
    QPainter painter(this);
    qDrawPlainRect(&painter, rect(), palette().color(QPalette::Mid));
}

} // namespace velmor
