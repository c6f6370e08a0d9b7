#include "app/Theme.h"

#include "platform/Profile.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QPalette>
#include <QProxyStyle>

namespace velmor {

namespace {

constexpr int answerMilliseconds = 200;
constexpr unsigned prefersDark = 1;

// The setting that desktops share: org.freedesktop.appearance, color-scheme (XDG Desktop Portal, Settings).
bool DesktopPrefersDark() {
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return false;
    QDBusMessage question =
        QDBusMessage::createMethodCall("org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop",
                                       "org.freedesktop.portal.Settings", "Read");
    question << "org.freedesktop.appearance"
             << "color-scheme";
    const QDBusMessage answer = bus.call(question, QDBus::Block, answerMilliseconds);
    if (answer.type() != QDBusMessage::ReplyMessage || answer.arguments().isEmpty())
        return false;
    const QVariant outer = answer.arguments().front().value<QDBusVariant>().variant();
    const QVariant inner = outer.canConvert<QDBusVariant>() ? outer.value<QDBusVariant>().variant() : outer;
    return inner.toUInt() == prefersDark;
}

/// Fusion without the desktop's pictures on the buttons of dialogs, which no two desktops have alike.
class CPlainButtons final : public QProxyStyle {
public:
    CPlainButtons() : QProxyStyle("Fusion") {}
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override {
        return hint == SH_DialogButtonBox_ButtonsHaveIcons ? 0 : QProxyStyle::styleHint(hint, option, widget, data);
    }
};

void SetDisabledText(QPalette& palette, const QColor& color) {
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, color);
}

QPalette LightPalette() {
    QPalette palette(QColor(240, 240, 241));
    palette.setColor(QPalette::Highlight, QColor(47, 125, 225));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::AlternateBase, QColor(246, 246, 248));
    SetDisabledText(palette, QColor(150, 150, 154));
    return palette;
}

QPalette DarkPalette() {
    QPalette palette(QColor(50, 51, 54), QColor(43, 44, 47));
    palette.setColor(QPalette::WindowText, QColor(228, 228, 230));
    palette.setColor(QPalette::Text, QColor(228, 228, 230));
    palette.setColor(QPalette::ButtonText, QColor(228, 228, 230));
    palette.setColor(QPalette::BrightText, Qt::white);
    palette.setColor(QPalette::Base, QColor(31, 32, 34));
    palette.setColor(QPalette::AlternateBase, QColor(38, 39, 42));
    palette.setColor(QPalette::ToolTipBase, QColor(60, 61, 65));
    palette.setColor(QPalette::ToolTipText, QColor(228, 228, 230));
    palette.setColor(QPalette::PlaceholderText, QColor(150, 150, 155));
    palette.setColor(QPalette::Link, QColor(105, 165, 255));
    palette.setColor(QPalette::Highlight, QColor(47, 125, 225));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    SetDisabledText(palette, QColor(120, 121, 125));
    return palette;
}

bool WantsDark(const CProfile& profile) {
    const std::string choice = profile.GetString("Window", "Theme", "");
    if (choice == "dark" || choice == "light")
        return choice == "dark";
    constexpr int middle = 128;
    return QApplication::palette().color(QPalette::Window).lightness() < middle || DesktopPrefersDark();
}

} // namespace

void ApplyTheme(const CProfile& profile) {
    const bool dark = WantsDark(profile);
    QApplication::setStyle(new CPlainButtons); // belongs to the application now
    QApplication::setPalette(dark ? DarkPalette() : LightPalette());
}

} // namespace velmor
