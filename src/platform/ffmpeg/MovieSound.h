#pragma once

#include "platform/movie/AviReader.h"

namespace velmor {

/// Decodes the whole sound of a movie to 8-bit unsigned mono samples. Throws std::bad_alloc.
MovieError ReadMovieSound(const std::string& file, int rate, std::vector<std::uint8_t>& samples);

} // namespace velmor
