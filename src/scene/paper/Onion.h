#pragma once

#include "scene/SceneContext.h"
#include "scene/paper/OnionSettings.h"

namespace velmor {

/// Whether and how the neighbours of the drawing under edit shine through it. Each choice is remembered as it is
/// made, and told to the views.
class COnion {
public:
    explicit COnion(CSceneContext context) : m_context(context), m_settings(ReadOnionSettings(context.profile)) {}

    const COnionSettings& Settings() const { return m_settings; }
    void Change(const COnionSettings& settings);
    void Toggle();
    void ToggleInCamera();
    /// Asks for everything; what is chosen is seen at once.
    void EditSettings();

private:
    CSceneContext m_context;
    COnionSettings m_settings;
};

} // namespace velmor
