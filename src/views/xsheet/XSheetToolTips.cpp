#include "views/xsheet/XSheetToolTips.h"

#include "scene/SceneModel.h"
#include "views/AssetThumbnails.h"
#include "views/Text.h"
#include "views/xsheet/NoteSigns.h"
#include "views/xsheet/SoundDrag.h"
#include "views/xsheet/XSheetSounds.h"

#include <QBuffer>
#include <algorithm>
#include <cmath>
#include <optional>

namespace velmor {

namespace {

// Between the parts of a line.
QString Dot() {
    return QStringLiteral(" \u00b7 ");
}

// At most two decimals.
QString Number(double value) {
    return QString::number(std::nearbyint(value * 100) / 100 + 0.0, 'g', 10);
}

QString Degrees(double radians) {
    return QString::number(RotationInDegrees(radians)) + QChar(0x00b0);
}

QString Pair(double x, double y) {
    return x == y ? Number(x) : Number(x) + " x " + Number(y);
}

QString ImageTag(const QPixmap& thumbnail) {
    if (thumbnail.isNull())
        return {};
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    thumbnail.save(&buffer, "PNG");
    const QSize size = thumbnail.deviceIndependentSize().toSize();
    return QString("<p><img width=%1 height=%2 src=\"data:image/png;base64,%3\"></p>")
        .arg(size.width())
        .arg(size.height())
        .arg(QString::fromLatin1(png.toBase64()));
}

QString LevelTitle(const CSceneModel& model, int level) {
    const QString name = ToQt(model.Scene().xsheet.LevelName(level)).toHtmlEscaped();
    const QString number = QString("Level %1").arg(level + 1);
    return name.isEmpty() ? number : number + " \"" + name + '"';
}

QString Placement(const CXSheetCell& cell) {
    QString text = "Position " + Number(cell.PosX()) + ", " + Number(cell.PosY());
    if (cell.ScaleX() != 1 || cell.ScaleY() != 1)
        text += Dot() + "scale " + Pair(cell.ScaleX() * 100, cell.ScaleY() * 100) + '%';
    if (RotationInDegrees(cell.Rotation()) != 0)
        text += Dot() + "rotation " + Degrees(cell.Rotation());
    return text;
}

QString Effects(const CXSheetCell& cell) {
    QStringList effects;
    if (cell.Transparency() > 0)
        effects << "Transparency " + Number(cell.Transparency()) + '%';
    if (cell.BlurX() > 1 || cell.BlurY() > 1)
        effects << "Blur " + Pair(cell.BlurX(), cell.BlurY());
    return effects.join(Dot());
}

QString NoteText(const CSheetNote& note) {
    QStringList words;
    if (note.mark != SheetMark::None)
        words << ToQt(TextOf(note.mark));
    if (note.color != NoteColor::None)
        words << ToQt(TextOf(note.color)).toLower();
    QString text = words.isEmpty() ? QString() : "<b>" + words.join(Dot()) + "</b>";
    if (!note.comment.empty())
        text += (text.isEmpty() ? "" : "<br>") + ToQt(note.comment).toHtmlEscaped().replace('\n', "<br>");
    return text;
}

// What is noted at a frame; empty for nothing.
QString FrameToolTip(const CSceneModel& model, int frame) {
    const CSheetNote& note = model.Scene().frameNotes.At(frame);
    return note.IsEmpty() ? QString() : QString("Frame %1<br>").arg(frame + 1) + NoteText(note);
}

QString ButtonToolTip(const CSceneModel& model, const CHeaderHit& hit) {
    if (hit.button == HeaderButton::Camera)
        return "Move the camera in the camera view";
    const QString level = LevelTitle(model, hit.level);
    switch (hit.button) {
    case HeaderButton::Blur:
        return "Blur of the cel at the current frame<br>" + level;
    case HeaderButton::Transparency:
        return "Transparency of the cel at the current frame<br>" + level;
    default:
        return "Move this level's cels in the camera view<br>" + level;
    }
}

QString FoldedToolTip(const CSceneModel& model, int level) {
    return LevelTitle(model, level) + "<br>Folded: a click on the number opens it";
}

QString CameraToolTip(const CSceneModel& model, int frame) {
    const CCameraFrame& camera = model.Scene().camera.At(frame);
    return QString("<b>Camera</b>") + Dot() + QString("frame %1").arg(frame + 1) + "<br>Pan " +
           Number(camera.panX) + ", " + Number(camera.panY) + Dot() + "zoom " + Number(camera.zoom * 100) + '%' +
           Dot() + "rotation " + Degrees(camera.rotation);
}

QString SpokenToolTip(const CSceneModel& model, int frame) {
    const CSpokenLine* line = model.Scene().dialogue.At(frame);
    if (line == nullptr)
        return {};
    const QString speaker = line->speaker.empty() ? QString() : ToQt(line->speaker).toHtmlEscaped() + ": ";
    return speaker + "<i>" + ToQt(line->text).toHtmlEscaped() + "</i>" + Dot() +
           QString("frames %1 to %2").arg(line->firstFrame + 1).arg(line->lastFrame + 1);
}

QString ShapeText(const CSoundPlacement& sound) {
    QString text;
    if (sound.trimIn > 0 || sound.trimOut > 0)
        text += Dot() + "trimmed";
    if (sound.level != 0)
        text += Dot() + QString("%1%2 dB").arg(sound.level > 0 ? "+" : "").arg(sound.level / 10.0);
    return text;
}

// The sound that is heard at a frame, or starts there, and what is spoken; empty when there is neither.
QString SoundToolTip(const CSceneModel& model, const CXSheetSounds& sounds, int frame) {
    const auto& placements = sounds.Placements();
    auto sound = std::ranges::find(placements, frame, &CSoundPlacement::frame);
    if (sound == placements.end() && sounds.HeardAt(frame) >= 0)
        sound = placements.begin() + sounds.HeardAt(frame);
    QString spoken = SpokenToolTip(model, frame);
    if (sound == placements.end())
        return spoken;
    const int frames = sounds.FramesOf(*sound);
    return "<b>" + ToQt(sound->name).toHtmlEscaped() + "</b>" + Dot() +
           QString("frames %1 to %2").arg(sound->frame + 1).arg(sound->frame + frames) + ShapeText(*sound) +
           (spoken.isEmpty() ? QString() : "<br>" + spoken) +
           "<br>Drag it with Ctrl held to have it start at another frame, with Ctrl and Shift to trim its nearer "
           "end";
}

} // namespace

std::string NoteStatus(const CSceneModel& model) {
    const CScene& scene = model.Scene();
    QStringList texts;
    const auto add = [&texts](const CSheetNote& note) {
        QStringList parts;
        if (note.mark != SheetMark::None)
            parts << ToQt(TextOf(note.mark));
        if (!note.comment.empty())
            parts << ToQt(note.comment).simplified();
        if (!parts.isEmpty())
            texts << parts.join(": ");
    };
    if (scene.xsheet.HasLevel(model.cursorLevel) && scene.xsheet.HasFrame(model.cursorFrame))
        add(scene.xsheet.Cell(model.cursorLevel, model.cursorFrame).Note());
    if (scene.xsheet.HasFrame(model.cursorFrame))
        add(scene.frameNotes.At(model.cursorFrame));
    return FromQt(texts.join(Dot()));
}

QString CellToolTip(const CSceneModel& model, CSheetCell place, const QPixmap& thumbnail) {
    const CXSheetCell& cell = model.Scene().xsheet.Cell(place.level, place.frame);
    QString note = NoteText(cell.Note());
    if (!cell.IsUsed())
        return note;
    QString text =
        "<b>" + ToQt(cell.CelName()).toHtmlEscaped() + "</b>" + Dot() +
        (cell.IsPicture() ? QString("picture") : "folder \"" + ToQt(cell.FolderName()).toHtmlEscaped() + '"');
    if (cell.Size() != CSize{})
        text += Dot() + QString("%1 x %2").arg(cell.Size().width).arg(cell.Size().height);
    text += "<br>" + LevelTitle(model, place.level) + Dot() + QString("frame %1").arg(place.frame + 1);
    text += "<br>" + Placement(cell);
    if (const QString effects = Effects(cell); !effects.isEmpty())
        text += "<br>" + effects;
    text = "<div style=\"white-space:nowrap\">" + text + "</div>";
    return (note.isEmpty() ? text : text + "<hr>" + note) + ImageTag(thumbnail);
}

QString SheetToolTip(const CSceneModel& model, const CXSheetGeometry& geometry, const CXSheetSounds& sounds,
                     CAssetThumbnails& thumbnails, QPoint point) {
    const std::optional<int> level = point.y() < geometry.headerHeight ? geometry.LevelAt(point) : std::nullopt;
    if (level && geometry.IsFolded(*level))
        return FoldedToolTip(model, *level);
    if (point.y() < geometry.buttonSize) {
        const std::optional<CHeaderHit> hit = geometry.HeaderButtonAt(point.x());
        return hit ? ButtonToolTip(model, *hit) : QString();
    }
    if (const std::optional<int> frame = geometry.CameraFrameAt(point))
        return CameraToolTip(model, *frame);
    if (const std::optional<int> frame = geometry.SoundFrameAt(point))
        return SoundToolTip(model, sounds, *frame);
    const CXSheet& xsheet = model.Scene().xsheet;
    if (point.x() < geometry.frameColumnWidth && point.y() >= geometry.headerHeight) {
        const int frame = geometry.YToFrame(point.y());
        return xsheet.HasFrame(frame) ? FrameToolTip(model, frame) : QString();
    }
    const std::optional<CSheetCell> place = geometry.CellAt(point);
    if (!place || !xsheet.HasLevel(place->level) || !xsheet.HasFrame(place->frame))
        return {};
    const CXSheetCell& cell = xsheet.Cell(place->level, place->frame);
    if (!cell.IsUsed())
        return CellToolTip(model, *place, {});
    const Path file = AssetFilePath(model.Paths().SceneFolder(), cell.FolderName(), cell.CelName());
    return CellToolTip(model, *place, thumbnails.Find(file));
}

QString SoundDragText(const CSoundDrag& drag) {
    const CSoundPlacement& placed = drag.Placed();
    const QString name = ToQt(placed.name);
    if (drag.Grip() != SoundGrip::Whole)
        return name + QString(" from frame %1 to %2").arg(placed.frame + 1).arg(placed.frame + drag.Frames());
    const int moved = placed.frame - drag.From();
    const QString by = moved == 0 ? QString("where it was")
                                  : QString("%1 %2").arg(std::abs(moved)).arg(moved > 0 ? "later" : "earlier");
    return name + QString(" from frame %1, ").arg(placed.frame + 1) + by;
}

} // namespace velmor
