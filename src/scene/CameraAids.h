#pragma once

#include "scene/SceneContext.h"

namespace velmor {

/// What helps to place things in the camera view. The safe areas are laid into each of the frames that are shown,
/// or into the whole picture.
struct CCameraAidChoices {
    bool handles = false;      ///< the corners of what is selected for moving scale and turn it
    bool spacing = false;      ///< the ticks of motion paths can be dragged
    int fields = 0;            ///< of the chart, 12 or 16; 0 for no chart
    bool fieldsOnStage = true; ///< the chart is seen through the camera, as drawings are; otherwise it lies still
    bool wideFrame = false;    ///< 16:9
    bool tallFrame = false;    ///< 4:3
    bool actionSafe = false;
    bool titleSafe = false;
    int actionPercent = 90; ///< of width and height
    int titlePercent = 80;

    bool HasGuides() const { return fields > 0 || wideFrame || tallFrame || actionSafe || titleSafe; }
    bool operator==(const CCameraAidChoices&) const = default;
};

/// The choices, which are remembered in the settings.
class CCameraAids {
public:
    explicit CCameraAids(CSceneContext context);

    const CCameraAidChoices& Choices() const { return m_choices; }
    void Change(const CCameraAidChoices& choices);

private:
    CSceneContext m_context;
    CCameraAidChoices m_choices;
};

} // namespace velmor
