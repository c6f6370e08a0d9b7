#pragma once

#include "TempFolder.h"

#include <cstdint>
#include <random>
#include <vector>

namespace velmor::testing {

/// Calls check(bytes) with every truncation of a good file and with copies in which a few bytes are random; the
/// same ones at every run.
template<class Check>
void ForEachDamage(const std::vector<std::uint8_t>& good, Check check) {
    for (std::size_t length = 0; length < good.size(); ++length)
        check(std::vector<std::uint8_t>(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(length)));
    std::mt19937 random(20240611);
    for (int round = 0; round < 500; ++round) {
        std::vector<std::uint8_t> bad = good;
        for (std::uint32_t count = 1 + random() % 4; count > 0; --count)
            bad[random() % bad.size()] = static_cast<std::uint8_t>(random() % 3 == 0 ? 255 : random());
        check(bad);
    }
}

} // namespace velmor::testing
