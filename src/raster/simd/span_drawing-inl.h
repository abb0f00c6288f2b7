// SPDX-License-Identifier: MIT
// Depth-tested spans. Compiled once for each instruction set.
#if defined(ZELVO_RASTER_SIMD_SPAN_DRAWING_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZELVO_RASTER_SIMD_SPAN_DRAWING_INL_H
#undef ZELVO_RASTER_SIMD_SPAN_DRAWING_INL_H
#else
#define ZELVO_RASTER_SIMD_SPAN_DRAWING_INL_H
#endif

#include "display/frame_buffers.h"
#include "raster/fixed_point.h"
#include "raster/simd/conversions-inl.h"
#include "raster/simd/triangle_batch.h"
#include "raster/texture_map.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

// A processor without any vectors has no lanes of two widths to move between, and draws by the plain forms.
#if HWY_TARGET < HWY_EMU128

HWY_BEFORE_NAMESPACE();
namespace fast {
namespace HWY_NAMESPACE {

/// How a filler colours a pixel, and how many quantities it interpolates.
enum class Filler { zcolour, flat, gouraud, mapped };

constexpr std::size_t quantities_of(Filler filler) {
    return filler == Filler::mapped ? 3 : filler == Filler::gouraud ? 2 : 1;
}

/// A vector of pixels in 32-bit lanes; the frame's depths and bytes in narrower vectors of as many lanes.
using DepthLanes = hn::Rebind<std::uint16_t, IntLanes>;
using ByteLanes = hn::Rebind<std::uint8_t, IntLanes>;
using Colours = hn::Vec<ByteLanes>;

/// `Count` quantities from `First` on, of a vector of pixels along a span.
template <std::size_t First, std::size_t Count>
struct PixelValues {
    std::array<Words, Count> value;
    /// What a whole vector of pixels adds.
    std::array<Words, Count> stride;

    HWY_INLINE PixelValues(const SpanList &spans, std::size_t span) {
        const WordLanes words;
        for (std::size_t q = 0; q < Count; ++q) {
            const Words step = hn::Set(words, spans.step[First + q][span]);
            const Words first_pixel = hn::Set(words, spans.value[First + q][span]);
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

/// A mask of pixels as a mask of narrower lanes.
template <class Narrow>
HWY_INLINE hn::Mask<Narrow> narrow_mask(Narrow narrow, hn::Mask<IntLanes> mask) {
    const IntLanes ints;
#if HWY_TARGET <= HWY_AVX3
    // Here a mask is one bit for each lane, whatever the lanes are.
    std::array<std::uint8_t, 8> bits{};
    hn::StoreMaskBits(ints, mask, bits.data());
    return hn::LoadMaskBits(narrow, bits.data());
#else
    const Words all_ones = hn::BitCast(WordLanes(), hn::VecFromMask(ints, mask));
    return hn::MaskFromVec(hn::TruncateTo(narrow, all_ones));
#endif
}

/// Writes the pixels that are nearer than what the frame holds, among the first `count` lanes. Depths are in
/// 8.8, from accumulators in 16.16. A whole vector is written back, the other pixels as they were.
HWY_INLINE void write_nearer(Words accumulated_depth, Colours colour, std::int32_t count,
                             std::uint8_t *pixels, std::uint16_t *depths) {
    const IntLanes ints;
    const DepthLanes depth_lanes;
    const ByteLanes bytes;
    const Ints depth = hn::ShiftRight<8>(as_signed(accumulated_depth));
    const auto old_depth = hn::LoadU(depth_lanes, depths);
    const auto is_drawn = hn::And(hn::Gt(depth, hn::PromoteTo(ints, old_depth)),
                                  hn::Lt(hn::Iota(ints, 0), hn::Set(ints, count)));
    const auto new_depth = hn::TruncateTo(depth_lanes, as_fixed(depth));
    hn::StoreU(hn::IfThenElse(narrow_mask(depth_lanes, is_drawn), new_depth, old_depth), depth_lanes, depths);
    const Colours old_colour = hn::LoadU(bytes, pixels);
    hn::StoreU(hn::IfThenElse(narrow_mask(bytes, is_drawn), colour, old_colour), bytes, pixels);
}

/// Draws the spans of the modes that compute their colours, and empties the list.
template <Filler filler>
HWY_INLINE void draw_computed_spans(SpanList &spans) {
    const ByteLanes bytes;
    const auto lanes = static_cast<std::int32_t>(hn::Lanes(IntLanes()));
    for (std::size_t i = 0; i < spans.count; ++i) {
        std::uint8_t *pixels = chunkybuf1.get() + spans.offset[i];
        std::uint16_t *depths = zbuf.get() + spans.offset[i];
        PixelValues<0, quantities_of(filler)> pixel(spans, i);
        for (std::int32_t left = spans.length[i];;) {
            Colours colour;
            if constexpr (filler == Filler::flat) {
                colour = hn::Set(bytes, static_cast<std::uint8_t>(spans.colour[i]));
            } else {
                colour = hn::TruncateTo(bytes, hn::ShiftRight<16>(pixel.value.back()));
            }
            write_nearer(pixel.value[0], colour, left, pixels, depths);
            left -= lanes;
            if (left <= 0) {
                break;
            }
            pixel.advance();
            pixels += lanes;
            depths += lanes;
        }
    }
    spans.count = 0;
}

/// Texels of several spans, back to back, with room for a vector behind the last. Indices are zeros at first:
/// a few behind the last are fetched with it, and dropped.
struct TexelBuffer {
    static constexpr std::size_t capacity = 2048;
    alignas(vector_bytes) std::array<std::uint16_t, capacity + vector_bytes> index{};
    alignas(vector_bytes) std::array<std::uint8_t, capacity + vector_bytes> colour;
};

/// Twice as many lanes of 16 bits, which both coordinates' integer parts are as well as a texel's index.
using IndexLanes = hn::Repartition<std::uint16_t, WordLanes>;

/// Texel indices of two vectors of pixels. Both coordinates wrap in the low 16 bits of the sum, to which the
/// map's centre adds the same number everywhere.
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

/// Puts the texel indices of a span's pixels at `index`.
HWY_INLINE void put_texel_indices(const SpanList &spans, std::size_t i, std::uint16_t *index) {
    const auto lanes = static_cast<std::int32_t>(hn::Lanes(IntLanes()));
    PixelValues<1, 2> pixel(spans, i);
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

/// Fetches the first `count` texels of the buffer, eight at a time.
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
HWY_INLINE void draw_mapped_span(const SpanList &spans, std::size_t i, const std::uint8_t *colours) {
    const auto lanes = static_cast<std::int32_t>(hn::Lanes(IntLanes()));
    std::uint8_t *pixels = chunkybuf1.get() + spans.offset[i];
    std::uint16_t *depths = zbuf.get() + spans.offset[i];
    PixelValues<0, 1> pixel(spans, i);
    const std::int32_t length = spans.length[i];
    for (std::int32_t x = 0;; pixel.advance()) {
        const Colours colour = hn::LoadU(ByteLanes(), colours + x);
        write_nearer(pixel.value[0], colour, length - x, pixels + x, depths + x);
        x += lanes;
        if (x >= length) {
            break;
        }
    }
}

/// Draws spans from `first` on, as many as have their texels in the buffer together, and returns the first
/// one left. The texels' indices are computed first, the texels then fetched in one plain loop, and the spans
/// drawn last: a fetch in the middle of a vector's work costs more than all three.
HWY_INLINE std::size_t draw_mapped_run(const SpanList &spans, std::size_t first, TexelBuffer &texels) {
    std::size_t count = 0;
    std::size_t last = first;
    for (; last < spans.count; ++last) {
        const auto length = static_cast<std::size_t>(spans.length[last]);
        if (count + length > TexelBuffer::capacity) {
            break;
        }
        put_texel_indices(spans, last, &texels.index[count]);
        count += length;
    }
    fetch_texels(texels, count);
    const std::uint8_t *colours = texels.colour.data();
    for (std::size_t i = first; i < last; ++i) {
        draw_mapped_span(spans, i, colours);
        colours += spans.length[i];
    }
    return last;
}

/// Draws the first pixels of a span that is longer than the buffer, until the rest fits.
HWY_INLINE void shorten_span(SpanList &spans, std::size_t i, TexelBuffer &texels) {
    constexpr auto piece = static_cast<std::int32_t>(TexelBuffer::capacity);
    while (spans.length[i] > piece) {
        const std::int32_t rest = spans.length[i] - piece;
        spans.length[i] = piece;
        put_texel_indices(spans, i, texels.index.data());
        fetch_texels(texels, TexelBuffer::capacity);
        draw_mapped_span(spans, i, texels.colour.data());
        spans.length[i] = rest;
        spans.offset[i] += TexelBuffer::capacity;
        for (std::size_t q = 0; q < 3; ++q) {
            spans.value[q][i] += static_cast<std::uint32_t>(piece) * spans.step[q][i];
        }
    }
}

/// Draws the spans of the mapped modes, and empties the list.
HWY_INLINE void draw_mapped_spans(SpanList &spans, TexelBuffer &texels) {
    for (std::size_t first = 0; first < spans.count;) {
        // All spans but one that is longer than the buffer find room in it when they come first.
        shorten_span(spans, first, texels);
        first = draw_mapped_run(spans, first, texels);
    }
    spans.count = 0;
}

} // namespace HWY_NAMESPACE
} // namespace fast
HWY_AFTER_NAMESPACE();

#endif

#endif
