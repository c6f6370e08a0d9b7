#pragma once

#include <optional>

class QKeyEvent;

namespace velmor {

struct CSceneModel;

/// The frame that a key goes to from the current one: the next ones with the arrows, those a second away with the
/// page keys, the ends with Home and End. Nothing for any other key, with a modifier, and without a scene.
std::optional<int> FrameOfKey(const QKeyEvent& event, const CSceneModel& model);

} // namespace velmor
