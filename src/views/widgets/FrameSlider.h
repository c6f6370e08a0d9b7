#pragma once

#include <QSlider>

namespace velmor {

/// A slider over frames. The keys that point down go to later frames, as they do in the xsheet.
class CFrameSlider final : public QSlider {
public:
    CFrameSlider() : QSlider(Qt::Horizontal) {}

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace velmor
