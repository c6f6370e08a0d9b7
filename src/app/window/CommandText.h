#pragma once

#include <QString>

namespace velmor {

/// The text of a command or the title of a menu as it is read outside of menus: without its mnemonic, and without
/// what stands behind a tab.
QString PlainText(const char* text);

} // namespace velmor
