#pragma once

#include <QString>
#include <string>

namespace velmor {

// Between the core's UTF-8 and the window's text.
inline QString ToQt(const std::string& text) {
    return QString::fromStdString(text);
}
inline std::string FromQt(const QString& text) {
    return text.toStdString();
}

} // namespace velmor
