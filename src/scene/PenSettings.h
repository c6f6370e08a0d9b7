#pragma once

#include "image/stroke/PressureCurve.h"
#include "image/stroke/Stabilizer.h"

#include <optional>
#include <string>

namespace velmor {

class CProfile;

/// What pressure does to the width of a tip.
struct CPressureRange {
    bool isOn = false;
    int least = 20;    ///< percent of the chosen width, at the lightest touch
    int largest = 100; ///< at the hardest

    bool operator==(const CPressureRange&) const = default;
};

/// How the pen of a tablet, and the hand that holds it, are taken.
struct CPenSettings {
    CPressureRange pens;
    CPressureRange brushes;
    CPressureCurve curve;
    StabilizerKind stabilizer = StabilizerKind::None;
    int stabilizerLength = 40; ///< in pixels of the screen

    /// A width under some pressure, 0 to 1.
    double Width(const CPressureRange& range, double width, double pressure) const;
    bool HasPressure() const { return pens.isOn || brushes.isOn; }

    bool operator==(const CPenSettings&) const = default;
};

/// What is wrong with them, for the user; nothing when they can be used.
std::optional<std::string> FaultOf(const CPenSettings& settings);

/// Numbers that cannot be used are brought into their ranges.
CPenSettings ReadPenSettings(const CProfile& profile);
void WritePenSettings(CProfile& profile, const CPenSettings& settings);

/// The settings after pressure was switched on for pens and brushes, or off where either had it.
CPenSettings WithPressureToggled(CPenSettings settings);
/// The settings after the stabilizer was switched off, or on as it was last.
CPenSettings WithStabilizerToggled(CPenSettings settings, const CProfile& profile);

} // namespace velmor
