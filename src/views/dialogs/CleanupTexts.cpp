#include "views/dialogs/CleanupTexts.h"

#include "views/AssetThumbnails.h"
#include "views/Text.h"
#include "views/widgets/TextLines.h"

#include <QStringList>
#include <QTransform>
#include <algorithm>
#include <cmath>

namespace velmor {

namespace {

constexpr std::size_t mostNamesShown = 20;

QString Degrees(double degrees) {
    return QString::number(degrees, 'f', 2) + QChar(0x00b0);
}

QPainterPath OutlineOf(const CPegs& pegs, std::size_t hole) {
    QPainterPath path;
    const bool isRound = hole == 1;
    const double length = isRound ? pegs.round : pegs.slotLength;
    const double width = isRound ? pegs.round : pegs.slotWidth;
    const QRectF rect(-length / 2, -width / 2, length, width);
    if (isRound)
        path.addEllipse(rect);
    else
        path.addRect(rect);
    path.moveTo(-width, 0);
    path.lineTo(width, 0);
    path.moveTo(0, -width);
    path.lineTo(0, width);
    return path;
}

} // namespace

QString HolesText(const CPegs& pegs) {
    return QString("%1, turned by %2").arg(QString(pegs.StandardName()), Degrees(pegs.degrees));
}

QString SearchText(int looked, int all, const std::vector<std::string>& without) {
    if (looked < all)
        return QString("Looking for peg holes: %1 of %2").arg(looked).arg(all);
    if (without.empty())
        return "Peg holes were found on " + Counted(all, "drawing", "drawings") + ".";
    QStringList names;
    for (std::size_t i = 0; i < std::min(without.size(), mostNamesShown); ++i)
        names << ToQt(without[i]);
    if (without.size() > mostNamesShown)
        names << "...";
    return QString("No peg holes on %1 of %2, not put on register: %3")
        .arg(without.size())
        .arg(all)
        .arg(names.join(", "));
}

QString PreviewText(const CCleanupPreview& preview) {
    if (!preview.status)
        return ToQt(preview.status.Message());
    const CCleanedUp& done = preview.done;
    QStringList parts{QString("%1 x %2 pixels").arg(preview.after.Width()).arg(preview.after.Height())};
    if (done.specks > 0)
        parts << Counted(done.specks, "speck removed", "specks removed");
    if (std::abs(done.degrees) >= 0.005)
        parts << "turned by " + Degrees(done.degrees);
    if (done.pegs)
        parts << QString("peg holes found (%1 % sure)").arg(std::lround(done.pegs->confidence * 100));
    if (!done.registered)
        parts << ToQt(done.registered.Message());
    return parts.join(", ");
}

CSplitPreview::CSide SideOf(const CCelImg& image, const std::optional<CPegs>& pegs) {
    CSplitPreview::CSide side{ToQImage(image), {}};
    if (!pegs)
        return side;
    const auto middles = pegs->Middles();
    for (std::size_t hole = 0; hole < middles.size(); ++hole) {
        QTransform place; // a pixel's middle is half a pixel from its corner; y grows downwards here
        place.translate(middles[hole].x + 0.5, image.Height() - 0.5 - middles[hole].y);
        place.rotate(-pegs->degrees);
        side.marks.push_back(place.map(OutlineOf(*pegs, hole)));
    }
    return side;
}

} // namespace velmor
