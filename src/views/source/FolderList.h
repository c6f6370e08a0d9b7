#pragma once

#include <QComboBox>
#include <functional>
#include <string>
#include <vector>

namespace velmor {

/// The list of a scene's cel folders, with an entry for a new one at its end.
class CFolderList final : public QComboBox {
public:
    explicit CFolderList(QWidget* parent);

    /// What the user's choices lead to. Afterwards Show() brings the list back to the folder in force.
    void SetChosen(std::function<void(const std::string& folder)> folder, std::function<void()> newFolder);

    /// Shows the folders of an open scene and the one in force, empty for none.
    void Show(const std::vector<std::string>& folders, const std::string& current);
    void ShowNoScene();

protected:
    void wheelEvent(QWheelEvent* event) override;

private:
    void SetEntries(const QStringList& entries);
};

} // namespace velmor
