#pragma once

#include "platform/Status.h"
#include "platform/movie/SoundReader.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace velmor {

/// The head of an original: the file beside a sound that has it as it was before it was converted. The bytes of the
/// file that it came from follow; of a movie, its sound alone.
struct COriginalHead {
    static constexpr std::size_t size = 32;

    std::uint64_t soundHash = 0; ///< of the converted samples: an original of other samples is not theirs
    std::string extension;       ///< that the bytes had as a file of their own, with its dot

    bool operator==(const COriginalHead&) const = default;
};

std::array<std::uint8_t, COriginalHead::size> WriteOriginalHead(const COriginalHead& head);
/// `bytes`: the beginning of a file. Nothing when that is not an original of a version that is known.
std::optional<COriginalHead> ReadOriginalHead(std::span<const std::uint8_t> bytes);

/// Larger files are not kept: a step of the history has to hold them.
inline constexpr std::uint64_t mostOriginalBytes = std::uint64_t{256} << 20;

/// The file that a sound was converted from.
struct COriginalSource {
    Path file;
    CSoundForm form;
};

/// Keeps `source`, which was converted to `samples`, in `file`. On failure `file` is as it was.
CStatus WriteOriginal(const Path& file, const COriginalSource& source, std::span<const std::uint8_t> samples);

/// Opens what `file` holds. False when there is no original of `samples`, or it cannot be decoded here.
[[nodiscard]] bool OpenOriginal(const Path& file, std::span<const std::uint8_t> samples, CSoundReader& reader);

} // namespace velmor
