#include "views/print/GuidesPrinter.h"

#include "scene/CameraAids.h"
#include "scene/Prompter.h"
#include "scene/SceneModel.h"
#include "views/Text.h"
#include "views/camera/CameraMarksPainter.h"
#include "views/camera/GuidesPainter.h"
#include "views/print/XSheetPrinter.h"

#include <QPainter>
#include <algorithm>

namespace velmor {

namespace {

constexpr double pointsPerInch = 72;
constexpr double headPoints = 10; ///< height of the line above the frame
constexpr double headRoom = 18;

CCameraAidChoices OnPaper(CCameraAidChoices choices) {
    if (!choices.HasGuides()) {
        choices.fields = 12;
        choices.actionSafe = choices.titleSafe = true;
    }
    choices.fieldsOnStage = false; // paper has no camera
    return choices;
}

QString HeadOf(const CSceneModel& model, const CCameraAidChoices& choices) {
    const CSize frame = model.Scene().geometry.Frame();
    QString head = QString("%1   %2 x %3").arg(ToQt(model.sceneName)).arg(frame.width).arg(frame.height);
    if (choices.fields > 0)
        head += QString("   %1 fields").arg(choices.fields);
    return head;
}

void Paint(QPainter& painter, const CSceneModel& model, const CCameraAidChoices& choices, const QRectF& area,
           double dotsPerPoint) {
    const CSize frame = model.Scene().geometry.Frame();
    const QRectF room = area.adjusted(0, headRoom * dotsPerPoint, 0, 0);
    const double factor = std::min(room.width() / frame.width, room.height() / frame.height);
    const QSizeF size(frame.width * factor, frame.height * factor);
    const QPointF origin(room.center().x() - size.width() / 2, room.top());
    QFont font = painter.font();
    font.setPixelSize(std::max(1, static_cast<int>(headPoints * dotsPerPoint)));
    painter.setFont(font);
    painter.setPen(Qt::black);
    painter.drawText(QPointF(origin.x(), area.top() + headPoints * dotsPerPoint), HeadOf(model, choices));
    PaintGuides(painter, choices, {frame, {}}, {origin, factor, frame.height}, PaperInk(dotsPerPoint));
    painter.setPen(QPen(Qt::black, dotsPerPoint));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(QRectF(origin, size));
}

} // namespace

bool PrintGuides(const CSceneModel& model, const CCameraAidChoices& choices, IPrompter& prompter,
                 QPrinter& printer) {
    if (!model.sceneOpen)
        return false;
    QPainter painter;
    if (!painter.begin(&printer)) {
        prompter.ShowMessage("The field chart could not be printed.");
        return false;
    }
    const double dotsPerPoint = printer.resolution() / pointsPerInch;
    const QRectF points = PrintableArea(printer);
    QRectF area(points.topLeft() * dotsPerPoint, points.size() * dotsPerPoint);
    if (!printer.fullPage())
        area.moveTo(0, 0);
    Paint(painter, model, OnPaper(choices), area, dotsPerPoint);
    painter.end();
    return IsWritten(printer, prompter);
}

} // namespace velmor
