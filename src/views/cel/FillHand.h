#pragma once

#include "scene/CelFilling.h"
#include "views/cel/CelHand.h"

#include <vector>

namespace velmor {

/// The hand of the bucket and the area fill. Plain fills are left to the hand of the painting tools.
class CFillHand final : public ICelHand {
public:
    /// All outlive the object.
    CFillHand(const CSceneModel& model, CCelFilling& filling, ICelHand& plain)
        : m_model(model), m_filling(filling), m_plain(plain) {}

    [[nodiscard]] bool Press(CelTool tool, const CHandPoint& at, const CViewMapping& mapping) override;
    CPaintResult Move(std::span<const CHandPoint> way, const CViewMapping& mapping) override;
    CPaintResult Release(const CHandPoint& at, const CViewMapping& mapping) override;
    void Cancel() override;
    bool IsQuick() const override { return m_isPlain && m_plain.IsQuick(); }
    void Outline(CCelOverlay& overlay, const CViewMapping& mapping) const override;

private:
    const CSceneModel& m_model;
    CCelFilling& m_filling;
    ICelHand& m_plain;
    bool m_isPlain = false;        ///< what is going on now
    std::vector<CRealPoint> m_way; ///< of the image, for what is shown
};

} // namespace velmor
