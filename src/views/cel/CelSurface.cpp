#include "views/cel/CelSurface.h"

#include "scene/Settings.h"
#include "views/cel/CelNavigator.h"

#include <QPainter>
#include <QRegion>
#include <QWidget>

#include <cmath>
#include <utility>

namespace velmor {

namespace {

QRect ToRect(const CRect& rect) {
    return {rect.x, rect.y, rect.endX - rect.x, rect.endY - rect.y};
}

} // namespace

CCelSurface::CCelSurface(QWidget& viewport, CProfile& profile, std::function<void(CRealPoint)> show)
    : m_viewport(viewport),
      m_profile(profile),
      m_navigator(new CCelNavigator(m_display, std::move(show), &viewport)),
      m_isSmooth(Get(profile, setting::celSmoothDisplay) != 0),
      m_hasNavigator(Get(profile, setting::celNavigator) != 0) {
    m_viewport.setAttribute(Qt::WA_OpaquePaintEvent);
    m_display.SetSmooth(m_isSmooth);
}

void CCelSurface::ToggleSmooth() {
    m_isSmooth = !m_isSmooth;
    Set(m_profile, setting::celSmoothDisplay, m_isSmooth ? 1 : 0);
    m_display.SetSmooth(m_isSmooth);
    m_viewport.update();
}

void CCelSurface::ToggleNavigator() {
    m_hasNavigator = !m_hasNavigator;
    Set(m_profile, setting::celNavigator, m_hasNavigator ? 1 : 0);
}

CStatus CCelSurface::Rebuild(const CCelImg& image, const CGridSettings& grid, const CSkinSheet& skins) {
    m_viewport.update();
    return m_display.Rebuild(image, grid, skins);
}

void CCelSurface::ShowInstead(CDisplayBitmap bitmap) {
    m_display.ShowInstead(std::move(bitmap));
    m_viewport.update();
}

void CCelSurface::Update(const CCelImg& image, const CGridSettings& grid, const CSkinSheet& skins,
                         const CRect& changed, const CViewMapping& mapping) {
    m_display.Update(image, grid, skins, changed);
    m_navigator->Repaint(changed);
    // Where pixels are mixed, each shows beside itself, too.
    const int beside = m_display.IsMixed(mapping) ? static_cast<int>(std::ceil(mapping.zoom.Factor())) + 1 : 0;
    m_viewport.update(ToRect(mapping.ToClient(changed)).adjusted(-beside, -beside, beside, beside) &
                      m_viewport.rect());
}

void CCelSurface::Follow(const CViewMapping& mapping, bool hasImage) {
    m_navigator->Follow(mapping, m_hasNavigator && hasImage);
}

void CCelSurface::SetOverlay(const CCelOverlay& overlay) {
    if (overlay == m_overlay)
        return;
    m_viewport.update(RegionOf(m_overlay) + RegionOf(overlay));
    m_overlay = overlay;
}

void CCelSurface::SetMarks(const CSelectionMarks::CState& marks) {
    if (marks == m_marks)
        return;
    m_viewport.update(m_marks.around.united(marks.around));
    m_marks = marks;
}

void CCelSurface::PaintImage(QPainter& painter, const QRegion& exposed, const CViewMapping& mapping) {
    if (m_display.IsEmpty()) {
        painter.fillRect(exposed.boundingRect(), m_viewport.palette().window());
        return;
    }
    // A little more than is exposed, for scales at which the edges of the two do not meet.
    for (const QRect& part : exposed)
        m_display.Paint(painter, mapping, part.adjusted(-1, -1, 1, 1) & m_viewport.rect());
}

} // namespace velmor
