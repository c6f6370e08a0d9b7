#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace velmor::testing {

/// One decoded frame of a movie.
struct CDecodedFrame {
    std::int64_t position = 0; ///< stream sample that it stands at
    bool isKeyFrame = false;
    std::vector<std::uint8_t> pixels; ///< blue green red, bottom row first, rows packed
};

/// What FFmpeg's libraries, which share no code with ours, make of a movie file.
struct CDecodedMovie {
    std::string videoCodec;
    int width = 0;
    int height = 0;
    double rate = 0;                ///< frames per second
    std::int64_t videoDuration = 0; ///< in stream samples
    std::vector<CDecodedFrame> frames;

    std::string soundCodec; ///< empty without sound
    int soundRate = 0;
    int soundChannels = 0;
    std::vector<std::uint8_t> sound; ///< the bytes of the sound packets
};

/// Opens a movie and decodes all of it; nothing when any part of it cannot be read.
std::optional<CDecodedMovie> DecodeMovie(const std::filesystem::path& path);

/// Seeks to a stream sample and decodes the frame found there.
std::optional<CDecodedFrame> DecodeFrameAt(const std::filesystem::path& path, std::int64_t position);

} // namespace velmor::testing
