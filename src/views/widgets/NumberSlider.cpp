#include "views/widgets/NumberSlider.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QSlider>
#include <algorithm>

namespace velmor {

namespace {

constexpr int sliderWidth = 180;
constexpr int pages = 10; // of a slider's way

} // namespace

CNumberSlider::CNumberSlider(const QString& name, int least, int most, NumberKind kind, const QString& unit)
    : m_row(new QHBoxLayout(this)), m_slider(new QSlider(Qt::Horizontal)), m_edit(new CNumberEdit(name, kind)) {
    m_slider->setObjectName(name + "Slider");
    m_slider->setRange(least, most);
    m_slider->setPageStep(std::max(1, (most - least) / pages));
    m_slider->setMinimumWidth(sliderWidth);
    m_row->setContentsMargins(0, 0, 0, 0);
    m_row->addWidget(m_slider, 1);
    m_row->addWidget(m_edit);
    if (!unit.isEmpty())
        m_row->addWidget(new QLabel(unit));
    setFocusProxy(m_edit);
    connect(m_slider, &QSlider::valueChanged, this, [this](int value) { m_edit->SetValue(value); });
    connect(m_edit, &QLineEdit::textChanged, this, [this] {
        const std::optional<double> value = m_edit->Value();
        if (!value)
            return;
        // Not told back: the field keeps the decimals that the slider does not have.
        const QSignalBlocker silent(m_slider);
        m_slider->setValue(
            static_cast<int>(std::clamp(*value, double(m_slider->minimum()), double(m_slider->maximum()))));
    });
}

void CNumberSlider::ShowEnds() {
    m_row->insertWidget(0, new QLabel(QString::number(m_slider->minimum())));
    m_row->insertWidget(2, new QLabel(QString::number(m_slider->maximum())));
}

} // namespace velmor
