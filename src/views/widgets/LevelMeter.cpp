#include "views/widgets/LevelMeter.h"

#include <QPainter>
#include <algorithm>

namespace velmor {

namespace {

constexpr int fall = 4; // percent at a step
constexpr int segments = 32;
constexpr int gap = 2;

QColor ColorAt(int percent) {
    constexpr int loud = 70;
    constexpr int tooLoud = 90;
    if (percent >= tooLoud)
        return QColor(0xd6, 0x45, 0x45);
    return percent >= loud ? QColor(0xd9, 0xa4, 0x2c) : QColor(0x3a, 0x9d, 0x5d);
}

} // namespace

CLevelMeter::CLevelMeter() {
    setObjectName("level");
    setMinimumSize(sizeHint());
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void CLevelMeter::SetLevel(int percent) {
    const int level = std::max(std::clamp(percent, 0, 100), m_level - fall);
    if (level == m_level)
        return;
    m_level = level;
    update();
}

void CLevelMeter::Clear() {
    m_level = 0;
    update();
}

void CLevelMeter::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    QColor unlit = palette().color(QPalette::WindowText);
    unlit.setAlphaF(0.15F);
    const int span = width() + gap; // the last segment ends with the bar
    for (int segment = 0; segment < segments; ++segment) {
        const int left = segment * span / segments;
        const int right = (segment + 1) * span / segments;
        const int percent = segment * 100 / segments;
        painter.fillRect(QRect(left, 0, right - left - gap, height()),
                         percent < m_level ? ColorAt(percent) : unlit);
    }
}

} // namespace velmor
