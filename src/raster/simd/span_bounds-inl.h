// SPDX-License-Identifier: MIT
// The bounds of a list of spans, which decide how it is drawn.
// Compiled once for each instruction set.
#if defined(ZELVO_RASTER_SIMD_SPAN_BOUNDS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZELVO_RASTER_SIMD_SPAN_BOUNDS_INL_H
#undef ZELVO_RASTER_SIMD_SPAN_BOUNDS_INL_H
#else
#define ZELVO_RASTER_SIMD_SPAN_BOUNDS_INL_H
#endif

#include "hwy/highway.h"

#include "raster/simd/conversions-inl.h"
#include "raster/simd/span_list.h"
#include "raster/simd/triangle_batch.h"

#include <cstddef>
#include <cstdint>

// Without vectors (Highway's EMU128 and SCALAR) the plain forms are used: not all operations exist there.
#if HWY_TARGET < HWY_EMU128

HWY_BEFORE_NAMESPACE();
namespace fast {
namespace HWY_NAMESPACE {

/// What decides how the spans of a list are drawn.
struct SpanBounds {
    /// The length of the longest span.
    std::int32_t longest;
    /// Whether the depths of all pixels fit 16 bits.
    bool has_narrow_depths;
    /// The most columns and rows of the map, in 16.16, from a span's first pixel to its last one. Only the
    /// mapped filler's spans have them.
    float map_width;
    float map_height;
};

/// The bounds of a list. A quantity grows or shrinks evenly along its span, so that looking at its ends is
/// enough: for the depth, the first pixel and the one after the last. Floats do not wrap. Their rounding is
/// far less than the margin of 1 on both sides of the depths that are taken to fit. Lanes after the last span
/// count as a span of no pixels in the middle of the range.
template <Filler filler>
HWY_INLINE SpanBounds bounds_of(const SpanList &spans) {
    const IntLanes ints;
    const FloatLanes floats;
    constexpr float one = 65536.0F;
    const Ints middle = hn::Set(ints, 128 * 65536);
    Ints longest = hn::Zero(ints);
    Floats least = hn::ConvertTo(floats, middle);
    Floats largest = least;
    Floats map_width = hn::Zero(floats);
    Floats map_height = hn::Zero(floats);
    for (std::size_t at = 0; at < spans.count; at += hn::Lanes(ints)) {
        const auto is_span = hn::FirstN(ints, spans.count - at);
        const auto load = [at](const SpanList::Array<std::uint32_t> &array)
                              HWY_ATTR { return as_signed(hn::Load(WordLanes(), &array[at])); };
        const auto step = [&load, &spans, is_span](std::size_t quantity) HWY_ATTR {
            return hn::ConvertTo(FloatLanes(), hn::IfThenElseZero(is_span, load(spans.step[quantity])));
        };
        const Ints length = hn::IfThenElseZero(is_span, hn::Load(ints, &spans.length[at]));
        const Floats first = hn::ConvertTo(floats, hn::IfThenElse(is_span, load(spans.value[0]), middle));
        const Floats end = hn::Add(first, hn::Mul(hn::ConvertTo(floats, length), step(0)));
        longest = hn::Max(longest, length);
        least = hn::Min(least, hn::Min(first, end));
        largest = hn::Max(largest, hn::Max(first, end));
        if constexpr (filler == Filler::mapped) {
            const Floats steps = hn::ConvertTo(floats, hn::Sub(length, hn::Set(ints, 1)));
            map_width = hn::Max(map_width, hn::Abs(hn::Mul(steps, step(map_column))));
            map_height = hn::Max(map_height, hn::Abs(hn::Mul(steps, step(map_row))));
        }
    }
    const auto fits =
        hn::And(hn::Ge(least, hn::Set(floats, one)), hn::Le(largest, hn::Set(floats, 255.0F * one)));
    return {hn::GetLane(hn::MaxOfLanes(ints, longest)), hn::AllTrue(floats, fits),
            hn::GetLane(hn::MaxOfLanes(floats, map_width)), hn::GetLane(hn::MaxOfLanes(floats, map_height))};
}

} // namespace HWY_NAMESPACE
} // namespace fast
HWY_AFTER_NAMESPACE();

#endif

#endif
