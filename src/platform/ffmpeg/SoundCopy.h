#pragma once

#include "platform/movie/MovieLibrary.h"

namespace velmor {

/// Appends a file with the sound of a movie as it is coded there to `to`: QuickTime of a movie of that kind,
/// Matroska of any other.
MovieError CopySoundStream(const std::string& movie, IMovieBytes& to);

} // namespace velmor
