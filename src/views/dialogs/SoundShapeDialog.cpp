#include "views/dialogs/SoundShapeDialog.h"

#include "sound/SoundPlacement.h"
#include "views/Text.h"
#include "views/dialogs/RunDialog.h"
#include "views/widgets/FormParts.h"
#include "views/widgets/NumberSlider.h"

#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

namespace velmor {

namespace {

constexpr int tenths = 10;

CNumberEdit* NewFrames(const QString& name, double value, const QString& toolTip) {
    auto* edit = new CNumberEdit(name, NumberKind::Decimal);
    edit->SetValue(value);
    edit->setToolTip(toolTip);
    return edit;
}

QString Frames(double count) {
    return QString::number(std::round(count * 100) / 100);
}

} // namespace

CSoundShapeDialog::CSoundShapeDialog(QWidget* parent, const CSoundShapeRequest& request)
    : CDialog(parent, "Sound Trim and Level"),
      m_request(request),
      m_trimIn(NewFrames("trimIn", request.initial.trimIn, "Frames of the sound that are not heard at its start")),
      m_trimOut(NewFrames("trimOut", request.initial.trimOut, "Frames of the sound that are not heard at its end")),
      m_level(new CNumberSlider("level", CSoundPlacement::leastLevel / tenths, CSoundPlacement::mostLevel / tenths,
                                NumberKind::Decimal, "dB")),
      m_heard(new QLabel) {
    m_level->Edit().SetValue(request.initial.level);
    m_level->setToolTip("How much louder the sound is than its file; -60 is silence");
    auto* sound = new QLabel(ToQt(request.sound) + QString(", from frame %1").arg(request.frame));
    sound->setObjectName("sound");
    sound->setTextFormat(Qt::PlainText);
    m_heard->setObjectName("heard");
    QFormLayout& form = AddForm();
    form.addRow("Sound :", sound);
    form.addRow(LabelFor("Frames left out at its &start :", *m_trimIn), m_trimIn);
    form.addRow(LabelFor("Frames left out at its &end :", *m_trimOut), m_trimOut);
    form.addRow("Heard :", m_heard);
    form.addRow(LabelFor("&Level :", *m_level), m_level);
    AddHint("The sound's file stays as it is, and other places of the sound in the sheet.");
    QPushButton& whole = AddButton("whole", "&As It Is", "All of the sound, as loud as its file has it");
    connect(&whole, &QPushButton::clicked, this, [this] {
        for (CNumberEdit* edit : {m_trimIn, m_trimOut, &m_level->Edit()})
            edit->SetValue(0);
    });
    for (CNumberEdit* edit : {m_trimIn, m_trimOut})
        connect(edit, &QLineEdit::textChanged, this, &CSoundShapeDialog::ShowHeard);
    ShowHeard();
    m_trimIn->BeFirst();
}

void CSoundShapeDialog::ShowHeard() {
    const double heard = m_request.frames - m_trimIn->Value().value_or(0) - m_trimOut->Value().value_or(0);
    m_heard->setText(Frames(std::max(0.0, heard)) + " of " + Frames(m_request.frames) + " frames");
}

CSoundShape CSoundShapeDialog::Values() const {
    return {m_trimIn->ValueOrNan(), m_trimOut->ValueOrNan(), m_level->Edit().ValueOrNan()};
}

bool CSoundShapeDialog::Accepts() {
    if (IsAccepted(m_request.accept, Values()))
        return true;
    RefuseUnreadable({m_trimIn, m_trimOut, &m_level->Edit()});
    return false;
}

} // namespace velmor
