#include "image/render/ChannelOrder.h"

#include <cstddef>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "image/render/ChannelOrder.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace velmor::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

void Swap(const std::uint8_t* pixels, std::size_t size, std::uint8_t* swapped) {
    std::size_t at = 0;
#if HWY_TARGET != HWY_SCALAR
    const hn::CappedTag<std::uint8_t, 16> du8;
    HWY_ALIGN static constexpr std::uint8_t places[16] = {2, 1, 0, 5, 4, 3, 8, 7, 6, 11, 10, 9, 14, 13, 12, 15};
    const auto order = hn::Load(du8, places);
    // 5 pixels a step; the byte behind them is written again by the next.
    for (; at + 16 <= size; at += 15)
        hn::StoreU(hn::TableLookupBytes(hn::LoadU(du8, pixels + at), order), du8, swapped + at);
#endif
    for (; at + 3 <= size; at += 3) {
        swapped[at] = pixels[at + 2];
        swapped[at + 1] = pixels[at + 1];
        swapped[at + 2] = pixels[at];
    }
}

} // namespace
} // namespace velmor::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace velmor {

HWY_EXPORT(Swap);

void SwapRedAndBlue(std::span<const std::uint8_t> pixels, std::uint8_t* swapped) {
    HWY_DYNAMIC_DISPATCH(Swap)(pixels.data(), pixels.size(), swapped);
}

} // namespace velmor
#endif
