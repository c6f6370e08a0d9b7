#pragma once

#include "views/cel/CelDisplay.h"
#include "views/cel/CelOverlay.h"
#include "views/cel/SelectionMarks.h"

#include <functional>

class QRegion;
class QWidget;

namespace velmor {

class CCelNavigator;
class CProfile;

/// What the cel editor has on the screen: the image, the marks of what is selected, what is drawn over them for the
/// pointer and the tool, and the navigator. Repaints what of it has changed and no more.
class CCelSurface {
public:
    /// `show` brings an image point into the middle of the view. Viewport and profile outlive the object.
    CCelSurface(QWidget& viewport, CProfile& profile, std::function<void(CRealPoint)> show);

    CSize Size() const { return m_display.Size(); }
    bool IsEmpty() const { return m_display.IsEmpty(); }
    /// Whether lines are smooth where the image is shown smaller than it is. Remembered, as the navigator is.
    bool IsSmooth() const { return m_isSmooth; }
    void ToggleSmooth();
    bool HasNavigator() const { return m_hasNavigator; }
    /// Follow() is to be called next.
    void ToggleNavigator();

    /// See CCelDisplay; the view is repainted.
    CStatus Rebuild(const CCelImg& image, const CGridSettings& grid, const CSkinSheet& skins);
    void ShowInstead(CDisplayBitmap bitmap);
    /// Pixels of the image have changed.
    void Update(const CCelImg& image, const CGridSettings& grid, const CSkinSheet& skins, const CRect& changed,
                const CViewMapping& mapping);
    /// The view has come to show this, of an image or of none.
    void Follow(const CViewMapping& mapping, bool hasImage);

    void SetOverlay(const CCelOverlay& overlay);
    void SetMarks(const CSelectionMarks::CState& marks);

    /// The image, or the ground where there is none, within what is exposed.
    void PaintImage(QPainter& painter, const QRegion& exposed, const CViewMapping& mapping);
    void PaintOverlay(QPainter& painter) const { Draw(painter, m_overlay); }

private:
    QWidget& m_viewport;
    CProfile& m_profile;
    CCelDisplay m_display;
    CCelNavigator* m_navigator; ///< a child of the viewport
    bool m_isSmooth;
    bool m_hasNavigator;
    CCelOverlay m_overlay;
    CSelectionMarks::CState m_marks;
};

} // namespace velmor
