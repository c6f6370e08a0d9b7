#include "views/scan/ScanSourceDialog.h"

#include "views/Text.h"
#include "views/widgets/FormParts.h"

#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

namespace velmor {

CScanSourceDialog::CScanSourceDialog(QWidget* parent, std::span<const CScannerDevice> scanners, std::size_t current)
    : CDialog(parent, "Select Source"), m_list(new QListWidget) {
    setObjectName("ScanSource");
    m_list->setObjectName("scanners");
    m_list->setSpacing(1);
    for (const CScannerDevice& scanner : scanners) {
        const bool isAlone = std::ranges::count(scanners, scanner.label, &CScannerDevice::label) == 1;
        auto* item = new QListWidgetItem(ToQt(scanner.label + (isAlone ? "" : " (" + scanner.name + ")")), m_list);
        item->setToolTip(ToQt(scanner.name));
    }
    m_list->setCurrentRow(static_cast<int>(current));
    auto* label = LabelFor("&Scanners", *m_list);
    label->setAlignment(Qt::AlignLeft);
    Body().addWidget(label);
    Body().addWidget(m_list, 1);
    OkButton().setText("&Select");
    connect(m_list, &QListWidget::itemDoubleClicked, this, [this] { accept(); });
    resize(360, 260);
}

std::size_t CScanSourceDialog::Values() const {
    return static_cast<std::size_t>(std::max(m_list->currentRow(), 0));
}

} // namespace velmor
