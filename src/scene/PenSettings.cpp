#include "scene/PenSettings.h"

#include "scene/Settings.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace velmor {

namespace {

constexpr int leastPercent = 1;
constexpr int mostPercent = 1000;
constexpr int mostLength = 500;

struct CRangeSettings {
    const CIntSetting& isOn;
    const CIntSetting& least;
    const CIntSetting& largest;
};

constexpr CRangeSettings penKeys{setting::penPressure, setting::penLeast, setting::penLargest};
constexpr CRangeSettings brushKeys{setting::brushPressure, setting::brushLeast, setting::brushLargest};

CPressureRange Read(const CProfile& profile, const CRangeSettings& keys) {
    return {Get(profile, keys.isOn) != 0, std::clamp(Get(profile, keys.least), leastPercent, mostPercent),
            std::clamp(Get(profile, keys.largest), leastPercent, mostPercent)};
}

void Write(CProfile& profile, const CRangeSettings& keys, const CPressureRange& range) {
    Set(profile, keys.isOn, range.isOn ? 1 : 0);
    Set(profile, keys.least, range.least);
    Set(profile, keys.largest, range.largest);
}

// A third as it is made is kept as a third, which is no whole percentage.
double ReadPlace(const CProfile& profile, const CIntSetting& key) {
    const int percent = Get(profile, key);
    if (percent == 33 || percent == 67)
        return percent == 33 ? 1.0 / 3 : 2.0 / 3;
    return std::clamp(percent, 0, 100) / 100.0;
}

void WritePlace(CProfile& profile, const CIntSetting& key, double place) {
    Set(profile, key, static_cast<int>(std::lround(std::clamp(place, 0.0, 1.0) * 100)));
}

bool IsPercentage(int value) {
    return value >= leastPercent && value <= mostPercent;
}

} // namespace

double CPenSettings::Width(const CPressureRange& range, double width, double pressure) const {
    return width * (range.least + (range.largest - range.least) * curve.Of(pressure)) / 100;
}

std::optional<std::string> FaultOf(const CPenSettings& settings) {
    for (const CPressureRange& range : {settings.pens, settings.brushes})
        if (!IsPercentage(range.least) || !IsPercentage(range.largest))
            return "A size must be from 1 to 1000 percent";
    if (settings.stabilizerLength < 1 || settings.stabilizerLength > mostLength)
        return "The length of the stabilizer must be from 1 to 500 pixels";
    return std::nullopt;
}

CPenSettings ReadPenSettings(const CProfile& profile) {
    CPenSettings settings;
    settings.pens = Read(profile, penKeys);
    settings.brushes = Read(profile, brushKeys);
    settings.curve = {{ReadPlace(profile, setting::pressureCurveX1), ReadPlace(profile, setting::pressureCurveY1)},
                      {ReadPlace(profile, setting::pressureCurveX2), ReadPlace(profile, setting::pressureCurveY2)}};
    settings.stabilizer = static_cast<StabilizerKind>(std::clamp(Get(profile, setting::stabilizer), 0, 2));
    settings.stabilizerLength = std::clamp(Get(profile, setting::stabilizerLength), 1, mostLength);
    return settings;
}

void WritePenSettings(CProfile& profile, const CPenSettings& settings) {
    Write(profile, penKeys, settings.pens);
    Write(profile, brushKeys, settings.brushes);
    WritePlace(profile, setting::pressureCurveX1, settings.curve.first.x);
    WritePlace(profile, setting::pressureCurveY1, settings.curve.first.y);
    WritePlace(profile, setting::pressureCurveX2, settings.curve.second.x);
    WritePlace(profile, setting::pressureCurveY2, settings.curve.second.y);
    Set(profile, setting::stabilizer, static_cast<int>(settings.stabilizer));
    if (settings.stabilizer != StabilizerKind::None)
        Set(profile, setting::lastStabilizer, static_cast<int>(settings.stabilizer));
    Set(profile, setting::stabilizerLength, settings.stabilizerLength);
}

CPenSettings WithPressureToggled(CPenSettings settings) {
    settings.pens.isOn = settings.brushes.isOn = !settings.HasPressure();
    return settings;
}

CPenSettings WithStabilizerToggled(CPenSettings settings, const CProfile& profile) {
    const auto last = static_cast<StabilizerKind>(std::clamp(Get(profile, setting::lastStabilizer), 1, 2));
    settings.stabilizer = settings.stabilizer == StabilizerKind::None ? last : StabilizerKind::None;
    return settings;
}

} // namespace velmor
