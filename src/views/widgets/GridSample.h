#pragma once

#include "image/DisplayBitmap.h"

#include <QWidget>

namespace velmor {

/// A piece of the cel editor's background as the editor draws it.
class CGridSample final : public QWidget {
public:
    CGridSample();

    void Show(const CGridSettings& grid);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    CCelImg m_transparent;
    CDisplayBitmap m_bitmap;
};

} // namespace velmor
