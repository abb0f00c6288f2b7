// SPDX-License-Identifier: MIT
// Compares a run of words of the polygon list with a pattern.
// Compiled once for each instruction set.
#if defined(ZELVO_RASTER_SIMD_WORD_PATTERN_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZELVO_RASTER_SIMD_WORD_PATTERN_INL_H
#undef ZELVO_RASTER_SIMD_WORD_PATTERN_INL_H
#else
#define ZELVO_RASTER_SIMD_WORD_PATTERN_INL_H
#endif

#include "hwy/highway.h"

#include "raster/simd/conversions-inl.h"
#include "raster/simd/polygon_walk.h"

#include <cstddef>
#include <cstdint>

// Without vectors (Highway's EMU128 and SCALAR) the plain forms are used: not all operations exist there.
#if HWY_TARGET < HWY_EMU128

HWY_BEFORE_NAMESPACE();
namespace fast {
namespace HWY_NAMESPACE {

/// Whether each of the first `count` words is in the pattern's range; `count` is at least a vector. A word
/// exceeds its range by (word - least) - spread, saturated at 0; these numbers are joined by Or and tested
/// once. The last vector may overlap the one before it.
template <std::size_t count>
HWY_INLINE bool follow(const std::uint16_t *words, const WordPattern &pattern) {
    const hn::Repartition<std::uint16_t, WordLanes> lanes;
    constexpr std::size_t width = hn::MaxLanes(lanes);
    static_assert(width <= count && count <= WordPattern::words);
    auto excess = hn::Zero(lanes);
    const auto check = [&](std::size_t at) HWY_ATTR {
        // A word below `least` wraps to a large value and exceeds its spread.
        const auto above = hn::Sub(hn::LoadU(lanes, words + at), hn::LoadU(lanes, &pattern.least[at]));
        excess = hn::Or(excess, hn::SaturatedSub(above, hn::LoadU(lanes, &pattern.spread[at])));
    };
    for (std::size_t at = 0; at + width <= count; at += width) {
        check(at);
    }
    check(count - width);
    return hn::AllTrue(lanes, hn::Eq(excess, hn::Zero(lanes)));
}

} // namespace HWY_NAMESPACE
} // namespace fast
HWY_AFTER_NAMESPACE();

#endif

#endif
