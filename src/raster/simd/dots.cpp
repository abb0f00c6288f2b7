// SPDX-License-Identifier: MIT
// Dots: a vector of them is placed and clipped at once, then each is drawn a row of columns at a time from a
// sprite that holds what a texel adds.
#include "raster/dots.h"

#include "display/frame_buffers.h"
#include "object/model.h"
#include "raster/simd/triangle_batch.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "raster/simd/dots.cpp"
#include "hwy/foreach_target.h"

#include "hwy/highway.h"

#include "raster/simd/conversions-inl.h"
#include "raster/simd/packing-inl.h"

HWY_BEFORE_NAMESPACE();
namespace fast {
namespace HWY_NAMESPACE {

#if HWY_TARGET >= HWY_EMU128

// A processor without any vectors draws by the plain form.
using plain::plot_dots;

#else

/// What each texel of the sprite adds to a pixel, at most 255, which any pixel saturates at.
struct GlowSprite {
    alignas(vector_bytes) std::array<std::uint8_t, dot_image_size * dot_image_size> glow;
};

HWY_INLINE void build_glow_sprite(GlowSprite &sprite, std::int32_t luminance) {
    const IntLanes ints;
    const hn::Rebind<std::uint8_t, IntLanes> bytes;
    for (std::size_t i = 0; i < sprite.glow.size(); i += hn::Lanes(ints)) {
        const Ints texel = hn::PromoteTo(ints, hn::LoadU(bytes, dot_image.get() + i));
        const Ints glow = hn::ShiftRight<16>(hn::Mul(texel, hn::Set(ints, luminance)));
        hn::StoreU(hn::DemoteTo(bytes, glow), bytes, &sprite.glow[i]);
    }
}

/// Dots that touch the frame, by the part of them that lies in it.
struct DotBatch {
    static constexpr std::size_t capacity = 256;
    template <typename T>
    struct alignas(vector_bytes) Array : std::array<T, capacity + vector_lanes> {};

    std::size_t count = 0;
    /// The first pixel, counted from the frame's first.
    Array<std::uint32_t> offset;
    Array<std::int32_t> columns;
    Array<std::int32_t> rows;
    /// The texel of the first pixel and the texels a pixel, in 16.16.
    Array<std::uint32_t> texel_column;
    Array<std::uint32_t> texel_row;
    Array<std::uint32_t> step;
};

/// Where dots lie along one axis, as clip_dot has it: their pixels on the frame, and the first one's texel.
struct DotExtents {
    Ints first;
    Ints count;
    Words texel;
};

/// The parts that fall into the pixels `low` to `high` - 1, of dots whose pixel `start` samples the sprite at
/// `texel`, which is not negative. The quotient of the two numbers below 2^24 is right to the unit: a
/// quotient below a whole number is farther from it than single precision rounds.
HWY_INLINE DotExtents clip_dots(Ints start, Ints texel, Ints step, std::int32_t low, std::int32_t high) {
    const FloatLanes floats;
    const IntLanes ints;
    const auto sprite_end = hn::Set(ints, dot_image_size << 16);
    const auto rest = hn::Max(hn::Sub(sprite_end, texel), hn::Zero(ints));
    const auto dividend = hn::Sub(hn::Add(rest, step), hn::Set(ints, 1));
    const Ints pixels =
        hn::ConvertTo(ints, hn::Div(hn::ConvertTo(floats, dividend), hn::ConvertTo(floats, step)));
    const Ints first = hn::Max(start, hn::Set(ints, low));
    const Ints end = hn::Min(hn::Add(start, pixels), hn::Set(ints, high));
    const Words skipped = as_fixed(hn::Sub(first, start));
    return {first, hn::Sub(end, first), hn::Add(as_fixed(texel), hn::Mul(skipped, as_fixed(step)))};
}

/// Places a vector of dots and appends those that touch the frame. A lane whose dot is too large, too small
/// or too far away for 32-bit arithmetic is left to the plain plotter.
HWY_INLINE void place_dots(const float *x, const float *y, const float *radius, std::size_t count,
                           DotBatch &batch) {
    const FloatLanes floats;
    const IntLanes ints;
    const WordLanes words;
    const std::size_t lanes = hn::Lanes(floats);
    const Floats s = hn::LoadU(floats, radius);
    const Floats left = hn::Sub(hn::LoadU(floats, x), s);
    const Floats top = hn::Sub(hn::LoadU(floats, y), s);
    const Ints x0 = to_int(left);
    const Ints y0 = to_int(top);
    const Floats texels = hn::Div(hn::Set(floats, static_cast<float>(dot_image_radius)), s);
    const Ints step = to_int(hn::Mul(texels, hn::Set(floats, 65536.0F)));
    const auto in_lanes = hn::FirstN(ints, count);
    const auto is_positive = hn::And(in_lanes, hn::Gt(step, hn::Zero(ints)));

    constexpr std::int32_t largest_step = 1 << 22;
    constexpr std::int32_t smallest_step = 1 << 12;
    constexpr std::int32_t farthest = 1 << 20;
    const auto is_near = [ints](Ints v) HWY_ATTR {
        return hn::And(hn::Lt(v, hn::Set(ints, farthest)), hn::Gt(v, hn::Set(ints, -farthest)));
    };
    const auto is_tame =
        hn::And(hn::And(is_near(x0), is_near(y0)), hn::And(hn::Lt(step, hn::Set(ints, largest_step)),
                                                           hn::Gt(step, hn::Set(ints, smallest_step))));
    const auto is_wild = hn::AndNot(is_tame, is_positive);
    if (!hn::AllFalse(ints, is_wild)) {
        alignas(vector_bytes) std::array<std::int32_t, vector_lanes> wild{};
        hn::Store(hn::VecFromMask(ints, is_wild), ints, wild.data());
        for (std::size_t lane = 0; lane < std::min(lanes, count); ++lane) {
            if (wild[lane] != 0) {
                plot_dot(x[lane], y[lane], radius[lane]);
            }
        }
    }

    const Floats float_step = hn::ConvertTo(floats, step);
    const auto first_texel = [floats, float_step](Floats edge, Ints pixel) HWY_ATTR {
        const Floats beyond_pixel = hn::Sub(edge, hn::ConvertTo(floats, pixel));
        return to_int(hn::Sub(float_step, hn::Mul(beyond_pixel, float_step)));
    };
    const auto columns = clip_dots(x0, first_texel(left, x0), step, 0, frame_width);
    const auto rows =
        clip_dots(y0, first_texel(top, y0), step, first_drawn_row, frame_height - first_drawn_row + 1);
    const auto is_drawn =
        hn::And(hn::And(is_positive, is_tame), hn::Gt(hn::Min(columns.count, rows.count), hn::Zero(ints)));
    const Words offset =
        hn::Add(hn::Mul(as_fixed(rows.first), hn::Set(words, static_cast<std::uint32_t>(frame_width))),
                as_fixed(columns.first));
    const std::size_t end = batch.count;
    const Packing pack(is_drawn);
    const auto put = [&pack, end](auto lanes, auto value, auto &array)
                         HWY_ATTR { pack(lanes, value, &array[end]); };
    put(words, offset, batch.offset);
    put(ints, columns.count, batch.columns);
    put(ints, rows.count, batch.rows);
    put(words, columns.texel, batch.texel_column);
    put(words, rows.texel, batch.texel_row);
    put(words, as_fixed(step), batch.step);
    batch.count += hn::CountTrue(ints, is_drawn);
}

/// Columns that are drawn together, few since most dots are small.
using ColumnLanes = hn::CappedTag<std::uint32_t, 8>;
using TexelLanes = hn::Rebind<std::uint8_t, ColumnLanes>;
using Texels = hn::Vec<TexelLanes>;

/// A row of the sprite is looked up in quarters of 16 bytes, one a 128-bit block of a vector.
using RowLanes = hn::CappedTag<std::uint8_t, 32>;
using RowTexels = hn::Vec<RowLanes>;
using BlockLanes = hn::FixedTag<std::uint8_t, 16>;
constexpr std::size_t quarter_texels = 16;
static_assert(dot_image_size == 4 * quarter_texels);

/// Vectors that a row of the sprite takes.
constexpr std::size_t row_vectors = dot_image_size / hn::MaxLanes(RowLanes());

/// A vector of at most 16 bytes with zeros above, as a whole block.
template <class D>
HWY_INLINE hn::Vec<BlockLanes> widen_to_block(D, hn::Vec<D> bytes) {
    if constexpr (hn::MaxLanes(D()) == quarter_texels) {
        return bytes;
    } else {
        const hn::Twice<D> twice;
        return widen_to_block(twice, hn::ZeroExtendVector(twice, bytes));
    }
}

/// The first bytes of a block.
template <class D>
HWY_INLINE Texels narrow_to_texels(D, hn::Vec<D> bytes) {
    if constexpr (hn::MaxLanes(D()) == hn::MaxLanes(TexelLanes())) {
        return bytes;
    } else {
        const hn::Half<D> half;
        return narrow_to_texels(half, hn::LowerHalf(half, bytes));
    }
}

/// The same 16 bytes in every block.
template <class D>
HWY_INLINE hn::Vec<D> in_every_block(D lanes, hn::Vec<BlockLanes> block) {
    if constexpr (hn::MaxLanes(D()) == quarter_texels) {
        return block;
    } else {
        return hn::Combine(lanes, block, block);
    }
}

/// The bytes that any of the blocks holds.
template <class D>
HWY_INLINE hn::Vec<BlockLanes> union_of_blocks(D, hn::Vec<D> row) {
    if constexpr (hn::MaxLanes(D()) == quarter_texels) {
        return row;
    } else {
        return hn::Or(hn::LowerHalf(row), hn::UpperHalf(BlockLanes(), row));
    }
}

/// The columns of a dot as indices into each quarter of a sprite's row; the highest bit marks a column that
/// lies elsewhere.
using QuarterIndices = std::array<RowTexels, row_vectors>;

HWY_INLINE QuarterIndices quarter_indices(Texels column) {
    const RowLanes row_lanes;
    const TexelLanes texel_lanes;
    alignas(vector_bytes) static constexpr auto first_texel_of_quarter = [] {
        std::array<std::uint8_t, dot_image_size> first{};
        for (std::size_t i = 0; i < first.size(); ++i) {
            first[i] = static_cast<std::uint8_t>(i / quarter_texels * quarter_texels);
        }
        return first;
    }();
    const auto carry_into_top_bit = hn::Set(row_lanes, 0x80 - quarter_texels);
    const auto index_or_mark = hn::Set(row_lanes, 0x80 | (quarter_texels - 1));
    const RowTexels columns = in_every_block(row_lanes, widen_to_block(texel_lanes, column));
    QuarterIndices indices;
    for (std::size_t i = 0; i < row_vectors; ++i) {
        const auto first = hn::Load(row_lanes, &first_texel_of_quarter[i * hn::Lanes(row_lanes)]);
        indices[i] = hn::And(hn::SaturatedAdd(hn::Sub(columns, first), carry_into_top_bit), index_or_mark);
    }
    return indices;
}

/// The glows of the columns in one row of the sprite.
HWY_INLINE Texels look_up(const std::uint8_t *glow, const QuarterIndices &indices) {
    const RowLanes row_lanes;
    RowTexels found = hn::TableLookupBytesOr0(hn::Load(row_lanes, glow), indices[0]);
    for (std::size_t i = 1; i < row_vectors; ++i) {
        const auto texels = hn::Load(row_lanes, glow + i * hn::Lanes(row_lanes));
        found = hn::Or(found, hn::TableLookupBytesOr0(texels, indices[i]));
    }
    return narrow_to_texels(BlockLanes(), union_of_blocks(row_lanes, found));
}

/// Draws as many columns of a dot as fit a vector, `count` at most, the first of which is sampled at `texel`.
HWY_INLINE void draw_columns(const GlowSprite &sprite, std::uint8_t *pixels, std::int32_t count,
                             std::uint32_t texel, const DotBatch &batch, std::size_t dot) {
    const ColumnLanes columns;
    const hn::RebindToSigned<ColumnLanes> ints;
    const TexelLanes texels;
    const auto lane = hn::Iota(columns, 0);
    const auto position = hn::Add(hn::Set(columns, texel), hn::Mul(lane, hn::Set(columns, batch.step[dot])));
    const auto is_column = hn::Lt(hn::BitCast(ints, lane), hn::Set(ints, count));
    const auto outside = hn::Set(ints, 0xFF);
    const auto column = hn::IfThenElse(is_column, hn::BitCast(ints, hn::ShiftRight<16>(position)), outside);
    const QuarterIndices indices = quarter_indices(hn::DemoteTo(texels, column));

    std::uint32_t texel_row = batch.texel_row[dot];
    for (std::int32_t row = batch.rows[dot]; row > 0; --row) {
        const std::uint8_t *glow = &sprite.glow[(texel_row >> 16) * dot_image_size];
        const Texels sum = look_up(glow, indices);
        hn::StoreU(hn::SaturatedAdd(hn::LoadU(texels, pixels), sum), texels, pixels);
        pixels += frame_width;
        texel_row += batch.step[dot];
    }
}

/// Draws the dots of the batch, and empties it.
HWY_INLINE void draw_dots(const GlowSprite &sprite, DotBatch &batch) {
    const auto lanes = static_cast<std::int32_t>(hn::Lanes(ColumnLanes()));
    for (std::size_t dot = 0; dot < batch.count; ++dot) {
        std::uint8_t *pixels = chunkybuf1.get() + batch.offset[dot];
        std::uint32_t texel = batch.texel_column[dot];
        for (std::int32_t count = batch.columns[dot]; count > 0; count -= lanes) {
            draw_columns(sprite, pixels, count, texel, batch, dot);
            pixels += lanes;
            texel += static_cast<std::uint32_t>(lanes) * batch.step[dot];
        }
    }
    batch.count = 0;
}

void plot_dots(const float *x, const float *y, const float *radius, std::size_t count) {
    GlowSprite sprite;
    DotBatch batch;
    build_glow_sprite(sprite, dot_luminance());
    const std::size_t lanes = hn::Lanes(FloatLanes());
    for (std::size_t i = 0; i < count; i += lanes) {
        if (batch.count + lanes > DotBatch::capacity) {
            draw_dots(sprite, batch);
        }
        place_dots(x + i, y + i, radius + i, count - i, batch);
    }
    draw_dots(sprite, batch);
}

#endif

/// The dots of points `first` to `first` + `count` - 1 of the object.
void place_overlay(std::size_t first, std::size_t count, float *x, float *y, float *radius) {
    for (std::size_t i = 0; i < count; ++i) {
        const Vec3 &point = lwopoints3[first + i];
        x[i] = point.x;
        y[i] = point.y + 1.0F;
        radius[i] = point.z / 100.0F + 1.0F;
    }
}

} // namespace HWY_NAMESPACE
} // namespace fast
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace fast {

HWY_EXPORT(plot_dots);
HWY_EXPORT(place_overlay);

void plot_dots(const float *x, const float *y, const float *radius, std::size_t count) {
    // A glow that is negative, or too large for 32 bits, wraps in the plain plotter.
    constexpr std::int32_t brightest_texel = 255;
    constexpr std::int32_t largest_luminance = std::numeric_limits<std::int32_t>::max() / brightest_texel;
    const std::int32_t luminance = dot_luminance();
    if (frame_width < least_width || luminance < 0 || luminance > largest_luminance) {
        plain::plot_dots(x, y, radius, count);
        return;
    }
    HWY_DYNAMIC_DISPATCH(plot_dots)(x, y, radius, count);
}

void plot_dots_at_points() {
    constexpr std::size_t at_once = 2048;
    struct alignas(vector_bytes) Coordinates : std::array<float, at_once + vector_lanes> {};
    Coordinates x;
    Coordinates y;
    Coordinates radius;
    const auto points = static_cast<std::size_t>(worked_points());
    for (std::size_t first = 0; first < points; first += at_once) {
        const std::size_t count = std::min(at_once, points - first);
        HWY_DYNAMIC_DISPATCH(place_overlay)(first, count, x.data(), y.data(), radius.data());
        plot_dots(x.data(), y.data(), radius.data(), count);
    }
}

} // namespace fast

#endif
