#pragma once

#include <QString>
#include <optional>

namespace velmor {

// Numbers as the dialogs show and read them: with a decimal point, whatever the system's language.

/// Without zeros at the end; what a floor to two decimals left beyond them is not shown.
QString NumberText(double value);
/// Takes a decimal comma as well, and spaces around. Nothing when it is no finite number.
std::optional<double> ParseNumber(const QString& text);
/// Nothing when it is no whole number or beyond the range of int.
std::optional<int> ParseWhole(const QString& text);

} // namespace velmor
