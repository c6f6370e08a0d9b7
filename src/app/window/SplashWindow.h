#pragma once

#include <QPixmap>
#include <QWidget>

namespace velmor {

/// The splash artwork, cut out along its outline, in the middle of the screen for a moment. Deletes itself.
class CSplashWindow final : public QWidget {
public:
    static constexpr int shownMilliseconds = 1750;

    /// Does nothing while one is shown, and where there is no artwork.
    static void Show();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    explicit CSplashWindow(const QPixmap& picture);

    QPixmap m_picture;
};

} // namespace velmor
