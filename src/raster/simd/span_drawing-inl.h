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
#include "raster/simd/span_bounds-inl.h"
#include "raster/simd/span_colours-inl.h"
#include "raster/simd/span_list.h"
#include "raster/simd/texel_windows-inl.h"
#include "raster/simd/texels-inl.h"
#include "raster/simd/triangle_batch.h"

#include <cstddef>
#include <cstdint>

// Without vectors (Highway's EMU128 and SCALAR) the plain forms are used: not all operations exist there.
#if HWY_TARGET < HWY_EMU128

HWY_BEFORE_NAMESPACE();
namespace fast {
namespace HWY_NAMESPACE {

/// How many pixels are drawn together, and whether no span has more.
template <class PixelVectors, bool all>
struct Width {
    using Pixels = PixelVectors;
    static constexpr bool all_at_once = all;
};

/// Draws the spans from `first` on, up to `last`. `colours_of` returns the colours along a span.
template <class Pixels, bool all_at_once, class ColoursOf>
HWY_INLINE void draw_each(const SpanList &spans, std::size_t first, std::size_t last,
                          const DrawTarget &target, ColoursOf colours_of) {
    const auto lanes = static_cast<std::int32_t>(hn::Lanes(typename Pixels::Bytes()));
    // Copies, because the compiler cannot know that pixels are not written over the originals.
    std::uint8_t *const first_pixel = target.pixels;
    std::uint16_t *const first_depth = target.depths;
    for (std::size_t i = first; i < last; ++i) {
        std::uint8_t *pixels = first_pixel + spans.offset[i];
        std::uint16_t *depths = first_depth + spans.offset[i];
        typename Pixels::Quantity depth(spans.value[0][i], spans.step[0][i]);
        auto colours = colours_of(i);
        for (std::int32_t left = spans.length[i];;) {
            Pixels::write_nearer(depth.values(), colours.values(), left, pixels, depths);
            left -= lanes;
            if (all_at_once || left <= 0) {
                break;
            }
            depth.advance();
            colours.advance();
            pixels += lanes;
            depths += lanes;
        }
    }
}

/// Draws spans from `first` on, as many as have room for their texels in the buffer together, and returns the
/// first one left. The indices are computed first, then the texels are fetched in one scalar loop, and the
/// spans are drawn last. Fetching while a span is drawn was slower, and so were gathers (docs/speed.md,
/// "Tried without gain").
template <class Pixels, bool all_at_once>
HWY_INLINE std::size_t draw_fetched_run(const SpanList &spans, std::size_t first, TexelBuffer &texels,
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
    const std::uint8_t *next = texels.colour.data();
    draw_each<Pixels, all_at_once>(spans, first, last, target, [&spans, &next](std::size_t i) HWY_ATTR {
        const StoredColours<Pixels> colours(next);
        next += spans.length[i];
        return colours;
    });
    return last;
}

/// Draws the first pixels of a span that is longer than the buffer, until the rest fits.
template <class Pixels>
HWY_INLINE void shorten_span(SpanList &spans, std::size_t i, TexelBuffer &texels, const DrawTarget &target) {
    constexpr auto piece = static_cast<std::int32_t>(TexelBuffer::capacity);
    while (spans.length[i] > piece) {
        const std::int32_t rest = spans.length[i] - piece;
        spans.length[i] = piece;
        // The piece fills the buffer, so that no other span is drawn with it.
        draw_fetched_run<Pixels, false>(spans, i, texels, target);
        spans.length[i] = rest;
        spans.offset[i] += TexelBuffer::capacity;
        for (std::size_t q = 0; q < 3; ++q) {
            spans.value[q][i] += static_cast<std::uint32_t>(piece) * spans.step[q][i];
        }
    }
}

/// Draws all spans with texels that are fetched one by one.
template <class Pixels, bool all_at_once>
HWY_INLINE void draw_fetched(SpanList &spans, TexelBuffer &texels, const DrawTarget &target) {
    static_assert(!all_at_once ||
                  SpanList::capacity * hn::MaxLanes(typename Pixels::Bytes()) <= TexelBuffer::capacity);
    prepare_map_coordinates(spans);
    for (std::size_t first = 0; first < spans.count;) {
        // After this the first span fits the buffer, so that each run draws at least one.
        if (!all_at_once) {
            shorten_span<Pixels>(spans, first, texels, target);
        }
        first = draw_fetched_run<Pixels, all_at_once>(spans, first, texels, target);
    }
}

/// The memory that drawing spans of the mapped filler needs.
struct TexelBuffers {
    TexelBuffer fetched;
    WindowList windows;
};

/// Calls `draw` with the width that suits a list of spans with narrow depths, whose longest has this many
/// pixels. How many pixels are drawn together is chosen once for the whole list: the lengths of single spans
/// are as good as random, and a mispredicted branch costs more than half a vector saves. 8 pixels are enough
/// for most spans of a fine mesh, and some processors split the widest vectors in two; but 8 for all lists
/// took 6 to 21 percent longer (docs/speed.md, "Tried without gain"). Longer spans are drawn 16 pixels at a
/// time, or 8 where a vector has only four words.
template <class Draw>
HWY_INLINE void draw_by_length(std::int32_t longest, Draw draw) {
    using ShortLanes = hn::CappedTag<std::uint32_t, 8>;
    constexpr auto few = static_cast<std::int32_t>(hn::MaxLanes(ShortLanes()));
    constexpr auto lanes = static_cast<std::int32_t>(hn::MaxLanes(WordLanes()));
    constexpr std::size_t vectors = lanes < 16 ? 2 : 1;
    constexpr std::int32_t many = lanes * static_cast<std::int32_t>(vectors);
    if (longest <= few) {
        draw(Width<NarrowPixels<ShortLanes, 1>, true>());
    } else if (longest <= many) {
        draw(Width<NarrowPixels<WordLanes, vectors>, true>());
    } else {
        draw(Width<NarrowPixels<WordLanes, vectors>, false>());
    }
}

/// Draws all spans, whose depths are narrow, through windows of the map if these hold their texels. Returns
/// whether it did.
template <class Window>
HWY_INLINE bool draw_through(const SpanList &spans, const SpanBounds &bounds, WindowList &windows,
                             const DrawTarget &target) {
    if (!fits_windows<Window>(bounds) || !list_windows<Window>(spans, windows)) {
        return false;
    }
    const std::uint8_t *const map = envmap.get();
    draw_by_length(bounds.longest, [&](auto width) HWY_ATTR {
        using Pixels = typename decltype(width)::Pixels;
        draw_each<Pixels, width.all_at_once>(spans, 0, spans.count, target,
                                             [&spans, &windows, map](std::size_t i) HWY_ATTR {
                                                 return WindowColours<Window, Pixels>(spans, windows, i, map);
                                             });
    });
    return true;
}

/// Draws all spans with pixels of this width.
template <Filler filler, class Pixels, bool all_at_once>
HWY_INLINE void draw_list(SpanList &spans, TexelBuffers &texels, const DrawTarget &target) {
    if constexpr (filler == Filler::flat) {
        draw_each<Pixels, all_at_once>(spans, 0, spans.count, target, [&spans](std::size_t i) HWY_ATTR {
            return FlatColours<Pixels>(spans, i);
        });
    } else if constexpr (filler == Filler::mapped) {
        draw_fetched<Pixels, all_at_once>(spans, texels.fetched, target);
    } else {
        draw_each<Pixels, all_at_once>(spans, 0, spans.count, target, [&spans](std::size_t i) HWY_ATTR {
            return QuantityColours<Pixels>(spans, quantities_of(filler) - 1, i);
        });
    }
}

/// Draws all spans and empties the list.
template <Filler filler>
HWY_INLINE void draw_spans(SpanList &spans, TexelBuffers &texels, const DrawTarget &target) {
    const SpanBounds bounds = bounds_of<filler>(spans);
    if (!bounds.has_narrow_depths) {
        draw_list<filler, WidePixels, false>(spans, texels, target);
    } else if (filler != Filler::mapped ||
               !(draw_through<SmallWindow>(spans, bounds, texels.windows, target) ||
                 draw_through<LargeWindow>(spans, bounds, texels.windows, target))) {
        draw_by_length(bounds.longest, [&](auto width) HWY_ATTR {
            draw_list<filler, typename decltype(width)::Pixels, width.all_at_once>(spans, texels, target);
        });
    }
    spans.count = 0;
}

} // namespace HWY_NAMESPACE
} // namespace fast
HWY_AFTER_NAMESPACE();

#endif

#endif
