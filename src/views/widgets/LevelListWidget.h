#pragma once

#include <QListWidget>
#include <string>
#include <vector>

namespace velmor {

/// Levels by their names, level 0 first; a level without a name can be told from the others all the same.
class CLevelListWidget final : public QListWidget {
public:
    explicit CLevelListWidget(const std::vector<std::string>& levelNames);
};

} // namespace velmor
