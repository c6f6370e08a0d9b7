#include "views/widgets/TextLines.h"

#include "views/Text.h"

#include <algorithm>

namespace velmor {

namespace {

constexpr int widestInCharacters = 70;
constexpr int mostLinesAsked = 8;
constexpr int fewestLinesAsked = 3;

} // namespace

CTextLines::CTextLines(const QString& name, const std::vector<std::string>& lines) {
    setObjectName(name);
    setWordWrap(true);
    setSelectionMode(QAbstractItemView::NoSelection);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    SetLines(lines);
}

void CTextLines::SetLines(const std::vector<std::string>& lines) {
    clear();
    for (const std::string& line : lines)
        addItem(ToQt(line));
    updateGeometry();
}

QSize CTextLines::sizeHint() const {
    const int lines = std::clamp(count(), fewestLinesAsked, mostLinesAsked);
    return {fontMetrics().averageCharWidth() * widestInCharacters,
            (fontMetrics().height() + 2) * lines + 2 * frameWidth() + 2};
}

QString Counted(int count, const char* one, const char* more) {
    return QString("%1 %2").arg(count).arg(count == 1 ? one : more);
}

} // namespace velmor
