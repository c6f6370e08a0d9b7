#pragma once

#include "platform/Progress.h"
#include "render/FrameFiles.h"
#include "render/FrameRequests.h"
#include "sound/SoundMix.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace velmor {

enum class RenderFormat { Png = 0, Targa = 1, Bitmap = 2, Avi = 3, Mp4 = 4 };

constexpr bool IsMovie(RenderFormat format) {
    return format == RenderFormat::Avi || format == RenderFormat::Mp4;
}
/// Whether frames of the format can be without a background.
constexpr bool HasAlpha(RenderFormat format) {
    return format == RenderFormat::Png || format == RenderFormat::Targa;
}
/// With its dot.
std::string_view ExtensionOf(RenderFormat format);

/// What the final output is made with.
struct CRenderSettings {
    std::vector<int> levels; ///< 0-based, in list order
    std::vector<int> frames; ///< 0-based, ascending, step already applied
    int step = 1;            ///< of `frames`: how long the last frame of an MP4 stands
    int scaling = 100;       ///< percent, 1 to 400
    bool antialias = true;
    RenderFormat format = RenderFormat::Png;
    PngCompression compression = PngCompression::Normal;
    bool transparentBackground = false; ///< PNG and Targa: alpha instead of the background
    bool resume = false;                ///< keep numbered frames that are there already
    bool onlyWhole = false;             ///< of those, only what is a whole frame of the right size
    bool keepGoing = false;             ///< a numbered frame that cannot be made does not stop the others
    bool asOfAvi = false;               ///< numbered frames of the size that an AVI has, to be joined to one
    int quality = 10000;                ///< of a movie, 0 to 10000
    std::string compressor;             ///< of an AVI, see Compressors.h; empty for the default
    Path target; ///< the movie, or directory and name to which numbered frames append number and extension
};

/// Numbered frames without alpha that an earlier render has written.
struct CFinishedFrames {
    Path target; ///< as of CRenderSettings
    RenderFormat format = RenderFormat::Png;
};

struct CRenderJob {
    CShot shot;
    CRenderSettings settings;
    std::optional<std::span<const std::uint8_t>> sound; ///< the prepared track, for movies
    std::optional<CFinishedFrames> finished{};          ///< a movie is joined of these instead of composed
    std::optional<CMixedSound> mixed{};                 ///< the same sound in full quality, for an MP4
};

enum class RenderEnd { Complete, Stopped, Failed };

/// What a render failed of; with several frames that failed, the highest.
enum class RenderFault {
    None,
    Frame,   ///< could not be composed
    Input,   ///< a file that a frame is made of is missing
    Machine, ///< no memory, no thread, no encoder
    Output   ///< could not be written
};

struct CRenderOutcome {
    RenderEnd end = RenderEnd::Complete;
    std::string message;
    int framesWritten = 0;
    int framesKept = 0;
    int framesFailed = 0; ///< of a render that kept going
    RenderFault fault = RenderFault::None;
};

/// Size of the output: the scene's scaled, at least 1 x 1; the width of an AVI and of frames for one is raised to
/// the next multiple of 4.
COutputGeometry RenderGeometryOf(const CRenderSettings& settings, CSize scene);

/// The most pixels to a side that files of the format can have.
int MostPixelsOf(RenderFormat format);

/// What a name given by the user comes to as a target: a movie gets its extension unless it has it.
Path RenderTargetOf(const Path& name, RenderFormat format);

/// The file of a numbered frame (0-based): target + number from 1, four digits or more, + extension.
Path RenderFrameFile(const Path& target, RenderFormat format, int frame);
Path RenderFrameFile(const CRenderSettings& settings, int frame);

/// Whether the file of a numbered frame stays as it is in a resumed render.
bool IsFrameKept(const CRenderSettings& settings, CSize scene, int frame);

/// Writes the final output: every frame through the camera of that frame. Numbered frames appear whole or not at
/// all; a movie only when it is complete (or was stopped). `askStop` as for flipbooks. A render that keeps going
/// tells `progress` of each frame that failed; what cannot be written stops it all the same.
CRenderOutcome RenderToDisk(const CRenderJob& job, CImageCache& cache, IProgress& progress,
                            const std::function<bool()>& askStop);

} // namespace velmor
