#pragma once

#include "views/camera/CameraHand.h"
#include "xsheet/Inbetween.h"

#include <functional>
#include <optional>
#include <vector>

namespace velmor {

class CVelmorltDoc;

/// Draws the path that the cells between the first and the last key of the selection are to go along.
class CPathHand final : public ICameraHand {
public:
    /// The document outlives the object.
    explicit CPathHand(CVelmorltDoc& doc) : m_doc(doc) {}

    /// Nothing can be drawn while it is off, as it comes.
    bool IsOn() const { return m_isOn; }
    void SetOn(bool isOn) { m_isOn = isOn; }

    std::string CursorAt(CRealPoint client, const CViewMapping& mapping) const override;
    [[nodiscard]] bool Press(const CCameraHandPoint& at, const CViewMapping& mapping) override;
    void Move(const CCameraHandPoint& to, const CViewMapping& mapping) override;
    void Release() override;
    void GiveUp() override;
    void Paint(QPainter& painter, const CPictureMapping& mapping) const override;

private:
    void Add(CRealPoint client, const CViewMapping& mapping);

    CVelmorltDoc& m_doc;
    bool m_isOn = false;
    std::optional<CInbetweenKeys> m_keys; ///< while it draws
    std::vector<CRealPoint> m_drawn;      ///< in the picture
};

} // namespace velmor
