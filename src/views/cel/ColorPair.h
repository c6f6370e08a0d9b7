#pragma once

#include "image/Color.h"

#include <QWidget>

namespace velmor {

/// The two colours that the tools paint with: the foreground over the background.
class CColorPair final : public QWidget {
public:
    explicit CColorPair(QWidget* parent = nullptr);

    void SetColors(CColor foreground, CColor background);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    CColor m_foreground;
    CColor m_background;
};

} // namespace velmor
