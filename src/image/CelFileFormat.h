#pragma once

#include "image/CelImg.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <iosfwd>

namespace velmor {

// How the files of cels and pictures begin, and what their readers say about those that are damaged. Behind the
// sizes a cel has its line mask and the runs of its planes, one plane after the other; a picture has the number of
// its planes and the planes. The planes stand in the order of Channel.

constexpr std::size_t celFileHeaderSize = 20;
inline constexpr std::array fileChannels{Channel::Red, Channel::Green, Channel::Blue, Channel::Alpha};

struct CCelFileHeader {
    LoadState kind = LoadState::Nothing;
    CSize size;
    std::size_t channels = 4;    ///< planes in the file; a picture of three is opaque
    std::size_t bytesBehind = 0; ///< from the line mask or the planes to the file's end

    std::size_t Pixels() const {
        return static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height);
    }
    std::size_t MaskBytes() const {
        return static_cast<std::size_t>(size.height) * static_cast<std::size_t>(StrideBitsOf(size.width) / 8);
    }
};

/// Opens the file at `path`, if there is one, to be read without a buffer.
bool OpenCelFile(const Path& path, std::ifstream& file);
/// Reads up to and including the sizes. `isCut`, if not null, becomes true when the file ends before them.
CStatus ReadCelFileSizes(std::istream& file, CCelFileHeader& header, bool* isCut = nullptr);
/// Reads what stands between the sizes and the line mask or the planes. Fails when the rest is too short for any
/// such image; so no memory need be taken for what a file only promises.
CStatus ReadUpToPlanes(std::istream& file, CCelFileHeader& header);
/// Whether as many bytes could be read as are asked.
bool ReadAll(std::istream& file, std::span<std::uint8_t> bytes);

CStatus TruncatedFile(LoadState kind);
/// The sizes are two bytes each: of larger ones the low 16 bits are written.
std::array<std::uint8_t, celFileHeaderSize> MakeCelFileHeader(LoadState kind, int width, int height);

} // namespace velmor
