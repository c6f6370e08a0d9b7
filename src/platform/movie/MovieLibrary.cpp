#include "platform/movie/MovieLibrary.h"

#include "platform/process/Module.h"

namespace velmor {

const IMovieLibrary* MovieLibrary() {
    return static_cast<const IMovieLibrary*>(CallModule("velmor-movies.so", "VelmorMovieLibrary"));
}

} // namespace velmor
