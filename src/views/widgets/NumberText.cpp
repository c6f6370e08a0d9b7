#include "views/widgets/NumberText.h"

#include <cmath>

namespace velmor {

namespace {

constexpr int digits = 15; // those that a double always keeps

} // namespace

QString NumberText(double value) {
    return QString::number(value + 0.0, 'g', digits); // the sum makes 0 of -0
}

std::optional<double> ParseNumber(const QString& text) {
    bool isNumber = false;
    const double value = QString(text).replace(',', '.').trimmed().toDouble(&isNumber);
    return isNumber && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

std::optional<int> ParseWhole(const QString& text) {
    bool isWhole = false;
    const int value = text.trimmed().toInt(&isWhole);
    return isWhole ? std::optional(value) : std::nullopt;
}

} // namespace velmor
