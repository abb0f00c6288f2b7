// SPDX-License-Identifier: MIT
// Draws spans with the depth test, a vector of pixels at a time.
// Compiled once for each instruction set.
#if defined(ZELVO_RASTER_SIMD_SPAN_DRAWING_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZELVO_RASTER_SIMD_SPAN_DRAWING_INL_H
#undef ZELVO_RASTER_SIMD_SPAN_DRAWING_INL_H
#else
#define ZELVO_RASTER_SIMD_SPAN_DRAWING_INL_H
#endif

#include "hwy/highway.h"

#include "raster/simd/bands.h"
#include "raster/simd/conversions-inl.h"
#include "raster/simd/pixel_vectors-inl.h"
#include "raster/simd/span_list.h"
#include "raster/simd/texels-inl.h"
#include "raster/simd/triangle_batch.h"

#include <cstddef>
#include <cstdint>

// Without vectors (Highway's EMU128 and SCALAR) the plain forms are used: not all operations exist there.
#if HWY_TARGET < HWY_EMU128

HWY_BEFORE_NAMESPACE();
namespace fast {
namespace HWY_NAMESPACE {

/// Draws the spans of the fillers that compute their colours. `all_at_once` promises that none has more
/// pixels than are drawn together.
template <Filler filler, class Pixels, bool all_at_once>
HWY_INLINE void draw_computed_spans(const SpanList &spans, const DrawTarget &target) {
    const typename Pixels::Bytes bytes;
    const auto lanes = static_cast<std::int32_t>(hn::Lanes(bytes));
    // Copies, because the compiler cannot know that pixels are not written over the originals.
    std::uint8_t *const first_pixel = target.pixels;
    std::uint16_t *const first_depth = target.depths;
    const std::size_t count = spans.count;
    for (std::size_t i = 0; i < count; ++i) {
        std::uint8_t *pixels = first_pixel + spans.offset[i];
        std::uint16_t *depths = first_depth + spans.offset[i];
        typename Pixels::Quantity depth(spans, 0, i);
        typename Pixels::Quantity colour(spans, quantities_of(filler) - 1, i);
        for (std::int32_t left = spans.length[i];;) {
            if constexpr (filler == Filler::flat) {
                const auto flat = hn::Set(bytes, static_cast<std::uint8_t>(spans.colour[i]));
                Pixels::write_nearer(depth.values(), flat, left, pixels, depths);
            } else {
                Pixels::write_nearer(depth.values(), Pixels::colours(colour.values()), left, pixels, depths);
            }
            left -= lanes;
            if (all_at_once || left <= 0) {
                break;
            }
            depth.advance();
            if constexpr (filler != Filler::flat) {
                colour.advance();
            }
            pixels += lanes;
            depths += lanes;
        }
    }
}

/// Draws a span with the colours of its texels.
template <class Pixels, bool all_at_once>
HWY_INLINE void draw_mapped_span(const SpanList &spans, std::size_t i, const std::uint8_t *colours,
                                 std::uint8_t *first_pixel, std::uint16_t *first_depth) {
    const typename Pixels::Bytes bytes;
    const auto lanes = static_cast<std::int32_t>(hn::Lanes(bytes));
    std::uint8_t *pixels = first_pixel + spans.offset[i];
    std::uint16_t *depths = first_depth + spans.offset[i];
    typename Pixels::Quantity depth(spans, 0, i);
    const std::int32_t length = spans.length[i];
    for (std::int32_t x = 0;; depth.advance()) {
        Pixels::write_nearer(depth.values(), hn::LoadU(bytes, colours + x), length - x, pixels + x,
                             depths + x);
        x += lanes;
        if (all_at_once || x >= length) {
            break;
        }
    }
}

/// Draws spans from `first` on, as many as have room for their texels in the buffer together, and returns the
/// first one left. The indices are computed first, then the texels are fetched in one scalar loop, and the
/// spans are drawn last. Fetching while a span is drawn was slower, and so were gathers (docs/speed.md,
/// "Tried without gain").
template <class Pixels, bool all_at_once>
HWY_INLINE std::size_t draw_mapped_run(const SpanList &spans, std::size_t first, TexelBuffer &texels,
                                       const DrawTarget &target) {
    std::size_t count = 0;
    std::size_t last = first;
    for (; last < spans.count; ++last) {
        const auto length = static_cast<std::size_t>(spans.length[last]);
        if (!all_at_once && count + length > TexelBuffer::capacity) {
            break;
        }
        if constexpr (all_at_once) {
            put_texel_indices<true, typename Pixels::Words, Pixels::word_vectors>(spans, last,
                                                                                  &texels.index[count]);
        } else {
            put_texel_indices<false, WordLanes, 2>(spans, last, &texels.index[count]);
        }
        count += length;
    }
    fetch_texels(texels, count);
    const std::uint8_t *colours = texels.colour.data();
    std::uint8_t *const first_pixel = target.pixels;
    std::uint16_t *const first_depth = target.depths;
    for (std::size_t i = first; i < last; ++i) {
        draw_mapped_span<Pixels, all_at_once>(spans, i, colours, first_pixel, first_depth);
        colours += spans.length[i];
    }
    return last;
}

/// Draws the first pixels of a span that is longer than the buffer, until the rest fits.
template <class Pixels>
HWY_INLINE void shorten_span(SpanList &spans, std::size_t i, TexelBuffer &texels, const DrawTarget &target) {
    constexpr auto piece = static_cast<std::int32_t>(TexelBuffer::capacity);
    while (spans.length[i] > piece) {
        const std::int32_t rest = spans.length[i] - piece;
        spans.length[i] = piece;
        put_texel_indices<false, WordLanes, 2>(spans, i, texels.index.data());
        fetch_texels(texels, TexelBuffer::capacity);
        draw_mapped_span<Pixels, false>(spans, i, texels.colour.data(), target.pixels, target.depths);
        spans.length[i] = rest;
        spans.offset[i] += TexelBuffer::capacity;
        for (std::size_t q = 0; q < 3; ++q) {
            spans.value[q][i] += static_cast<std::uint32_t>(piece) * spans.step[q][i];
        }
    }
}

/// Draws all spans. `all_at_once` promises that none has more pixels than are drawn together.
template <Filler filler, class Pixels, bool all_at_once>
HWY_INLINE void draw_list(SpanList &spans, TexelBuffer &texels, const DrawTarget &target) {
    if constexpr (filler != Filler::mapped) {
        draw_computed_spans<filler, Pixels, all_at_once>(spans, target);
    } else {
        static_assert(!all_at_once ||
                      SpanList::capacity * hn::MaxLanes(typename Pixels::Bytes()) <= TexelBuffer::capacity);
        for (std::size_t first = 0; first < spans.count;) {
            // After this the first span fits the buffer, so that each run draws at least one.
            if (!all_at_once) {
                shorten_span<Pixels>(spans, first, texels, target);
            }
            first = draw_mapped_run<Pixels, all_at_once>(spans, first, texels, target);
        }
    }
}

/// Draws all spans and empties the list. How many pixels are drawn together is chosen once for the whole
/// list: the lengths of single spans are as good as random, and a mispredicted branch costs more than half a
/// vector saves. 8 pixels are enough for most spans of a fine mesh, and some processors split the widest
/// vectors in two; but 8 for all lists took 6 to 21 percent longer (docs/speed.md, "Tried without gain").
/// Longer spans are drawn 16 pixels at a time, or 8 where a vector has only four words.
template <Filler filler>
HWY_INLINE void draw_spans(SpanList &spans, TexelBuffer &texels, const DrawTarget &target) {
    using ShortLanes = hn::CappedTag<std::uint32_t, 8>;
    constexpr auto few = static_cast<std::int32_t>(hn::MaxLanes(ShortLanes()));
    constexpr auto lanes = static_cast<std::int32_t>(hn::MaxLanes(WordLanes()));
    constexpr std::size_t vectors = lanes < 16 ? 2 : 1;
    constexpr std::int32_t many = lanes * static_cast<std::int32_t>(vectors);
    const SpanBounds bounds = bounds_of(spans);
    if (!bounds.has_narrow_depths) {
        draw_list<filler, WidePixels, false>(spans, texels, target);
    } else if (bounds.longest <= few) {
        draw_list<filler, NarrowPixels<ShortLanes, 1>, true>(spans, texels, target);
    } else if (bounds.longest <= many) {
        draw_list<filler, NarrowPixels<WordLanes, vectors>, true>(spans, texels, target);
    } else {
        draw_list<filler, NarrowPixels<WordLanes, vectors>, false>(spans, texels, target);
    }
    spans.count = 0;
}

} // namespace HWY_NAMESPACE
} // namespace fast
HWY_AFTER_NAMESPACE();

#endif

#endif
