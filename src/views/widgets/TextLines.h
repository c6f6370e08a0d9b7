#pragma once

#include <QListWidget>
#include <string>
#include <vector>

namespace velmor {

/// Lines to be read, of any number; the longest are broken.
class CTextLines final : public QListWidget {
public:
    /// `name` is the object's.
    CTextLines(const QString& name, const std::vector<std::string>& lines);

    void SetLines(const std::vector<std::string>& lines);

    QSize sizeHint() const override;
};

/// "1 cell", "2 cells".
QString Counted(int count, const char* one, const char* more);

} // namespace velmor
