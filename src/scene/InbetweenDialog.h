#pragma once

#include "scene/DialogRequests.h"
#include "scene/SceneContext.h"
#include "scene/Settings.h"

#include <optional>

namespace velmor {

// What the inbetweening of levels and of the camera have in common.

/// How many sources a dialog offers, and where its choices are remembered.
struct CInbetweenDialog {
    int sourceCount = 0;
    CIntSetting source;
    CIntSetting type;
    CIntSetting hold;
};

/// Opens the dialog on the remembered choices and remembers the new ones, however it is closed. Nothing when it was
/// cancelled.
std::optional<CInbetweenChoice> AskInbetween(const CSceneContext& context, const CInbetweenDialog& dialog,
                                             CInbetweenRequest request);
inline CInbetweenPace PaceOf(const CInbetweenChoice& choice) {
    return {static_cast<InbetweenType>(choice.type), choice.curve, choice.hold};
}
/// The pace at which a level was inbetweened last.
CInbetweenPace RememberedPace(const CProfile& profile);

} // namespace velmor
