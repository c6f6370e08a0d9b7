#pragma once

#include "views/widgets/NumberEdit.h"

#include <QWidget>

class QHBoxLayout;
class QSlider;

namespace velmor {

/// A slider and a number field that follow each other; the slider shows the field's number truncated and held to
/// its own range.
class CNumberSlider : public QWidget {
public:
    /// `unit` stands behind the field. The parts are named `name` + "Slider" and `name`, for those who look for
    /// them.
    CNumberSlider(const QString& name, int least, int most, NumberKind kind, const QString& unit = {});

    /// Writes the ends of the range beside the slider.
    void ShowEnds();

    CNumberEdit& Edit() { return *m_edit; }
    const CNumberEdit& Edit() const { return *m_edit; }
    QSlider& Slider() { return *m_slider; }

private:
    QHBoxLayout* m_row;
    QSlider* m_slider;
    CNumberEdit* m_edit;
};

} // namespace velmor
