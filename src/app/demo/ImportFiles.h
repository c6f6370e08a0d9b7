#pragma once

#include "app/demo/DemoSounds.h"
#include "app/demo/Landscape.h"
#include "platform/files/Files.h"

namespace velmor::demo {

/// An uncompressed 24-bit Targa file, bottom row first. False when it cannot be written.
[[nodiscard]] bool WriteTarga(const Path& path, const CPainting& painting);
/// An 8-bit mono PCM wave file of soundRate samples per second. False when it cannot be written.
[[nodiscard]] bool WriteWave(const Path& path, const std::vector<std::uint8_t>& samples);

} // namespace velmor::demo
