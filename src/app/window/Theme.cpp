#include "app/window/Theme.h"

#include "app/window/ThemeStyle.h"
#include "scene/DialogRequests.h"
#include "scene/Prompter.h"
#include "scene/Settings.h"
#include "views/Brightness.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QPalette>

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

// Ours may be in force already, so the system's is put back first.
bool SystemIsDark() {
    QApplication::setPalette(QPalette());
    return IsDark(QApplication::palette()) || DesktopPrefersDark();
}

void Show(Appearance appearance) {
    const bool dark = appearance == Appearance::System ? SystemIsDark() : appearance == Appearance::Dark;
    QApplication::setPalette(dark ? DarkPalette() : LightPalette());
}

Appearance Remembered(const CProfile& profile) {
    const std::string choice = Get(profile, setting::theme);
    return choice == "dark" ? Appearance::Dark : choice == "light" ? Appearance::Light : Appearance::System;
}

void Remember(CProfile& profile, Appearance appearance) {
    Set(profile, setting::theme,
        appearance == Appearance::Dark    ? "dark"
        : appearance == Appearance::Light ? "light"
                                          : "system");
}

} // namespace

void ApplyTheme(const CProfile& profile) {
    QApplication::setStyle(new CThemeStyle); // belongs to the application now
    Show(Remembered(profile));
}

void ChooseTheme(IPrompter& prompter, CProfile& profile) {
    if (const std::optional<Appearance> chosen = prompter.Ask(CAppearanceRequest{Remembered(profile), Show}))
        Remember(profile, *chosen);
}

} // namespace velmor
