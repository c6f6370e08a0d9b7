#pragma once

#include "image/Color.h"

#include <QAbstractButton>
#include <functional>

class QPushButton;

namespace velmor {

/// A field of colour that opens the colour chooser when it is pressed.
class CColorSwatch : public QAbstractButton {
public:
    /// `name` is what the colour is called, for the chooser's title and for screen readers.
    CColorSwatch(const QString& name, const CColor& color);

    const CColor& Color() const { return m_color; }
    void SetColor(const CColor& color);
    /// Lets the user choose red, green and blue; alpha stays.
    void Choose();
    /// A button that opens the chooser as well, named like the swatch + "Chooser".
    QPushButton* NewChooserButton(const QString& text);

    std::function<void()> changed; ///< called when the user has chosen

    QSize sizeHint() const override { return {56, 28}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_name;
    CColor m_color;
};

} // namespace velmor
