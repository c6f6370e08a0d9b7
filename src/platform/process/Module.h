#pragma once

namespace velmor {

/// Loads a module of the program at the first call, for as long as the program runs, and returns what its function
/// `entry`, of type `void* ()`, gives. Null where the module is missing or cannot be loaded.
void* CallModule(const char* file, const char* entry);

} // namespace velmor
