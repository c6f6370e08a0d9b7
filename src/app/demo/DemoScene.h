#pragma once

namespace velmor::demo {

class CAnimator;

inline constexpr const char* demoScene = "Demo";
/// Of the cels that are looked at first.
inline constexpr const char* demoFolder = "Fox";

/// Makes the scene with everything in it: a fox walks through a meadow after a butterfly, leaps for it and lands,
/// and the butterfly settles on its head. False when anything failed; the messages have been shown.
[[nodiscard]] bool MakeDemoScene(CAnimator& animator);

} // namespace velmor::demo
