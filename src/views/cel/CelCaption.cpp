#include "views/cel/CelCaption.h"

#include "scene/CommandState.h"
#include "scene/paper/Drawing.h"
#include "views/Text.h"

#include <QPainter>

#include <cmath>

namespace velmor {

namespace {

constexpr int leastWidth = 40;
constexpr int indent = 6;

// Nothing for a view that stands as the image does.
QString TurnText(const CViewTurn& turn) {
    const double nearest = turn.degrees > 180 ? turn.degrees - 360 : turn.degrees;
    QString text;
    if (std::lround(nearest) != 0)
        text += QString("   %1\u00b0").arg(std::lround(nearest));
    if (turn.mirrored)
        text += "   mirrored";
    return text;
}

} // namespace

QString CaptionOf(const CSceneModel& model, CZoomLevel zoom, const CViewTurn& turn) {
    if (!HasEditedImage(model))
        return {};
    const CCelImg& image = model.celImg;
    return QString("%1 %%2   %3%4%5   %6 x %7 pixels")
        .arg(zoom.Percent())
        .arg(TurnText(turn))
        .arg(HasEditedPicture(model) ? QString("Picture ") : ToQt(model.folderName) + " / ")
        .arg(ToQt(Utf8Of(image.FilePath().stem())), image.IsModified() ? " *" : "")
        .arg(image.Width())
        .arg(image.Height());
}

QString FlippedCaptionOf(const CDrawing& drawing, bool isPlaying) {
    return QString(isPlaying ? "Playing: %1 / %2" : "Flipped to %1 / %2")
        .arg(drawing.IsPicture() ? QString("Picture") : ToQt(drawing.folder), ToQt(drawing.name));
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
    setToolTip(
        text.isEmpty()
            ? text
            : text + "\nZoom and turn of the view, name and size of the image; * stands for changes not saved yet");
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
