#pragma once

#include "views/camera/CameraHand.h"
#include "xsheet/CameraMap.h"

namespace velmor {

class CVelmorltDoc;

/// A hand that places cells of the sheet. What it drags is one step of undo, and can be given up.
class CCellHand : public ICameraHand {
public:
    [[nodiscard]] bool Press(const CCameraHandPoint& at, const CViewMapping& mapping) final;
    void Release() final;
    void GiveUp() final;

protected:
    static constexpr double reach = 7; ///< client pixels within which something is taken hold of

    /// The document outlives the object.
    explicit CCellHand(CVelmorltDoc& doc) : m_doc(doc) {}

    /// Whether there is something to take hold of, which is held from now on.
    virtual bool TakeHold(const CCameraHandPoint& at, const CViewMapping& mapping) = 0;
    virtual void LetGo() = 0;

    /// Each frame is seen through its own camera.
    CCameraMap CameraAt(int frame) const;
    static double Distance(CRealPoint a, CRealPoint b);

    CVelmorltDoc& m_doc;
};

} // namespace velmor
