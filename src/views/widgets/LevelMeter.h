#pragma once

#include <QWidget>

namespace velmor {

/// A bar that shows how loud it is: rises at once, falls slowly, and warns near the top.
class CLevelMeter final : public QWidget {
public:
    CLevelMeter();
    /// 0 to 100, several times a second.
    void SetLevel(int percent);
    /// Silence.
    void Clear();
    int Level() const { return m_level; }
    QSize sizeHint() const override { return {160, 10}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int m_level = 0;
};

} // namespace velmor
