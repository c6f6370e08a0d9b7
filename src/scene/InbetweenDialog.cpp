#include "scene/InbetweenDialog.h"

namespace velmor {

namespace {

constexpr int typeCount = static_cast<int>(InbetweenType::Constant) + 1;

// A remembered choice; the first one where the profile holds none of those offered.
int Remembered(const CProfile& profile, const CIntSetting& setting, int count) {
    const int value = Get(profile, setting);
    return value >= 0 && value < count ? value : 0;
}

} // namespace

std::optional<CInbetweenChoice> AskInbetween(const CSceneContext& context, const CInbetweenDialog& dialog,
                                             CInbetweenRequest request) {
    request.initial = {Remembered(context.profile, dialog.source, dialog.sourceCount),
                       Remembered(context.profile, dialog.type, typeCount)};
    const CInbetweenAnswer answer = context.prompter.Ask(request);
    const auto [source, type] = answer.choice;
    if (source < 0 || source >= dialog.sourceCount || type < 0 || type >= typeCount)
        return std::nullopt;
    Set(context.profile, dialog.source, source);
    Set(context.profile, dialog.type, type);
    return answer.confirmed ? std::optional(answer.choice) : std::nullopt;
}

} // namespace velmor
