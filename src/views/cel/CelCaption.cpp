#include "views/cel/CelCaption.h"

#include "scene/CommandState.h"
#include "views/Text.h"

#include <QPainter>

namespace velmor {

namespace {

constexpr int leastWidth = 40;
constexpr int indent = 6;

} // namespace

QString CaptionOf(const CSceneModel& model, CZoomLevel zoom) {
    if (!HasEditedImage(model))
        return {};
    const CCelImg& image = model.celImg;
    return QString("%1 %   %2%3%4   %5 x %6 pixels")
        .arg(zoom.Percent())
        .arg(HasEditedPicture(model) ? QString("Picture ") : ToQt(model.folderName) + " / ")
        .arg(ToQt(Utf8Of(image.FilePath().stem())), image.IsModified() ? " *" : "")
        .arg(image.Width())
        .arg(image.Height());
}

CCelCaption::CCelCaption() {
    setObjectName("celCaption");
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

void CCelCaption::SetText(const QString& text) {
    if (text == m_text)
        return;
    m_text = text;
    setAccessibleName(text);
    setToolTip(text.isEmpty() ? text
                              : text + "\nZoom, name and size of the image; * stands for changes not saved yet");
    update();
}

QSize CCelCaption::sizeHint() const {
    return minimumSizeHint();
}

QSize CCelCaption::minimumSizeHint() const {
    return {leastWidth, fontMetrics().height()};
}

void CCelCaption::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRect room = rect().adjusted(indent, 0, -indent, 0);
    painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     fontMetrics().elidedText(m_text, Qt::ElideRight, room.width()));
}

} // namespace velmor
