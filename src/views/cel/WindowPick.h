#pragma once

#include "image/Color.h"

#include <QObject>

#include <functional>

namespace velmor {

/// Takes the colour of the pixel that is clicked next anywhere in the program's windows: out of a view, a picture
/// of an asset, a swatch. Meanwhile nothing else hears of the mouse. Escape and the right button call it off.
class CWindowPick final : public QObject {
public:
    explicit CWindowPick(std::function<void(ColorRef color)> take) : m_take(std::move(take)) {}
    ~CWindowPick() override { Stop(); }

    bool IsOn() const { return m_isOn; }
    void Toggle();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Stop();
    void TakeAt(const QPoint& screenPoint);

    std::function<void(ColorRef color)> m_take;
    bool m_isOn = false;
};

} // namespace velmor
