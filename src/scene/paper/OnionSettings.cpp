#include "scene/paper/OnionSettings.h"

#include "scene/Settings.h"

#include <algorithm>

namespace velmor {

namespace {

int GetPercent(const CProfile& profile, const CIntSetting& which) {
    return std::clamp(Get(profile, which), 1, 100);
}

int GetCount(const CProfile& profile, const CIntSetting& which) {
    return std::clamp(Get(profile, which), 0, COnionSettings::mostSkins);
}

ColorRef GetColor(const CProfile& profile, const CIntSetting& which) {
    return static_cast<ColorRef>(Get(profile, which)) & 0xffffff;
}

} // namespace

int COnionSettings::StrengthOf(int step) const {
    double percent = strength;
    for (int i = 0; i < step; ++i)
        percent *= kept / 100.0;
    return std::max(static_cast<int>(percent), 1);
}

COnionSettings ReadOnionSettings(const CProfile& profile) {
    COnionSettings settings;
    settings.shown = Get(profile, setting::onionShown) != 0;
    settings.inCamera = Get(profile, setting::onionInCamera) != 0;
    settings.order = Get(profile, setting::onionOrder) == 1 ? DrawingOrder::Folder : DrawingOrder::Sheet;
    settings.before = GetCount(profile, setting::onionBefore);
    settings.after = GetCount(profile, setting::onionAfter);
    settings.tintBefore = GetColor(profile, setting::onionTintBefore);
    settings.tintAfter = GetColor(profile, setting::onionTintAfter);
    settings.strength = GetPercent(profile, setting::onionStrength);
    settings.kept = GetPercent(profile, setting::onionKept);
    settings.withPaint = Get(profile, setting::onionPaint) != 0;
    settings.over = Get(profile, setting::onionOver) != 0;
    settings.tintTable = GetColor(profile, setting::lightTableTint);
    settings.strengthTable = GetPercent(profile, setting::lightTableStrength);
    return settings;
}

void WriteOnionSettings(CProfile& profile, const COnionSettings& settings) {
    Set(profile, setting::onionShown, settings.shown ? 1 : 0);
    Set(profile, setting::onionInCamera, settings.inCamera ? 1 : 0);
    Set(profile, setting::onionOrder, static_cast<int>(settings.order));
    Set(profile, setting::onionBefore, settings.before);
    Set(profile, setting::onionAfter, settings.after);
    Set(profile, setting::onionTintBefore, static_cast<int>(settings.tintBefore));
    Set(profile, setting::onionTintAfter, static_cast<int>(settings.tintAfter));
    Set(profile, setting::onionStrength, settings.strength);
    Set(profile, setting::onionKept, settings.kept);
    Set(profile, setting::onionPaint, settings.withPaint ? 1 : 0);
    Set(profile, setting::onionOver, settings.over ? 1 : 0);
    Set(profile, setting::lightTableTint, static_cast<int>(settings.tintTable));
    Set(profile, setting::lightTableStrength, settings.strengthTable);
}

} // namespace velmor
