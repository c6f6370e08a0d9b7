#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>

namespace velmor::fuzz {

using Bytes = std::span<const std::uint8_t>;

/// Ends the run when what a reader promises does not hold; the fuzzer then keeps the input.
inline void Require(bool holds) {
    if (!holds)
        std::abort();
}

/// What each program of this folder defines: hands the bytes to its reader.
void Read(Bytes input);

} // namespace velmor::fuzz
