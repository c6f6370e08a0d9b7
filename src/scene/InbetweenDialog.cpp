#include "scene/InbetweenDialog.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace velmor {

namespace {

constexpr int typeCount = static_cast<int>(InbetweenType::Drawn) + 1;

// A remembered choice; the first one where the profile holds none of those offered.
int Remembered(const CProfile& profile, const CIntSetting& setting, int count) {
    const int value = Get(profile, setting);
    return value >= 0 && value < count ? value : 0;
}

struct CPlace {
    CIntSetting setting;
    CRealPoint CPaceCurve::*handle;
    double CRealPoint::*coordinate;
};
constexpr std::array places{CPlace{setting::inbetweenCurveX1, &CPaceCurve::first, &CRealPoint::x},
                            CPlace{setting::inbetweenCurveY1, &CPaceCurve::first, &CRealPoint::y},
                            CPlace{setting::inbetweenCurveX2, &CPaceCurve::second, &CRealPoint::x},
                            CPlace{setting::inbetweenCurveY2, &CPaceCurve::second, &CRealPoint::y}};

CPaceCurve RememberedCurve(const CProfile& profile) {
    CPaceCurve curve;
    for (const auto& [setting, handle, coordinate] : places)
        (curve.*handle).*coordinate = Get(profile, setting) / 100.0;
    return curve.Kept();
}

void Remember(CProfile& profile, const CPaceCurve& curve) {
    for (const auto& [setting, handle, coordinate] : places)
        Set(profile, setting, static_cast<int>(std::lround((curve.*handle).*coordinate * 100)));
}

int RememberedHold(const CProfile& profile, const CIntSetting& setting) {
    return std::clamp(Get(profile, setting), 1, mostInbetweenHold);
}

} // namespace

CInbetweenPace RememberedPace(const CProfile& profile) {
    return {static_cast<InbetweenType>(Remembered(profile, setting::lastInbetweenType, typeCount)),
            RememberedCurve(profile), RememberedHold(profile, setting::lastInbetweenHold)};
}

std::optional<CInbetweenChoice> AskInbetween(const CSceneContext& context, const CInbetweenDialog& dialog,
                                             CInbetweenRequest request) {
    request.initial = {Remembered(context.profile, dialog.source, dialog.sourceCount),
                       Remembered(context.profile, dialog.type, typeCount),
                       RememberedHold(context.profile, dialog.hold), RememberedCurve(context.profile)};
    CInbetweenAnswer answer = context.prompter.Ask(request);
    auto& [source, type, hold, curve] = answer.choice;
    if (source < 0 || source >= dialog.sourceCount || type < 0 || type >= typeCount)
        return std::nullopt;
    Set(context.profile, dialog.source, source);
    Set(context.profile, dialog.type, type);
    hold = std::clamp(hold, 1, mostInbetweenHold);
    Set(context.profile, dialog.hold, hold);
    curve = curve.Kept();
    Remember(context.profile, curve);
    return answer.confirmed ? std::optional(answer.choice) : std::nullopt;
}

} // namespace velmor
