#include "app/ManualWindow.h"

#include "views/Text.h"

#include <QFile>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace velmor {

namespace {

constexpr const char* name = "Manual";

} // namespace

CManualWindow::CManualWindow(QWidget& parent, const QString& text) : QDialog(&parent) {
    setObjectName(name);
    setWindowTitle("Online Manual");
    setAttribute(Qt::WA_DeleteOnClose);
    auto* page = new QTextBrowser;
    page->setObjectName("page");
    page->setAccessibleName("Manual");
    page->setOpenExternalLinks(true);
    page->setFrameShape(QFrame::NoFrame);
    page->document()->setDocumentMargin(18);
    page->setMarkdown(text);
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins({});
    all->addWidget(page);
    resize(fontMetrics().averageCharWidth() * 110, fontMetrics().height() * 45);
}

bool CManualWindow::Show(QWidget& parent, const Path& markdown) {
    auto* window = parent.findChild<QDialog*>(name, Qt::FindDirectChildrenOnly);
    if (window == nullptr) {
        QFile file(ToQt(Utf8Of(markdown)));
        if (!file.open(QIODevice::ReadOnly))
            return false;
        window = new CManualWindow(parent, QString::fromUtf8(file.readAll()));
    }
    window->show();
    window->raise();
    window->activateWindow();
    return true;
}

} // namespace velmor
