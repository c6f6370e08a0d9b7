#include "app/window/CommandText.h"

namespace velmor {

QString PlainText(const char* text) {
    QString plain = QString::fromUtf8(text).section('\t', 0, 0);
    plain.replace("&&", "\a").remove('&').replace('\a', '&');
    return plain;
}

} // namespace velmor
