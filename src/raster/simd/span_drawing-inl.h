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
#include "raster/simd/span_list.h"
#include "raster/simd/triangle_batch.h"
#include "raster/simd/vector_size.h"
#include "raster/texture_map.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

// Without vectors (Highway's EMU128 and SCALAR) the plain forms are used: not all operations exist there.
#if HWY_TARGET < HWY_EMU128

HWY_BEFORE_NAMESPACE();
namespace fast {
namespace HWY_NAMESPACE {

/// The frame's depths and bytes, in vectors of as many lanes as D has.
template <class D>
using DepthLanes = hn::Rebind<std::uint16_t, D>;
template <class D>
using ByteLanes = hn::Rebind<std::uint8_t, D>;

/// When every span of a list fits 8 pixels, 8-lane vectors are used: some processors split the widest vectors
/// in two, and most spans of a fine mesh are short. Vectors of 8 for all lists were slower by 6 to 21 percent
/// (docs/speed.md, "Tried without gain").
using NarrowLanes = hn::CappedTag<std::uint32_t, 8>;

/// The accumulators of a vector of pixels along a span: `Count` quantities from `First` on.
template <class D, std::size_t First, std::size_t Count>
struct PixelValues {
    std::array<hn::Vec<D>, Count> value;
    /// What a whole vector of pixels adds to each.
    std::array<hn::Vec<D>, Count> stride;

    HWY_INLINE PixelValues(const SpanList &spans, std::size_t span) {
        const D words;
        for (std::size_t q = 0; q < Count; ++q) {
            const auto step = hn::Set(words, spans.step[First + q][span]);
            const auto first_pixel = hn::Set(words, spans.value[First + q][span]);
            value[q] = hn::Add(first_pixel, hn::Mul(hn::Iota(words, 0), step));
            stride[q] = hn::Mul(step, hn::Set(words, static_cast<std::uint32_t>(hn::Lanes(words))));
        }
    }

    /// Goes on by one vector.
    HWY_INLINE void advance() {
        for (std::size_t q = 0; q < Count; ++q) {
            value[q] = hn::Add(value[q], stride[q]);
        }
    }
};

/// A mask of signed lanes as a mask of lanes half as wide.
template <class D, class Narrow>
HWY_INLINE hn::Mask<Narrow> narrow_mask(D lanes, Narrow narrow, hn::Mask<D> mask) {
#if HWY_TARGET <= HWY_AVX3
    // Here a mask is one bit for each lane, whatever the lanes are.
    (void)lanes;
    hn::Mask<Narrow> same_bits;
    same_bits.raw = static_cast<decltype(same_bits.raw)>(mask.raw);
    return same_bits;
#else
    return hn::MaskFromVec(hn::DemoteTo(narrow, hn::VecFromMask(lanes, mask)));
#endif
}

/// Stores the selected lanes of `value` at `to`, which `old_value` was read from.
template <class D, typename T>
HWY_INLINE void store_selected(D lanes, hn::Mask<D> selected, hn::Vec<D> value, hn::Vec<D> old_value, T *to) {
#if HWY_TARGET <= HWY_AVX3
    (void)old_value;
    hn::BlendedStore(value, selected, lanes, to);
#else
    // Highway's BlendedStore goes lane by lane here: frames took twice as long.
    hn::StoreU(hn::IfThenElse(selected, value, old_value), lanes, to);
#endif
}

/// Writes those of the first `count` pixels that are nearer than what the frame holds. Depths are in 8.8,
/// from accumulators in 16.16, and compared as 32-bit integers, as draw_span does. The other pixels of the
/// vector keep their values, but may be written back.
template <class D>
HWY_INLINE void write_nearer(D words, hn::Vec<D> accumulated_depth, hn::Vec<ByteLanes<D>> colour,
                             std::int32_t count, std::uint8_t *pixels, std::uint16_t *depths) {
    const hn::RebindToSigned<D> ints;
    const hn::Rebind<std::int16_t, D> halves;
    const hn::Rebind<std::int8_t, D> quarters;
    const DepthLanes<D> depth_lanes;
    const ByteLanes<D> bytes;
    const auto depth = hn::ShiftRight<8>(hn::BitCast(ints, accumulated_depth));
    const auto old_depth = hn::LoadU(depth_lanes, depths);
    const auto is_drawn = hn::And(hn::Gt(depth, hn::PromoteTo(ints, old_depth)),
                                  hn::Lt(hn::Iota(ints, 0), hn::Set(ints, count)));
    const auto new_depth = hn::TruncateTo(depth_lanes, hn::BitCast(words, depth));
    const auto half_mask = narrow_mask(ints, halves, is_drawn);
    const auto byte_mask = narrow_mask(halves, quarters, half_mask);
    store_selected(depth_lanes, hn::RebindMask(depth_lanes, half_mask), new_depth, old_depth, depths);
    store_selected(bytes, hn::RebindMask(bytes, byte_mask), colour, hn::LoadU(bytes, pixels), pixels);
}

/// Draws the spans of the fillers that compute their colours, in vectors of these lanes.
template <Filler filler, class D>
HWY_INLINE void draw_computed_spans(D words, const SpanList &spans, const DrawTarget &target) {
    const ByteLanes<D> bytes;
    const auto lanes = static_cast<std::int32_t>(hn::Lanes(words));
    for (std::size_t i = 0; i < spans.count; ++i) {
        std::uint8_t *pixels = target.pixels + spans.offset[i];
        std::uint16_t *depths = target.depths + spans.offset[i];
        PixelValues<D, 0, quantities_of(filler)> pixel(spans, i);
        for (std::int32_t left = spans.length[i];;) {
            hn::Vec<ByteLanes<D>> colour;
            if constexpr (filler == Filler::flat) {
                colour = hn::Set(bytes, static_cast<std::uint8_t>(spans.colour[i]));
            } else {
                colour = hn::TruncateTo(bytes, hn::ShiftRight<16>(pixel.value.back()));
            }
            write_nearer(words, pixel.value[0], colour, left, pixels, depths);
            left -= lanes;
            if (left <= 0) {
                break;
            }
            pixel.advance();
            pixels += lanes;
            depths += lanes;
        }
    }
}

/// Texels of several spans, back to back, with room for two vectors after the last. Indices are zeros at
/// first: a few after the last are fetched with it, and dropped.
struct TexelBuffer {
    /// 4 KiB of indices and 2 KiB of colours stay in the first-level cache. Other sizes took the same time
    /// (docs/speed.md, "Tried without gain").
    static constexpr std::size_t capacity = 2048;
    alignas(vector_bytes) std::array<std::uint16_t, capacity + vector_bytes> index{};
    alignas(vector_bytes) std::array<std::uint8_t, capacity + vector_bytes> colour;
};

/// Puts the texel indices of a span that one vector of pixels covers at `index`. The index of fill_tri_mapped
/// is the low 16 bits of map_centre + column + row * 256, so that only the low 8 bits of the row's integer
/// part count.
template <class D>
HWY_INLINE void put_few_texel_indices(D words, const SpanList &spans, std::size_t i, std::uint16_t *index) {
    const PixelValues<D, 1, 2> pixel(spans, i);
    const auto row = hn::And(hn::ShiftRight<8>(pixel.value[1]), hn::Set(words, 0xFF00));
    const auto in_map = hn::Add(hn::ShiftRight<16>(pixel.value[0]), row);
    const hn::Rebind<std::uint16_t, D> indices;
    hn::StoreU(hn::TruncateTo(indices, hn::Add(in_map, hn::Set(words, map_centre))), indices, index);
}

/// Lanes of 16 bits, twice as many: the size of a coordinate's integer part and of a texel's index.
using IndexLanes = hn::Repartition<std::uint16_t, WordLanes>;

/// The texel indices of two vectors of pixels, each given by its column and row accumulators. The odd 16-bit
/// lanes of an accumulator are its integer part.
HWY_INLINE hn::Vec<IndexLanes> texel_indices(const std::array<Words, 2> &first,
                                             const std::array<Words, 2> &second) {
    const IndexLanes lanes;
    const auto integer_parts = [lanes](Words a, Words b) HWY_ATTR {
        return hn::ConcatOdd(lanes, hn::BitCast(lanes, b), hn::BitCast(lanes, a));
    };
    const auto row = hn::ShiftLeft<8>(integer_parts(first[1], second[1]));
    const auto centre = hn::Set(lanes, static_cast<std::uint16_t>(map_centre));
    return hn::Add(hn::Add(integer_parts(first[0], second[0]), row), centre);
}

/// Puts the texel indices of a span of any length at `index`, two vectors of pixels at a time.
HWY_INLINE void put_texel_indices(const SpanList &spans, std::size_t i, std::uint16_t *index) {
    const auto lanes = static_cast<std::int32_t>(hn::Lanes(IntLanes()));
    PixelValues<WordLanes, 1, 2> pixel(spans, i);
    const std::int32_t length = spans.length[i];
    for (std::int32_t x = 0;; pixel.advance()) {
        const std::array<Words, 2> first_half = pixel.value;
        pixel.advance();
        hn::StoreU(texel_indices(first_half, pixel.value), IndexLanes(), index + x);
        x += 2 * lanes;
        if (x >= length) {
            break;
        }
    }
}

/// Fetches the first `count` texels of the buffer, stored eight at a time in one 64-bit number, the first in
/// its low byte.
HWY_INLINE void fetch_texels(TexelBuffer &texels, std::size_t count) {
    const std::uint8_t *map = envmap.get();
    for (std::size_t i = 0; i < count; i += 8) {
        std::uint64_t eight = 0;
        for (std::size_t k = 0; k < 8; ++k) {
            eight |= std::uint64_t{map[texels.index[i + k]]} << (8 * k);
        }
        std::memcpy(&texels.colour[i], &eight, sizeof eight);
    }
}

/// Draws a span with the colours of its texels.
template <class D>
HWY_INLINE void draw_mapped_span(D words, const SpanList &spans, std::size_t i, const std::uint8_t *colours,
                                 const DrawTarget &target) {
    const auto lanes = static_cast<std::int32_t>(hn::Lanes(words));
    std::uint8_t *pixels = target.pixels + spans.offset[i];
    std::uint16_t *depths = target.depths + spans.offset[i];
    PixelValues<D, 0, 1> pixel(spans, i);
    const std::int32_t length = spans.length[i];
    for (std::int32_t x = 0;; pixel.advance()) {
        const auto colour = hn::LoadU(ByteLanes<D>(), colours + x);
        write_nearer(words, pixel.value[0], colour, length - x, pixels + x, depths + x);
        x += lanes;
        if (x >= length) {
            break;
        }
    }
}

/// Draws spans from `first` on, as many as have room for their texels in the buffer together, and returns the
/// first one left. The indices are computed first, then the texels are fetched in one scalar loop, and the
/// spans are drawn last. Fetching while a span is drawn was slower, and so were gathers (docs/speed.md,
/// "Tried without gain").
template <bool all_in_one_vector, class D>
HWY_INLINE std::size_t draw_mapped_run(D words, const SpanList &spans, std::size_t first, TexelBuffer &texels,
                                       const DrawTarget &target) {
    std::size_t count = 0;
    std::size_t last = first;
    for (; last < spans.count; ++last) {
        const auto length = static_cast<std::size_t>(spans.length[last]);
        if (count + length > TexelBuffer::capacity) {
            break;
        }
        if constexpr (all_in_one_vector) {
            put_few_texel_indices(words, spans, last, &texels.index[count]);
        } else {
            put_texel_indices(spans, last, &texels.index[count]);
        }
        count += length;
    }
    fetch_texels(texels, count);
    const std::uint8_t *colours = texels.colour.data();
    for (std::size_t i = first; i < last; ++i) {
        draw_mapped_span(words, spans, i, colours, target);
        colours += spans.length[i];
    }
    return last;
}

/// Draws the first pixels of a span that is longer than the buffer, until the rest fits.
HWY_INLINE void shorten_span(SpanList &spans, std::size_t i, TexelBuffer &texels, const DrawTarget &target) {
    constexpr auto piece = static_cast<std::int32_t>(TexelBuffer::capacity);
    while (spans.length[i] > piece) {
        const std::int32_t rest = spans.length[i] - piece;
        spans.length[i] = piece;
        put_texel_indices(spans, i, texels.index.data());
        fetch_texels(texels, TexelBuffer::capacity);
        draw_mapped_span(WordLanes(), spans, i, texels.colour.data(), target);
        spans.length[i] = rest;
        spans.offset[i] += TexelBuffer::capacity;
        for (std::size_t q = 0; q < 3; ++q) {
            spans.value[q][i] += static_cast<std::uint32_t>(piece) * spans.step[q][i];
        }
    }
}

/// Draws the spans of the mapped modes in vectors of these lanes; `all_in_one_vector` promises that no span
/// is longer than one.
template <bool all_in_one_vector, class D>
HWY_INLINE void draw_mapped_spans(D words, SpanList &spans, TexelBuffer &texels, const DrawTarget &target) {
    for (std::size_t first = 0; first < spans.count;) {
        // After this the first span fits the buffer, so that each run draws at least one.
        if (!all_in_one_vector) {
            shorten_span(spans, first, texels, target);
        }
        first = draw_mapped_run<all_in_one_vector>(words, spans, first, texels, target);
    }
}

/// The length of the longest span.
HWY_INLINE std::size_t longest_span(const SpanList &spans) {
    const IntLanes ints;
    Ints longest = hn::Zero(ints);
    for (std::size_t at = 0; at < spans.count; at += hn::Lanes(ints)) {
        const auto is_span = hn::FirstN(ints, spans.count - at);
        longest = hn::Max(longest, hn::IfThenElseZero(is_span, hn::Load(ints, &spans.length[at])));
    }
    return static_cast<std::size_t>(hn::GetLane(hn::MaxOfLanes(ints, longest)));
}

/// Draws all spans and empties the list. The width of the vectors is chosen once for the whole list: the
/// lengths of single spans are as good as random, and a mispredicted branch costs more than half a vector
/// saves.
template <Filler filler>
HWY_INLINE void draw_spans(SpanList &spans, TexelBuffer &texels, const DrawTarget &target) {
    const NarrowLanes narrow;
    const WordLanes words;
    constexpr bool has_narrower = hn::MaxLanes(NarrowLanes()) < hn::MaxLanes(WordLanes());
    const std::size_t longest = longest_span(spans);
    const bool use_narrow = has_narrower && longest <= hn::Lanes(narrow);
    if constexpr (filler != Filler::mapped) {
        if (use_narrow) {
            draw_computed_spans<filler>(narrow, spans, target);
        } else {
            draw_computed_spans<filler>(words, spans, target);
        }
    } else if (use_narrow) {
        draw_mapped_spans<true>(narrow, spans, texels, target);
    } else if (longest <= hn::Lanes(words)) {
        draw_mapped_spans<true>(words, spans, texels, target);
    } else {
        draw_mapped_spans<false>(words, spans, texels, target);
    }
    spans.count = 0;
}

} // namespace HWY_NAMESPACE
} // namespace fast
HWY_AFTER_NAMESPACE();

#endif

#endif
