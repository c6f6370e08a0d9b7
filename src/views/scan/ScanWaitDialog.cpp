#include "views/scan/ScanWaitDialog.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace velmor {

CScanWaitDialog::CScanWaitDialog(QWidget* parent, const QString& text) : QDialog(parent) {
    setObjectName("ScanWait");
    setWindowTitle("Scan");
    setWindowModality(Qt::ApplicationModal);
    auto* bar = new QProgressBar;
    bar->setRange(0, 0);
    bar->setTextVisible(false);
    bar->setAccessibleName(text);
    bar->setMinimumWidth(fontMetrics().averageCharWidth() * 45);
    auto* cancel = new QPushButton("Cancel");
    cancel->setObjectName("cancel");
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    auto* bottom = new QHBoxLayout;
    bottom->addStretch();
    bottom->addWidget(cancel);
    auto* all = new QVBoxLayout(this);
    all->setSpacing(10);
    all->addWidget(new QLabel(text));
    all->addWidget(bar);
    all->addLayout(bottom);
    all->setSizeConstraint(QLayout::SetFixedSize);
}

} // namespace velmor
