#pragma once

#include "scene/SceneModel.h"

namespace velmor::testing {

/// The scene of a model to be prepared for a test, without the edit that the program makes.
struct CSceneAccess {
    static CScene& Of(CSceneModel& model) { return model.m_scene; }
};

} // namespace velmor::testing
