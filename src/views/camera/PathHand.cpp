#include "views/camera/PathHand.h"

#include "scene/CellDragging.h"
#include "scene/SceneModel.h"
#include "scene/VelmorltDoc.h"
#include "views/camera/CameraMarksPainter.h"
#include "xsheet/CameraMap.h"

#include <QPainter>
#include <QPolygonF>

#include <utility>

namespace velmor {

namespace {

constexpr QColor rimColor(40, 40, 40);
constexpr QColor pathColor(255, 214, 90);

} // namespace

std::string CPathHand::CursorAt(CRealPoint, const CViewMapping&) const {
    return m_isOn ? "cursor-path" : "";
}

bool CPathHand::Press(const CCameraHandPoint& at, const CViewMapping& mapping) {
    if (!m_isOn)
        return false;
    m_drawn.clear();
    m_keys = m_doc.CellDragging().KeysOfPath(); // which has said why not
    if (m_keys)
        Add(at.at, mapping);
    return m_keys.has_value();
}

void CPathHand::Add(CRealPoint client, const CViewMapping& mapping) {
    const CRealPoint point = mapping.ToImage(client);
    if (m_drawn.empty() || m_drawn.back() != point)
        m_drawn.push_back(point);
}

void CPathHand::Move(const CCameraHandPoint& to, const CViewMapping& mapping) {
    if (m_keys)
        Add(to.at, mapping);
}

void CPathHand::Release() {
    const std::optional<CInbetweenKeys> keys = std::exchange(m_keys, std::nullopt);
    std::vector<CRealPoint> stage = std::exchange(m_drawn, {});
    if (!keys || stage.size() < 2) // a click
        return;
    const CScene& scene = m_doc.Model().Scene();
    const CCameraMap camera(scene.camera.At(m_doc.Model().cursorFrame), scene.geometry.Frame());
    for (CRealPoint& point : stage)
        point = camera.ToStage(point);
    m_doc.CellDragging().PlaceAlong(*keys, stage);
}

void CPathHand::GiveUp() {
    m_keys.reset();
    m_drawn.clear();
}

void CPathHand::Paint(QPainter& painter, const CPictureMapping& mapping) const {
    if (m_drawn.size() < 2)
        return;
    QPolygonF line;
    for (const CRealPoint& point : m_drawn)
        line.append(mapping.ToView(point));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(rimColor, 4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(line);
    painter.setPen(QPen(pathColor, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(line);
}

} // namespace velmor
