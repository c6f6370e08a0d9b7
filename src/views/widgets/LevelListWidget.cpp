#include "views/widgets/LevelListWidget.h"

#include "views/Text.h"

namespace velmor {

CLevelListWidget::CLevelListWidget(const std::vector<std::string>& levelNames) {
    setObjectName("levels");
    setAccessibleName("Levels");
    setUniformItemSizes(true);
    setSpacing(1);
    for (const std::string& name : levelNames) {
        auto* item = new QListWidgetItem(ToQt(name), this);
        if (name.empty()) {
            item->setText("(no name)");
            item->setForeground(palette().placeholderText());
        }
        item->setToolTip("Level " + QString::number(row(item) + 1));
    }
}

} // namespace velmor
