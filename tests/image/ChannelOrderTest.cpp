#include "image/render/ChannelOrder.h"
#include "image/render/RowKernels.h"

#include <gtest/gtest.h>
#include <vector>

using namespace velmor;

TEST(ChannelOrder, RedAndBlueChangePlacesOnEveryProcessor) {
    for (const std::string_view target : KernelTargets()) {
        UseKernelTarget(target);
        for (std::size_t count = 0; count < 40; ++count) {
            std::vector<std::uint8_t> pixels, expected;
            for (std::size_t i = 0; i < count; ++i) {
                const auto red = static_cast<std::uint8_t>(3 * i), green = static_cast<std::uint8_t>(3 * i + 1),
                           blue = static_cast<std::uint8_t>(255 - i);
                pixels.insert(pixels.end(), {red, green, blue});
                expected.insert(expected.end(), {blue, green, red});
            }
            constexpr std::uint8_t untouched = 77;
            expected.push_back(untouched);
            std::vector<std::uint8_t> swapped(pixels.size() + 1, untouched);
            SwapRedAndBlue(pixels, swapped.data());
            EXPECT_EQ(swapped, expected) << target << ' ' << count;
        }
    }
    UseKernelTarget("");
}
