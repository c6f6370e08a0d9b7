#pragma once

#include "image/Color.h"
#include "image/Geometry.h"
#include "platform/Status.h"
#include "platform/files/Files.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace velmor {

struct CFrameBuffer;
struct CMovieSoundTrack;

/// What a movie of the final output is opened with.
struct CRenderMovieSettings {
    bool isMp4 = false;
    std::string compressor; ///< of an AVI, see Compressors.h; empty for the default
    int quality = 10000;    ///< 0 to 10000
    int rate = 25;          ///< frames per second
    CSize size;
    ColorRef background = 0; ///< fills what a codec needs beside the frame
};

/// A movie of the final output that is being written. It appears under its name when it is closed; after a failure,
/// and without a Close(), nothing of it is left. Failures carry the text for the user.
class IRenderMovie {
public:
    virtual ~IRenderMovie() = default;
    /// Makes of a frame what Write() takes; called on several threads at once. Takes or changes the frame.
    virtual void Encode(CFrameBuffer& frame, std::vector<std::uint8_t>& encoded) const = 0;
    /// Positions rise; a frame stands until the next.
    virtual CStatus Write(int position, std::span<const std::uint8_t> encoded) = 0;
    /// `length`: frames of the whole movie, the time that the last one stands included.
    virtual CStatus Close(int length) = 0;
};

/// Opens a movie with its sound, at the sounds' rate where it is 8-bit mono.
CStatus OpenRenderMovie(const Path& path, const CRenderMovieSettings& settings, const CMovieSoundTrack& sound,
                        std::unique_ptr<IRenderMovie>& movie);

} // namespace velmor
