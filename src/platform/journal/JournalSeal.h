#pragma once

#include "platform/journal/Journal.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace velmor {

/// What a step's row says of its body.
struct CStoredBody {
    std::uint64_t size = 0; ///< compressed
    std::uint32_t checksum = 0;
};

/// A number that any change of a row changes. It stands in the row, and the sum of all stands in the file: so a row
/// that was altered, lost or kept from earlier is noticed.
std::uint64_t SealOf(std::int64_t step, std::span<const std::uint8_t> heading, const CStoredBody& body);
std::uint64_t SealOf(const CJournalMove& move);
std::uint64_t SealOf(std::string_view note, std::span<const std::uint8_t> value);

} // namespace velmor
