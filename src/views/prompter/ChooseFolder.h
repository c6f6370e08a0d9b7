#pragma once

#include <QString>
#include <optional>
#include <string>

class QWidget;

namespace velmor {

/// The folder chooser, "Choose Folder": shows folders only, its OK button is "Set".
class CDChooseFolder {
public:
    explicit CDChooseFolder(QWidget* parent) : m_parent(parent) {}

    /// Starts in `folder`, where that is empty in the process's current directory. The chosen folder ends with the
    /// separator; nothing when cancelled.
    std::optional<std::string> Ask(const QString& folder = {}) const;

private:
    QWidget* m_parent;
};

} // namespace velmor
