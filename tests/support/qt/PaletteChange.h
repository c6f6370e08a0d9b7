#pragma once

#include <QApplication>
#include <QPalette>

namespace velmor::testing {

/// Another palette for the application, until the object dies.
class CPaletteChange {
public:
    explicit CPaletteChange(const QPalette& palette) { QApplication::setPalette(palette); }
    CPaletteChange(const CPaletteChange&) = delete;
    CPaletteChange& operator=(const CPaletteChange&) = delete;
    ~CPaletteChange() { QApplication::setPalette(m_before); }

private:
    QPalette m_before = QApplication::palette();
};

/// Of a dark desktop.
inline QPalette DarkDesktop() {
    return {QColor(50, 51, 54), QColor(43, 44, 47)};
}

} // namespace velmor::testing
