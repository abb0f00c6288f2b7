// SPDX-License-Identifier: MIT
// The rasteriser's numbers in vectors: the lanes, the one conversion from floating point, and 16.16.
// Compiled once for each instruction set.
#if defined(ZELVO_RASTER_SIMD_CONVERSIONS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZELVO_RASTER_SIMD_CONVERSIONS_INL_H
#undef ZELVO_RASTER_SIMD_CONVERSIONS_INL_H
#else
#define ZELVO_RASTER_SIMD_CONVERSIONS_INL_H
#endif

#include "hwy/highway.h"

#include "raster/simd/vector_size.h"
#include "raster/simd/wasm_doubles-inl.h"

#include <cstdint>
#include <limits>

// Without vectors (Highway's EMU128 and SCALAR) the plain forms are used: not all operations exist there.
#if HWY_TARGET < HWY_EMU128

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

#if HWY_ARCH_X86

/// The processor's own truncation toward zero. It gives the smallest integer for NaN and for whatever an
/// integer cannot hold.
HWY_INLINE Ints processor_truncation(Floats value) {
#if HWY_TARGET <= HWY_AVX3
    return Ints{_mm512_cvttps_epi32(value.raw)};
#elif HWY_TARGET <= HWY_AVX2
    return Ints{_mm256_cvttps_epi32(value.raw)};
#else
    return Ints{_mm_cvttps_epi32(value.raw)};
#endif
}

#else

/// The processor's own truncation toward zero. It saturates.
HWY_INLINE Ints processor_truncation(Floats value) {
    return hn::ConvertTo(IntLanes(), value);
}

/// The conversion of `value`, but the smallest integer for NaN. Here a vector conversion gives NaN 0, or a
/// result that depends on its sign.
HWY_INLINE Ints unless_nan(Floats value, Ints converted) {
    const IntLanes ints;
    const auto is_number = hn::RebindMask(ints, hn::Eq(value, value));
    return hn::IfThenElse(is_number, converted, hn::Set(ints, std::numeric_limits<std::int32_t>::min()));
}

#endif

/// Truncates toward zero and saturates; NaN gives the smallest integer. The same results as the scalar
/// to_int.
HWY_INLINE Ints to_int(Floats value) {
#if HWY_ARCH_X86
    const IntLanes ints;
    // Highway's conversion saturates here as well, in twice as many steps.
    const auto largest = hn::Set(ints, std::numeric_limits<std::int32_t>::max());
    const auto is_too_large = hn::Ge(value, hn::Set(FloatLanes(), 2147483648.0F));
    return hn::IfThenElse(hn::RebindMask(ints, is_too_large), largest, processor_truncation(value));
#else
    return unless_nan(value, processor_truncation(value));
#endif
}

/// `value` in 16.16, as the scalar to_fixed. The product of a float with a power of two is exact, or too
/// large for an integer in float and in double alike, so that no double is needed here.
HWY_INLINE Words to_fixed(Floats value) {
#if HWY_ARCH_ARM_A64
    // One instruction converts to fixed point.
    return hn::BitCast(WordLanes(), unless_nan(value, Ints(vcvtq_n_s32_f32(value.raw, 16))));
#else
    return hn::BitCast(WordLanes(), to_int(hn::Mul(value, hn::Set(FloatLanes(), 65536.0F))));
#endif
}

/// An accumulator read as a signed number.
HWY_INLINE Ints as_signed(Words value) {
    return hn::BitCast(IntLanes(), value);
}

/// A signed number as a summand of an accumulator.
HWY_INLINE Words as_fixed(Ints value) {
    return hn::BitCast(WordLanes(), value);
}

} // namespace HWY_NAMESPACE
} // namespace fast
HWY_AFTER_NAMESPACE();

#endif

#endif
