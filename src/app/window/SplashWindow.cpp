#include "app/window/SplashWindow.h"

#include "views/SplashArt.h"

#include <QApplication>
#include <QPainter>
#include <QScreen>
#include <QTimer>

namespace velmor {

namespace {

bool IsShown() {
    const QWidgetList windows = QApplication::topLevelWidgets();
    return std::ranges::any_of(windows, [](QWidget* window) {
        return dynamic_cast<CSplashWindow*>(window) != nullptr && window->isVisible();
    });
}

} // namespace

void CSplashWindow::Show() {
    const QScreen* screen = QApplication::primaryScreen();
    const QPixmap picture = SplashPicture(screen->devicePixelRatio());
    if (picture.isNull() || IsShown())
        return;
    auto* window = new CSplashWindow(picture);
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->move(screen->geometry().center() - window->rect().center());
    window->show();
    QTimer::singleShot(shownMilliseconds, window, [window] { window->close(); });
}

CSplashWindow::CSplashWindow(const QPixmap& picture)
    : QWidget(nullptr, Qt::SplashScreen | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint), m_picture(picture) {
    setFixedSize(picture.deviceIndependentSize().toSize());
    setMask(QRegion(SplashOutline()));
}

void CSplashWindow::paintEvent(QPaintEvent*) {
    QPainter(this).drawPixmap(0, 0, m_picture);
}

} // namespace velmor
