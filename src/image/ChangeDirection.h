#pragma once

namespace velmor {

/// Which way a change that is kept is gone: as it was made, or to what was before.
enum class ChangeDirection { Forward, Back };

} // namespace velmor
