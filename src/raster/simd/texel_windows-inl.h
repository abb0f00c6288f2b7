// SPDX-License-Identifier: MIT
// Windows of the map: so few neighbouring texels that vectors hold them. A span that stays in a window finds
// its texels by looking up bytes, many at once.
// Compiled once for each instruction set.
#if defined(ZELVO_RASTER_SIMD_TEXEL_WINDOWS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZELVO_RASTER_SIMD_TEXEL_WINDOWS_INL_H
#undef ZELVO_RASTER_SIMD_TEXEL_WINDOWS_INL_H
#else
#define ZELVO_RASTER_SIMD_TEXEL_WINDOWS_INL_H
#endif

#include "hwy/highway.h"

#include "raster/simd/conversions-inl.h"
#include "raster/simd/pixel_vectors-inl.h"
#include "raster/simd/span_bounds-inl.h"
#include "raster/simd/span_list.h"
#include "raster/texture_map.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

// Without vectors (Highway's EMU128 and SCALAR) the plain forms are used: not all operations exist there.
#if HWY_TARGET < HWY_EMU128

HWY_BEFORE_NAMESPACE();
namespace fast {
namespace HWY_NAMESPACE {

/// The bytes of a vector in which texels are looked up.
using WindowBytes = hn::Full128<std::uint8_t>;

/// 2 rows of 8 texels in one vector. One operation looks up all pixels.
class SmallWindow {
public:
    static constexpr std::uint32_t columns = 8;
    static constexpr std::uint32_t rows = 2;

    /// The window whose first texel is at `first`.
    explicit HWY_INLINE SmallWindow(const std::uint8_t *first) {
        const hn::Half<WindowBytes> row;
        texels_ = hn::Combine(WindowBytes(), hn::LoadU(row, first + map_row_bytes), hn::LoadU(row, first));
    }

    /// The texels with these indices, column + row * columns, in bytes. Other indices give any values.
    template <class Index>
    HWY_INLINE Index operator[](Index index) const {
        return hn::TableLookupBytes(texels_, index);
    }

private:
    hn::Vec<WindowBytes> texels_;
};

/// 4 rows of 16 texels, each in one vector.
class LargeWindow {
public:
    static constexpr std::uint32_t columns = 16;
    static constexpr std::uint32_t rows = 4;

    explicit HWY_INLINE LargeWindow(const std::uint8_t *first) {
        for (auto &row : rows_) {
            row = hn::LoadU(WindowBytes(), first);
            first += map_row_bytes;
        }
    }

    template <class Index>
    HWY_INLINE Index operator[](Index index) const {
        const hn::DFromV<Index> bytes;
        const hn::RebindToSigned<decltype(bytes)> signed_bytes;
        const hn::Repartition<std::uint16_t, decltype(bytes)> pairs;
        const Index column = hn::And(index, hn::Set(bytes, columns - 1));
        // Bit 4 or bit 5 of each byte, moved to its top bit. The bits below do not matter.
        const auto is_odd = hn::BitCast(signed_bytes, hn::ShiftLeft<3>(hn::BitCast(pairs, index)));
        const auto is_lower = hn::BitCast(signed_bytes, hn::ShiftLeft<2>(hn::BitCast(pairs, index)));
        const auto in_row = [this, column, signed_bytes](std::size_t row) HWY_ATTR {
            return hn::BitCast(signed_bytes, hn::TableLookupBytes(rows_[row], column));
        };
        const auto upper = hn::IfNegativeThenElse(is_odd, in_row(1), in_row(0));
        const auto lower = hn::IfNegativeThenElse(is_odd, in_row(3), in_row(2));
        return hn::BitCast(bytes, hn::IfNegativeThenElse(is_lower, lower, upper));
    }

private:
    std::array<hn::Vec<WindowBytes>, rows> rows_;
};

/// How far a row is shifted to the left of the column in a texel's index.
template <class Window>
constexpr int row_shift = std::countr_zero(Window::columns);

/// The windows of a list's spans. Map coordinates are those of the spans' first pixels, counted from the
/// window's first texel. Rows are shifted, so that the sum of both has the texel's index in its high half.
struct WindowList {
    /// The index of the window's first texel in the map.
    SpanList::Array<std::uint32_t> first;
    SpanList::Array<std::uint32_t> column;
    SpanList::Array<std::uint32_t> row;
    SpanList::Array<std::uint32_t> row_step;
};

/// Whether a list's spans are no wider and no higher on the map than a window.
template <class Window>
HWY_INLINE bool fits_windows(const SpanBounds &bounds) {
    // Bounds below 2^24 are exact. Where in its texel the first pixel is can add less than one texel.
    constexpr float one = 65536.0F;
    return bounds.map_width < static_cast<float>(Window::columns - 1) * one &&
           bounds.map_height < static_cast<float>(Window::rows - 1) * one;
}

/// The least value of a quantity along a span, without its fraction. `change` is the last pixel's value less
/// the first one's.
HWY_INLINE Words least_integer(Words first, Words change) {
    const WordLanes words;
    const Ints down = hn::Min(as_signed(change), hn::Zero(IntLanes()));
    return hn::And(hn::Add(first, as_fixed(down)), hn::Set(words, 0xFFFF0000));
}

/// Lists the windows of spans that fit them. Returns false if one of them reaches past the map's end, so that
/// it would have to go on at the start.
template <class Window>
HWY_INLINE bool list_windows(const SpanList &spans, WindowList &windows) {
    const IntLanes ints;
    const WordLanes words;
    Ints last = hn::Zero(ints);
    for (std::size_t at = 0; at < spans.count; at += hn::Lanes(words)) {
        const Words steps = as_fixed(hn::Sub(hn::Load(ints, &spans.length[at]), hn::Set(ints, 1)));
        const Words column = hn::Load(words, &spans.value[map_column][at]);
        const Words row = hn::Load(words, &spans.value[map_row][at]);
        const Words row_step = hn::Load(words, &spans.step[map_row][at]);
        const Words column_change = hn::Mul(steps, hn::Load(words, &spans.step[map_column][at]));
        const Words first_column = least_integer(column, column_change);
        const Words first_row = least_integer(row, hn::Mul(steps, row_step));
        const Words from_centre = hn::Add(hn::ShiftRight<16>(first_column), hn::ShiftRight<8>(first_row));
        const Words first = hn::And(hn::Add(from_centre, hn::Set(words, map_centre)), hn::Set(words, 0xFFFF));
        const auto is_span = hn::FirstN(ints, spans.count - at);
        last = hn::Max(last, hn::IfThenElseZero(is_span, as_signed(first)));
        hn::Store(first, words, &windows.first[at]);
        hn::Store(hn::Sub(column, first_column), words, &windows.column[at]);
        hn::Store(hn::ShiftLeft<row_shift<Window>>(hn::Sub(row, first_row)), words, &windows.row[at]);
        hn::Store(hn::ShiftLeft<row_shift<Window>>(row_step), words, &windows.row_step[at]);
    }
    constexpr auto bytes = static_cast<std::int32_t>((Window::rows - 1) * map_row_bytes + Window::columns);
    return hn::GetLane(hn::MaxOfLanes(ints, last)) <= envmap_bytes - bytes;
}

/// The texels along a span that stays in its window.
template <class Window, class Pixels>
class WindowColours {
public:
    HWY_INLINE WindowColours(const SpanList &spans, const WindowList &windows, std::size_t span,
                             const std::uint8_t *map)
        : window_(map + windows.first[span]), column_(windows.column[span], spans.step[map_column][span]),
          row_(windows.row[span], windows.row_step[span]) {}

    HWY_INLINE hn::Vec<typename Pixels::Bytes> values() const {
        constexpr std::uint32_t row_bits = (Window::rows - 1) << (16 + row_shift<Window>);
        auto index = column_.values();
        for (std::size_t v = 0; v < index.size(); ++v) {
            const auto row = hn::And(row_.values()[v], hn::Set(typename Pixels::Words(), row_bits));
            index[v] = hn::Add(index[v], row);
        }
        return window_[Pixels::colours(index)];
    }

    HWY_INLINE void advance() {
        column_.advance();
        row_.advance();
    }

private:
    Window window_;
    typename Pixels::Quantity column_;
    typename Pixels::Quantity row_;
};

} // namespace HWY_NAMESPACE
} // namespace fast
HWY_AFTER_NAMESPACE();

#endif

#endif
