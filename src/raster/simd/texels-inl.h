// SPDX-License-Identifier: MIT
// The texels of spans: their indices are computed in vectors, then they are fetched one by one.
// Compiled once for each instruction set.
#if defined(ZELVO_RASTER_SIMD_TEXELS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZELVO_RASTER_SIMD_TEXELS_INL_H
#undef ZELVO_RASTER_SIMD_TEXELS_INL_H
#else
#define ZELVO_RASTER_SIMD_TEXELS_INL_H
#endif

#include "hwy/highway.h"

#include "raster/simd/conversions-inl.h"
#include "raster/simd/pixel_vectors-inl.h"
#include "raster/simd/span_list.h"
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

/// Texels of several spans, back to back, with room for two vectors after the last. Indices are zeros at
/// first: a few after the last are fetched with it, and dropped.
struct TexelBuffer {
    /// 8 KiB of indices and 4 KiB of colours stay in the first-level cache. Other sizes took the same time
    /// (docs/speed.md, "Tried without gain").
    static constexpr std::size_t capacity = 4096;
    alignas(vector_bytes) std::array<std::uint16_t, capacity + vector_bytes> index{};
    alignas(vector_bytes) std::array<std::uint8_t, capacity + vector_bytes> colour;
};

/// Changes the map coordinates of a list so that less is left to do for each pixel. The index of
/// fill_tri_mapped is the low 16 bits of map_centre + column + row * 256. The centre is added to the column
/// here. The row is shifted by 8, so that the low byte of its integer part, which is all that counts, becomes
/// the accumulator's top byte. Then (column + (row & 0xFF000000)) >> 16 is the index.
HWY_INLINE void prepare_map_coordinates(SpanList &spans) {
    const WordLanes words;
    for (std::size_t at = 0; at < spans.count; at += hn::Lanes(words)) {
        std::uint32_t *const column = &spans.value[map_column][at];
        std::uint32_t *const row = &spans.value[map_row][at];
        std::uint32_t *const row_step = &spans.step[map_row][at];
        hn::Store(hn::Add(hn::Load(words, column), hn::Set(words, map_centre << 16U)), words, column);
        hn::Store(hn::ShiftLeft<8>(hn::Load(words, row)), words, row);
        hn::Store(hn::ShiftLeft<8>(hn::Load(words, row_step)), words, row_step);
    }
}

/// Puts the texel indices of a span at `index`, those of `vectors` vectors of words at a time;
/// `all_at_once` promises that the span is not longer.
template <bool all_at_once, class D, std::size_t vectors>
HWY_INLINE void put_texel_indices(const SpanList &spans, std::size_t i, std::uint16_t *index) {
    using Indices = typename NarrowPixels<D, vectors>::Depths;
    constexpr auto pixels = static_cast<std::int32_t>(vectors * hn::MaxLanes(D()));
    const auto integer_part = hn::Set(D(), 0xFF000000);
    const std::int32_t length = spans.length[i];
    PixelValues<D, vectors> column(spans.value[map_column][i], spans.step[map_column][i]);
    PixelValues<D, vectors> row(spans.value[map_row][i], spans.step[map_row][i]);
    for (std::int32_t x = 0;;) {
        auto sum = column.values();
        for (std::size_t v = 0; v < vectors; ++v) {
            sum[v] = hn::Add(sum[v], hn::And(row.values()[v], integer_part));
        }
        hn::StoreU(halves_from<Indices, 16>(sum), Indices(), index + x);
        x += pixels;
        if (all_at_once || x >= length) {
            break;
        }
        column.advance();
        row.advance();
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

} // namespace HWY_NAMESPACE
} // namespace fast
HWY_AFTER_NAMESPACE();

#endif

#endif
