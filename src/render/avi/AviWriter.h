#pragma once

#include "image/Color.h"
#include "platform/Status.h"
#include "platform/files/AtomicFile.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace velmor {

struct CAviCounts;

/// What an AVI file is opened with.
struct CAviSettings {
    int quality = 5000; ///< 0 to 10000
    int rate = 25;      ///< stream samples per second; below 1 is written as 1
    int width = 0;      ///< the frame rectangle, pixels, 1 to 32767
    int height = 0;
    ColorRef background = 0; ///< fills the rows and columns that the codec needs beside the frame
};

/// A video frame already encoded, ready to be written.
using EncodedFrame = std::vector<std::uint8_t>;

/// Writes AVI files (RIFF, form "AVI ", with "idx1"): one Microsoft Video 1 stream named "Velmor Avi Preview",
/// every frame a key frame, and optionally one 8-bit mono PCM stream interleaved with the frames. The file appears
/// under its name only when Close() has succeeded. Not for files over 2 GB: writing past that fails.
///
/// Whatever fails, the status carries the text for the user, the writer is closed and nothing is left on disk.
/// Calls on a closed writer fail, but for Close(), which then has nothing to do.
class CAviWriter {
public:
    CAviWriter() = default;

    /// A file that is still open is given up.
    CStatus Open(const Path& path, const CAviSettings& settings);
    /// The sound of the whole movie; once, before the first frame. Copies the samples. No samples: no sound.
    CStatus AddSound(std::span<const std::uint8_t> samples);
    /// Writes a 24-bit bottom-up frame (width x height x 3 bytes, blue green red) at a stream position. Positions
    /// rise; those left out become empty samples.
    CStatus WriteFrame(int position, std::span<const std::uint8_t> frame);
    /// The same for a frame encoded elsewhere with EncodeMsVideo1 at the settings' quality.
    CStatus WriteEncodedFrame(int position, std::span<const std::uint8_t> encoded);
    /// Completes the file. Without a Close() nothing appears.
    CStatus Close();
    bool IsOpen() const { return m_file.has_value(); }

private:
    [[nodiscard]] bool Start();
    [[nodiscard]] bool AppendFrame(int position, std::span<const std::uint8_t> encoded);
    [[nodiscard]] bool AppendSoundUpTo(std::uint64_t sample);
    [[nodiscard]] bool AppendChunk(std::string_view name, std::span<const std::uint8_t> data, std::uint32_t flags);
    [[nodiscard]] bool Append(std::span<const std::uint8_t> bytes);
    [[nodiscard]] bool Flush();
    [[nodiscard]] bool Finish();
    /// Size of the list of chunks so far, its type included.
    std::uint64_t MoviBytes() const;
    CAviCounts Counts() const;
    bool FitsAfter(std::uint64_t moreBytes, std::uint64_t moreChunks) const;
    /// Runs `write`; when it fails, closes the writer.
    template<class Write>
    CStatus Guard(Write write);
    void Reset();

    CAviSettings m_settings;
    std::optional<CAtomicFile> m_file;
    std::vector<std::uint8_t> m_sound;
    std::vector<std::uint8_t> m_index;   ///< the entries of "idx1" so far
    std::vector<std::uint8_t> m_pending; ///< bytes not yet handed to the file
    EncodedFrame m_encoded;
    std::uint64_t m_size = 0; ///< bytes so far, the pending ones included
    std::uint64_t m_headerBytes = 0;
    std::size_t m_soundWritten = 0;
    std::uint32_t m_largestChunk = 0;
    int m_videoSamples = 0;
    bool m_started = false; ///< the header has been written, no sound can be added any more
};

} // namespace velmor
