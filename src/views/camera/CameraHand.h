#pragma once

#include "image/RealPoint.h"
#include "views/ViewMapping.h"

#include <QtCore/qnamespace.h>

#include <string>

class QPainter;

namespace velmor {

struct CPictureMapping;

/// Where the mouse is over the camera picture, and what is held down meanwhile.
struct CCameraHandPoint {
    CRealPoint at; ///< in the client area
    Qt::KeyboardModifiers keys;
};

/// What the left button does with something that it takes hold of over the camera picture; where no hand does, the
/// drag is camera input. Each call gets the mapping as it is then.
class ICameraHand {
public:
    virtual ~ICameraHand() = default;

    /// The cursor over what it would take hold of there, by the name of its drawing; empty where there is nothing.
    virtual std::string CursorAt(CRealPoint client, const CViewMapping& mapping) const = 0;
    /// False where there is nothing to take hold of.
    [[nodiscard]] virtual bool Press(const CCameraHandPoint& at, const CViewMapping& mapping) = 0;
    virtual void Move(const CCameraHandPoint& to, const CViewMapping& mapping) = 0;
    virtual void Release() = 0;
    /// Everything is as it was at the press.
    virtual void GiveUp() = 0;
    /// Paints what is dragged out.
    virtual void Paint(QPainter&, const CPictureMapping&) const {}
};

} // namespace velmor
