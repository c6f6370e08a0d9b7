#include "app/window/WindowSettings.h"

#include "platform/files/Profile.h"
#include "views/Text.h"

#include <QByteArray>
#include <QMainWindow>

namespace velmor {

namespace {

constexpr const char* section = "Window";

QByteArray Bytes(const CProfile& profile, const char* key) {
    return QByteArray::fromBase64(QByteArray::fromStdString(profile.GetString(section, key, "")));
}

void WriteBytes(CProfile& profile, const char* key, const QByteArray& bytes) {
    static_cast<void>(profile.WriteString(section, key, bytes.toBase64().toStdString()));
}

} // namespace

bool CWindowSettings::RestoreGeometry(QWidget& window, const char* key) const {
    const QByteArray bytes = Bytes(m_profile, key);
    return !bytes.isEmpty() && window.restoreGeometry(bytes);
}

void CWindowSettings::SaveGeometry(const QWidget& window, const char* key) {
    WriteBytes(m_profile, key, window.saveGeometry());
}

void CWindowSettings::RestoreState(QMainWindow& window, const char* key) const {
    if (const QByteArray bytes = Bytes(m_profile, key); !bytes.isEmpty())
        window.restoreState(bytes);
}

void CWindowSettings::SaveState(const QMainWindow& window, const char* key) {
    WriteBytes(m_profile, key, window.saveState());
}

int CWindowSettings::Number(const char* key, int usual) const {
    const int value = m_profile.GetInt(section, key, usual);
    return value >= 0 ? value : usual;
}

void CWindowSettings::SetNumber(const char* key, int value) {
    static_cast<void>(m_profile.WriteInt(section, key, value));
}

} // namespace velmor
