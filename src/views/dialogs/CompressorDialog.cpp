#include "views/dialogs/CompressorDialog.h"

#include "views/Text.h"
#include "views/widgets/FormParts.h"

#include <QLabel>
#include <QListWidget>
#include <QVBoxLayout>

namespace velmor {

CCompressorDialog::CCompressorDialog(QWidget* parent, const CCompressorRequest& request)
    : CDialog(parent, "Choose a compressor for render output"), m_compressors(new QListWidget) {
    setObjectName("Compressor");
    m_compressors->setObjectName("compressors");
    m_compressors->setSpacing(2);
    m_compressors->setMinimumWidth(fontMetrics().averageCharWidth() * 56);
    for (const CCompressor& compressor : request.compressors) {
        const QString name = ToQt(std::string(compressor.name));
        auto* item = new QListWidgetItem(name + ": " + ToQt(std::string(compressor.description)), m_compressors);
        item->setData(Qt::UserRole, name);
        if (name == ToQt(request.initial))
            m_compressors->setCurrentItem(item);
    }
    if (m_compressors->currentRow() < 0)
        m_compressors->setCurrentRow(0);
    connect(m_compressors, &QListWidget::itemActivated, this, &CCompressorDialog::accept);
    auto* label = LabelFor("&Compressor :", *m_compressors);
    label->setAlignment(Qt::AlignLeft);
    Body().addWidget(label);
    Body().addWidget(m_compressors, 1);
}

std::string CCompressorDialog::Values() const {
    const QListWidgetItem* item = m_compressors->currentItem();
    return item == nullptr ? std::string() : FromQt(item->data(Qt::UserRole).toString());
}

} // namespace velmor
