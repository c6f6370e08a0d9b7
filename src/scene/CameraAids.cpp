#include "scene/CameraAids.h"

#include "scene/Settings.h"

#include <algorithm>
#include <array>
#include <utility>

namespace velmor {

namespace {

using Switch = std::pair<CIntSetting, bool CCameraAidChoices::*>;
constexpr std::array switches{Switch{setting::cameraHandles, &CCameraAidChoices::handles},
                              Switch{setting::cameraSpacing, &CCameraAidChoices::spacing},
                              Switch{setting::cameraFieldsOnStage, &CCameraAidChoices::fieldsOnStage},
                              Switch{setting::cameraFrameWide, &CCameraAidChoices::wideFrame},
                              Switch{setting::cameraFrameTall, &CCameraAidChoices::tallFrame},
                              Switch{setting::cameraActionSafe, &CCameraAidChoices::actionSafe},
                              Switch{setting::cameraTitleSafe, &CCameraAidChoices::titleSafe}};

int KeptFields(int fields) {
    return fields == 12 || fields == 16 ? fields : 0;
}

CCameraAidChoices Read(const CProfile& profile) {
    CCameraAidChoices choices;
    for (const auto& [setting, choice] : switches)
        choices.*choice = Get(profile, setting) != 0;
    choices.fields = KeptFields(Get(profile, setting::cameraFields));
    choices.actionPercent = std::clamp(Get(profile, setting::actionSafePercent), 1, 100);
    choices.titlePercent = std::clamp(Get(profile, setting::titleSafePercent), 1, 100);
    return choices;
}

} // namespace

CCameraAids::CCameraAids(CSceneContext context) : m_context(context), m_choices(Read(context.profile)) {}

void CCameraAids::Change(const CCameraAidChoices& choices) {
    if (choices == m_choices)
        return;
    m_choices = choices;
    m_choices.fields = KeptFields(choices.fields);
    for (const auto& [setting, choice] : switches)
        Set(m_context.profile, setting, m_choices.*choice ? 1 : 0);
    Set(m_context.profile, setting::cameraFields, m_choices.fields);
    m_context.Update(UpdateHint::CameraRedraw);
}

} // namespace velmor
