#pragma once

#include <vector>

namespace velmor {

/// The order for CXSheet::Arrange() in which the levels from `first` to `last` stand in front of what was level
/// `before`, `levelCount` for behind all. Here levels 0 and 1 before 3:
///
///     A B C D   ->   C A B D
std::vector<int> MovedLevels(int levelCount, int first, int last, int before);

} // namespace velmor
