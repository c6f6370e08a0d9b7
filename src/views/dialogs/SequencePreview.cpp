#include "views/dialogs/SequencePreview.h"

#include "views/AssetThumbnails.h"
#include "views/Text.h"
#include "views/widgets/TextLines.h"

#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

namespace velmor {

namespace {

constexpr QSize usualSize(320, 240);

QString TextOf(const CImportedImage& read) {
    if (!read.status)
        return read.status.Message().empty() ? QString("Not a file that can be imported")
                                             : ToQt(read.status.Message());
    QString text = QString("%1 x %2 pixels").arg(read.image.Width()).arg(read.image.Height());
    if (read.specks > 0)
        text += ", " + Counted(read.specks, "speck left out", "specks left out");
    return text;
}

} // namespace

class CSequencePreview::CPicture final : public QWidget {
public:
    CPicture() {
        setObjectName("picture");
        setMinimumSize(usualSize);
    }

    void Show(const QImage& image) {
        m_image = image;
        update();
    }

    QSize sizeHint() const override { return usualSize; }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setPen(palette().color(QPalette::Mid));
        painter.drawRect(QRect(QPoint(0, 0), size() - QSize(1, 1)));
        if (m_image.isNull())
            return;
        const QPixmap pixmap = PaintThumbnail(m_image, size() - QSize(2, 2), devicePixelRatioF());
        const QSizeF shown = pixmap.deviceIndependentSize();
        painter.drawPixmap(QPointF((width() - shown.width()) / 2, (height() - shown.height()) / 2), pixmap);
    }

private:
    QImage m_image;
};

CSequencePreview::CSequencePreview() : m_picture(new CPicture), m_text(new QLabel) {
    m_text->setObjectName("previewText");
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_picture, 1);
    column->addWidget(m_text);
}

void CSequencePreview::Show(const CImportedImage& read) {
    m_picture->Show(read.status ? ToQImage(read.image) : QImage());
    m_text->setText(TextOf(read));
}

} // namespace velmor
