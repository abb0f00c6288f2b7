// SPDX-License-Identifier: MIT
// The rasteriser's numbers for a vector of lanes: the one conversion from floating point, and 16.16.
// Compiled once for each instruction set.
#if defined(ZELVO_RASTER_SIMD_CONVERSIONS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZELVO_RASTER_SIMD_CONVERSIONS_INL_H
#undef ZELVO_RASTER_SIMD_CONVERSIONS_INL_H
#else
#define ZELVO_RASTER_SIMD_CONVERSIONS_INL_H
#endif

#include "hwy/highway.h"

#include "raster/simd/triangle_batch.h"

#include <cstdint>
#include <limits>

HWY_BEFORE_NAMESPACE();
namespace fast {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

/// As many 32-bit lanes as a vector holds, as the three types that they are read as.
using FloatLanes = hn::ScalableTag<float>;
using IntLanes = hn::ScalableTag<std::int32_t>;
using WordLanes = hn::ScalableTag<std::uint32_t>;

using Floats = hn::Vec<FloatLanes>;
using Ints = hn::Vec<IntLanes>;
using Words = hn::Vec<WordLanes>;

static_assert(HWY_MAX_BYTES <= vector_bytes);

/// Truncates toward zero and saturates; not-a-number, which a vector conversion may take either way by its
/// sign, gives the smallest integer as everywhere.
HWY_INLINE Ints to_int(Floats value) {
    const IntLanes ints;
    const auto smallest = hn::Set(ints, std::numeric_limits<std::int32_t>::min());
    const auto is_nan = hn::RebindMask(ints, hn::IsNaN(value));
    return hn::IfThenElse(is_nan, smallest, hn::ConvertTo(ints, value));
}

/// `value` in 16.16. A float's product with a power of two is exact, or too large for either conversion, so
/// that no double is needed here.
HWY_INLINE Words to_fixed(Floats value) {
    return hn::BitCast(WordLanes(), to_int(hn::Mul(value, hn::Set(FloatLanes(), 65536.0F))));
}

/// An accumulator as the signed number that it stands for.
HWY_INLINE Ints as_signed(Words value) {
    return hn::BitCast(IntLanes(), value);
}

/// A signed number as what is added to an accumulator.
HWY_INLINE Words as_fixed(Ints value) {
    return hn::BitCast(WordLanes(), value);
}

} // namespace HWY_NAMESPACE
} // namespace fast
HWY_AFTER_NAMESPACE();

#endif
