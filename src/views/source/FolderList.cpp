#include "views/source/FolderList.h"

#include "views/Text.h"

#include <QAbstractItemView>
#include <QWheelEvent>

namespace velmor {

namespace {
constexpr const char* newFolderEntry = "<New Folder>";
constexpr int popupMargin = 24;
} // namespace

CFolderList::CFolderList(QWidget* parent) : QComboBox(parent) {
    setToolTip("Folders in the Scene");
    setAccessibleName("Folders in the Scene");
    setPlaceholderText("(folder)");
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(1);
    setMaxVisibleItems(24);
}

void CFolderList::SetChosen(std::function<void(const std::string& folder)> folder,
                            std::function<void()> newFolder) {
    connect(this, &QComboBox::textActivated, this,
            [folder = std::move(folder), newFolder = std::move(newFolder)](const QString& entry) {
                if (entry == newFolderEntry)
                    newFolder();
                else
                    folder(FromQt(entry));
            });
}

void CFolderList::Show(const std::vector<std::string>& folders, const std::string& current) {
    QStringList entries;
    for (const std::string& folder : folders)
        entries << ToQt(folder);
    SetEntries(entries << newFolderEntry);
    setCurrentIndex(current.empty() ? -1 : findText(ToQt(current)));
    setEnabled(true);
}

void CFolderList::ShowNoScene() {
    SetEntries({});
    setEnabled(false);
}

void CFolderList::SetEntries(const QStringList& entries) {
    QStringList shown;
    for (int i = 0; i < count(); ++i)
        shown << itemText(i);
    if (entries == shown)
        return;
    clear();
    addItems(entries);
    // The view is narrow, the names need not be.
    view()->setMinimumWidth(view()->sizeHintForColumn(0) + popupMargin);
}

// The wheel is meant for the list below: turned over this one by chance, it would change the folder.
void CFolderList::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

} // namespace velmor
