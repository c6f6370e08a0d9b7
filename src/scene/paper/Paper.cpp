#include "scene/paper/Paper.h"

#include "render/FrameComposer.h"
#include "scene/SceneModel.h"
#include "scene/paper/LightTable.h"
#include "scene/paper/Onion.h"

#include <algorithm>
#include <cmath>

namespace velmor {

void CPaper::Order(std::vector<CSkinOrder>& orders, const CDrawing& drawing, CSkinOrder order) const {
    order.file = FileOf(m_model, drawing);
    if (const std::optional<CFileIdentity> identity = IdentifyFile(order.file)) {
        order.identity = *identity;
        order.withPaint = m_onion.Settings().withPaint;
        orders.push_back(std::move(order));
    }
}

CPlacement CPaper::Placed(const CPegPlace& pegs) const {
    const int halfWidth = m_model.celImg.Width() / 2;
    const int halfHeight = m_model.celImg.Height() / 2;
    CPlacement placement;
    placement.centreX = halfWidth + pegs.x;
    placement.centreY = halfHeight + pegs.y;
    placement.angle = pegs.angle;
    return placement;
}

// The furthest one lies lowest.
void CPaper::OrderNeighbours(std::vector<CSkinOrder>& orders, std::span<const CNeighbour> neighbours, int most,
                             ColorRef tint) const {
    const COnionSettings& settings = m_onion.Settings();
    for (int i = std::min(most, static_cast<int>(neighbours.size())) - 1; i >= 0; --i) {
        CSkinOrder order;
        order.placement = Placed({});
        order.tint = tint;
        order.percent = settings.StrengthOf(i);
        order.over = settings.over;
        Order(orders, neighbours[static_cast<std::size_t>(i)].drawing, order);
    }
}

bool CPaper::Refresh() {
    const COnionSettings& settings = m_onion.Settings();
    const CDrawing edited = EditedDrawing(m_model);
    std::vector<CSkinOrder> orders;
    if (m_table.IsShown() && !edited.IsEmpty())
        for (const CPinnedDrawing& pin : m_table.Pins())
            if (pin.drawing != edited) {
                CSkinOrder order;
                order.placement = Placed(pin.pegs);
                order.tint = settings.tintTable;
                order.percent = settings.strengthTable;
                Order(orders, pin.drawing, order);
            }
    if (settings.shown && !edited.IsEmpty()) {
        const CNeighbours neighbours =
            NeighboursOfEdited(m_model, settings.order, std::max(settings.before, settings.after));
        OrderNeighbours(orders, neighbours.before, settings.before, settings.tintBefore);
        OrderNeighbours(orders, neighbours.after, settings.after, settings.tintAfter);
    }
    return m_cel.Lay(std::move(orders), {m_model.celImg.Width(), m_model.celImg.Height()}, m_inks);
}

std::optional<std::size_t> CPaper::PinAt(CRealPoint point, double reach) {
    std::optional<std::size_t> uppermost;
    const std::span<const CPinnedDrawing> pins = m_table.Pins();
    const CDrawing edited = EditedDrawing(m_model);
    for (std::size_t i = pins.size(); m_table.IsShown() && i > 0; --i) {
        if (pins[i - 1].drawing == edited)
            continue;
        if (HasInkNear(pins[i - 1], point, reach))
            return i - 1;
        if (!uppermost)
            uppermost = i - 1;
    }
    return uppermost;
}

bool CPaper::HasInkNear(const CPinnedDrawing& pin, CRealPoint point, double reach) {
    const Path file = FileOf(m_model, pin.drawing);
    const std::optional<CFileIdentity> identity = IdentifyFile(file);
    const std::shared_ptr<const CInk> ink =
        identity ? m_inks.Get(file, *identity, m_onion.Settings().withPaint) : nullptr;
    if (!ink)
        return false;
    const CPlacement placed = Placed(pin.pegs);
    const double x = point.x - placed.centreX, y = point.y - placed.centreY;
    const double c = std::cos(placed.angle), s = std::sin(placed.angle);
    const int column = static_cast<int>(std::floor(x * c - y * s)) + ink->size.width / 2;
    const int row = static_cast<int>(std::floor(x * s + y * c)) + ink->size.height / 2;
    const int around = static_cast<int>(std::ceil(reach));
    for (int inkY = row - around; inkY <= row + around; ++inkY)
        for (int inkX = column - around; inkX <= column + around; ++inkX)
            if (ink->At(inkX, inkY) != 0)
                return true;
    return false;
}

void CPaper::OrderInFrame(std::vector<CSkinOrder>& orders, std::span<const CNeighbour> neighbours, int most,
                          ColorRef tint) const {
    const CScene& scene = m_model.Scene();
    const CSize frame = scene.geometry.Frame();
    for (int i = std::min(most, static_cast<int>(neighbours.size())) - 1; i >= 0; --i) {
        const CNeighbour& neighbour = neighbours[static_cast<std::size_t>(i)];
        CSkinOrder order;
        order.placement = PlaceCell(scene.xsheet.Cell(m_model.cursorLevel, neighbour.frame),
                                    scene.camera.At(m_model.cursorFrame), {frame, frame, 1}, false);
        order.tint = tint;
        order.percent = m_onion.Settings().StrengthOf(i);
        Order(orders, neighbour.drawing, order);
    }
}

bool CPaper::RefreshCamera() {
    const COnionSettings& settings = m_onion.Settings();
    const CXSheet& sheet = m_model.Scene().xsheet;
    const CSheetCell cursor = m_model.CursorCell();
    std::vector<CSkinOrder> orders;
    if (settings.inCamera && m_model.sceneOpen && sheet.HasLevel(cursor.level) && sheet.HasFrame(cursor.frame)) {
        const CNeighbours neighbours =
            NeighboursInLevel(sheet, cursor, DrawingOf(sheet.Cell(cursor.level, cursor.frame)),
                              std::max(settings.before, settings.after));
        OrderInFrame(orders, neighbours.before, settings.before, settings.tintBefore);
        OrderInFrame(orders, neighbours.after, settings.after, settings.tintAfter);
    }
    return m_camera.Lay(std::move(orders), m_model.Scene().geometry.Frame(), m_inks);
}

} // namespace velmor
