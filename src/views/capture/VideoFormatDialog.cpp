#include "views/capture/VideoFormatDialog.h"

#include <QLabel>
#include <QListWidget>
#include <QVBoxLayout>
#include <cmath>

namespace velmor {

QString FormatText(const CCaptureFormat& format) {
    const QString size = QString("%1 x %2").arg(format.width).arg(format.height);
    if (format.rate <= 0)
        return size;
    return QString("%1, %2 frames a second").arg(size, QString::number(std::round(format.rate * 100) / 100));
}

CVideoFormatDialog::CVideoFormatDialog(QWidget* parent, std::vector<CCaptureFormat> formats,
                                       const CCaptureFormat& current)
    : CDialog(parent, "Video Format"), m_formats(std::move(formats)), m_list(new QListWidget) {
    setObjectName("VideoFormat");
    m_list->setObjectName("formats");
    m_list->setAccessibleName("Size and rate");
    for (const CCaptureFormat& format : m_formats) {
        m_list->addItem(FormatText(format));
        // A rate is given as a fraction and may come back rounded.
        if (format.width == current.width && format.height == current.height &&
            (m_list->currentRow() < 0 || std::abs(format.rate - current.rate) < 0.01))
            m_list->setCurrentRow(m_list->count() - 1);
    }
    auto* label = new QLabel("&Size and rate of the pictures :");
    label->setBuddy(m_list);
    Body().addWidget(label);
    Body().addWidget(m_list, 1);
    connect(m_list, &QListWidget::itemActivated, this, [this] { accept(); });
    m_list->setFocus();
    resize(320, 360);
}

CCaptureFormat CVideoFormatDialog::Values() const {
    return m_formats.at(static_cast<std::size_t>(m_list->currentRow()));
}

bool CVideoFormatDialog::Accepts() {
    return m_list->currentRow() >= 0;
}

} // namespace velmor
