#include "app/window/ManualWindow.h"

#include "views/Text.h"

#include <QFile>
#include <QImage>
#include <QStyle>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace velmor {

namespace {

constexpr const char* name = "Manual";
constexpr int margin = 18;

/// Pictures no wider than the text.
class CPage final : public QTextBrowser {
public:
    explicit CPage(int widest) : m_widest(widest) {}

    QVariant loadResource(int type, const QUrl& url) override {
        // They stand in the text itself, as "data:image/png;base64,...".
        QImage picture;
        if (url.scheme() != "data" ||
            !picture.loadFromData(QByteArray::fromBase64(url.path().section(',', 1).toLatin1())))
            return QTextBrowser::loadResource(type, url);
        if (picture.width() <= m_widest)
            return picture;
        picture = picture.convertToFormat(QImage::Format_RGB32)
                      .scaledToWidth(qRound(m_widest * devicePixelRatioF()), Qt::SmoothTransformation);
        picture.setDevicePixelRatio(devicePixelRatioF());
        return picture;
    }

private:
    int m_widest;
};

} // namespace

CManualWindow::CManualWindow(QWidget& parent, const QString& text) : QDialog(&parent) {
    setObjectName(name);
    setWindowTitle("Online Manual");
    setAttribute(Qt::WA_DeleteOnClose);
    resize(fontMetrics().averageCharWidth() * 110, fontMetrics().height() * 45);
    auto* page = new CPage(width() - 2 * margin - style()->pixelMetric(QStyle::PM_ScrollBarExtent));
    page->setObjectName("page");
    page->setAccessibleName("Manual");
    page->setOpenExternalLinks(true);
    page->setFrameShape(QFrame::NoFrame);
    page->document()->setDocumentMargin(margin);
    page->setMarkdown(text);
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins({});
    all->addWidget(page);
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
