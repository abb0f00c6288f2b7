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

/// `Count` quantities from `First` on, of a vector of pixels along a span.
template <std::size_t First, std::size_t Count>
struct PixelValues {
    std::array<Words, Count> value;
    /// What one pixel adds.
    std::array<Fixed, Count> step;

    HWY_INLINE PixelValues(const SpanList &spans, std::size_t span) {
        const WordLanes words;
        for (std::size_t q = 0; q < Count; ++q) {
            step[q] = spans.step[First + q][span];
            const Words first_pixel = hn::Set(words, spans.value[First + q][span]);
            value[q] = hn::Add(first_pixel, hn::Mul(hn::Iota(words, 0), hn::Set(words, step[q])));
        }
    }

    /// Goes on by one vector.
    HWY_INLINE void advance() {
        const WordLanes words;
        for (std::size_t q = 0; q < Count; ++q) {
            value[q] = hn::Add(value[q], hn::Set(words, step[q] * static_cast<Fixed>(hn::Lanes(words))));
        }
    }
};

/// Writes the pixels that are nearer than what the frame holds, among the first `count` lanes. A whole vector
/// is written back, the other pixels as they were.
HWY_INLINE void write_nearer(Ints depth, Ints colour, std::int32_t count, std::uint8_t *pixels,
                             std::uint16_t *depths) {
    const IntLanes ints;
    const DepthLanes depth_lanes;
    const ByteLanes bytes;
    const Ints old_depth = hn::PromoteTo(ints, hn::LoadU(depth_lanes, depths));
    const Ints old_colour = hn::PromoteTo(ints, hn::LoadU(bytes, pixels));
    const auto is_drawn = hn::And(hn::Gt(depth, old_depth), hn::Lt(hn::Iota(ints, 0), hn::Set(ints, count)));
    const WordLanes words;
    const Words new_depth = hn::BitCast(words, hn::IfThenElse(is_drawn, depth, old_depth));
    const Words new_colour = hn::BitCast(words, hn::IfThenElse(is_drawn, colour, old_colour));
    hn::StoreU(hn::TruncateTo(depth_lanes, new_depth), depth_lanes, depths);
    hn::StoreU(hn::TruncateTo(bytes, new_colour), bytes, pixels);
}

/// Depths in 8.8 from accumulators in 16.16.
HWY_INLINE Ints depth_of(Words value) {
    return hn::ShiftRight<8>(as_signed(value));
}

/// The colours of accumulators in 16.16, in the low bytes.
HWY_INLINE Ints colour_of(Words value) {
    return as_signed(hn::ShiftRight<16>(value));
}

/// Draws the spans of the modes that compute their colours, and empties the list.
template <Filler filler>
HWY_INLINE void draw_computed_spans(SpanList &spans) {
    const IntLanes ints;
    const auto lanes = static_cast<std::int32_t>(hn::Lanes(ints));
    for (std::size_t i = 0; i < spans.count; ++i) {
        std::uint8_t *pixels = chunkybuf1.get() + spans.offset[i];
        std::uint16_t *depths = zbuf.get() + spans.offset[i];
        PixelValues<0, quantities_of(filler)> pixel(spans, i);
        const Ints flat_colour = hn::Set(ints, static_cast<std::int32_t>(spans.colour[i]));
        for (std::int32_t left = spans.length[i];;) {
            const Ints colour = filler == Filler::flat ? flat_colour : colour_of(pixel.value.back());
            write_nearer(depth_of(pixel.value[0]), colour, left, pixels, depths);
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

/// Texels of several spans, back to back, with room for a vector behind the last.
struct TexelBuffer {
    static constexpr std::size_t capacity = 2048;
    alignas(vector_bytes) std::array<std::uint16_t, capacity + vector_bytes> index;
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

/// Draws the spans `first` to `last` - 1, all of whose texels fit the buffer. The texels' indices are
/// computed first, the texels then fetched in one plain loop, and the spans drawn last: a fetch in the middle
/// of a vector's work costs more than all three.
HWY_INLINE void draw_mapped_run(const SpanList &spans, std::size_t first, std::size_t last,
                                TexelBuffer &texels) {
    const IntLanes ints;
    const auto lanes = static_cast<std::int32_t>(hn::Lanes(ints));
    std::size_t count = 0;
    for (std::size_t i = first; i < last; ++i) {
        PixelValues<1, 2> pixel(spans, i);
        const std::int32_t length = spans.length[i];
        for (std::int32_t x = 0;; pixel.advance()) {
            const std::array<Words, 2> first_half = pixel.value;
            pixel.advance();
            hn::StoreU(texel_indices(first_half, pixel.value), IndexLanes(),
                       &texels.index[count + static_cast<std::size_t>(x)]);
            x += 2 * lanes;
            if (x >= length) {
                break;
            }
        }
        count += static_cast<std::size_t>(spans.length[i]);
    }
    const std::uint8_t *map = envmap.get();
    for (std::size_t i = 0; i < count; i += 8) {
        std::uint64_t eight = 0;
        for (std::size_t k = 0; k < 8; ++k) {
            eight |= std::uint64_t{map[texels.index[i + k]]} << (8 * k);
        }
        std::memcpy(&texels.colour[i], &eight, sizeof eight);
    }
    const std::uint8_t *colours = texels.colour.data();
    for (std::size_t i = first; i < last; ++i) {
        std::uint8_t *pixels = chunkybuf1.get() + spans.offset[i];
        std::uint16_t *depths = zbuf.get() + spans.offset[i];
        PixelValues<0, 1> pixel(spans, i);
        const std::int32_t length = spans.length[i];
        for (std::int32_t x = 0;; pixel.advance()) {
            const Ints colour = hn::PromoteTo(ints, hn::LoadU(ByteLanes(), colours + x));
            write_nearer(depth_of(pixel.value[0]), colour, length - x, pixels + x, depths + x);
            x += lanes;
            if (x >= length) {
                break;
            }
        }
        colours += length;
    }
}

/// Draws the first pixels of a span that is longer than the buffer, until the rest fits.
HWY_INLINE void shorten_span(SpanList &spans, std::size_t i, TexelBuffer &texels) {
    constexpr auto piece = static_cast<std::int32_t>(TexelBuffer::capacity);
    while (spans.length[i] > piece) {
        const std::int32_t length = spans.length[i];
        spans.length[i] = piece;
        draw_mapped_run(spans, i, i + 1, texels);
        spans.length[i] = length - piece;
        spans.offset[i] += TexelBuffer::capacity;
        for (std::size_t q = 0; q < 3; ++q) {
            spans.value[q][i] += static_cast<std::uint32_t>(piece) * spans.step[q][i];
        }
    }
}

/// Draws the spans of the mapped modes, and empties the list.
HWY_INLINE void draw_mapped_spans(SpanList &spans, TexelBuffer &texels) {
    std::size_t first = 0;
    std::size_t pixels = 0;
    for (std::size_t i = 0; i < spans.count; ++i) {
        if (pixels + static_cast<std::size_t>(spans.length[i]) > TexelBuffer::capacity) {
            draw_mapped_run(spans, first, i, texels);
            shorten_span(spans, i, texels);
            first = i;
            pixels = 0;
        }
        pixels += static_cast<std::size_t>(spans.length[i]);
    }
    draw_mapped_run(spans, first, spans.count, texels);
    spans.count = 0;
}

} // namespace HWY_NAMESPACE
} // namespace fast
HWY_AFTER_NAMESPACE();

#endif

#endif
