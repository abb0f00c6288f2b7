// SPDX-License-Identifier: MIT
// Dots: a vector of them is placed and clipped at once, then each is drawn by vectors of columns, row by row,
// from a sprite that holds what each texel adds.
//
// Which plain function (raster/dots.cpp) each one equals, and why the bits are the same:
//
//     plain                        fast                          same bits because
//     add_glow                     build_glow_sprite             any pixel saturates at a glow of 255
//     plot_dot, before its loop    dot_corners, append_drawn     same operations on the dots in range
//     clip_dot                     clip_dots                     the truncated quotient is exact
//     plot_dot, its loop           draw_columns                  saturating sums in any order are equal
#include "raster/dots.h"

#include "display/frame_buffers.h"
#include "object/model.h"
#include "raster/simd/vector_size.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "raster/simd/dots.cpp"
#include "hwy/foreach_target.h"

#include "hwy/highway.h"

#include "raster/simd/compress-inl.h"
#include "raster/simd/conversions-inl.h"

HWY_BEFORE_NAMESPACE();
namespace fast {
namespace HWY_NAMESPACE {

#if HWY_TARGET >= HWY_EMU128

// A processor without vectors draws by the plain forms.
using plain::plot_dots;
void plot_dots_at_points() {
    plain::plot_dots_at_points();
}

#else

/// What each texel of the sprite adds to a pixel, at most 255, at which any pixel saturates.
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

/// Dots that touch the frame, by the part of them that is in it.
struct DotBatch {
    /// Six arrays of about a KiB each, which stay in the first-level cache beside the sprite's 4 KiB.
    static constexpr std::size_t capacity = 256;
    template <typename T>
    struct alignas(vector_bytes) Array : std::array<T, capacity + vector_lanes> {};

    std::size_t count = 0;
    /// The first pixel, counted from the frame's first.
    Array<std::uint32_t> offset;
    Array<std::int32_t> columns;
    Array<std::int32_t> rows;
    /// The texel of the first pixel and the texels per pixel, in 16.16.
    Array<std::uint32_t> texel_column;
    Array<std::uint32_t> texel_row;
    Array<std::uint32_t> step;
};

/// Where dots are along one axis, as DotExtent in the plain form: their pixels on the frame, and the first
/// one's texel.
struct DotExtents {
    Ints first;
    Ints count;
    Words texel;
};

/// The parts that fall into the pixels `low` to `high` - 1, of dots whose pixel `start` samples the sprite at
/// `texel`, which is not negative. Both operands of the division are below 2^24 and so exact as floats. A
/// quotient that is not whole is at least 1/step below the next integer, more than the division can round, so
/// truncation is exact.
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

/// A vector of dots: their centres and radii in pixels.
struct Dots {
    Floats x;
    Floats y;
    Floats radius;
};

/// Where the squares of dots begin on the frame, and the texels per pixel in 16.16.
struct DotCorners {
    Floats left;
    Floats top;
    Ints x0;
    Ints y0;
    Ints step;
};

HWY_INLINE DotCorners dot_corners(const Dots &dots) {
    const FloatLanes floats;
    const Floats left = hn::Sub(dots.x, dots.radius);
    const Floats top = hn::Sub(dots.y, dots.radius);
    const Floats texels = hn::Div(hn::Set(floats, static_cast<float>(dot_image_radius)), dots.radius);
    const Ints step = to_int(hn::Mul(texels, hn::Set(floats, 65536.0F)));
    return {left, top, to_int(left), to_int(top), step};
}

/// The dots that are neither too large, too small nor too far away for 32-bit arithmetic and the division of
/// clip_dots.
HWY_INLINE hn::Mask<IntLanes> is_in_range(const DotCorners &dots) {
    constexpr std::int32_t largest_step = 1 << 22;
    constexpr std::int32_t smallest_step = 1 << 12;
    constexpr std::int32_t farthest = 1 << 20;
    const IntLanes ints;
    const auto is_between = [ints](Ints v, std::int32_t low, std::int32_t high) HWY_ATTR {
        return hn::And(hn::Gt(v, hn::Set(ints, low)), hn::Lt(v, hn::Set(ints, high)));
    };
    return hn::And(
        hn::And(is_between(dots.x0, -farthest, farthest), is_between(dots.y0, -farthest, farthest)),
        is_between(dots.step, smallest_step, largest_step));
}

/// Plots the selected dots one by one by the plain form, which takes any number.
HWY_INLINE void plot_out_of_range(const Dots &dots, hn::Mask<IntLanes> selected) {
    const FloatLanes floats;
    const IntLanes ints;
    if (hn::AllFalse(ints, selected)) {
        return;
    }
    struct alignas(vector_bytes) Lanes : std::array<float, vector_lanes> {};
    Lanes x;
    Lanes y;
    Lanes radius;
    alignas(vector_bytes) std::array<std::int32_t, vector_lanes> is_selected;
    hn::Store(dots.x, floats, x.data());
    hn::Store(dots.y, floats, y.data());
    hn::Store(dots.radius, floats, radius.data());
    hn::Store(hn::VecFromMask(ints, selected), ints, is_selected.data());
    for (std::size_t lane = 0; lane < hn::Lanes(ints); ++lane) {
        if (is_selected[lane] != 0) {
            plot_dot(x[lane], y[lane], radius[lane]);
        }
    }
}

/// Appends the selected dots, clipped, if they touch the frame.
HWY_INLINE void append_drawn(const DotCorners &dots, hn::Mask<IntLanes> selected, DotBatch &batch) {
    const FloatLanes floats;
    const IntLanes ints;
    const WordLanes words;
    const Floats step = hn::ConvertTo(floats, dots.step);
    const auto first_texel = [floats, step](Floats edge, Ints pixel) HWY_ATTR {
        const Floats beyond_pixel = hn::Sub(edge, hn::ConvertTo(floats, pixel));
        return to_int(hn::Sub(step, hn::Mul(beyond_pixel, step)));
    };
    const auto columns = clip_dots(dots.x0, first_texel(dots.left, dots.x0), dots.step, 0, frame_width);
    const auto rows = clip_dots(dots.y0, first_texel(dots.top, dots.y0), dots.step, first_drawn_row,
                                frame_height - first_drawn_row + 1);
    const auto is_drawn = hn::And(selected, hn::Gt(hn::Min(columns.count, rows.count), hn::Zero(ints)));
    const auto width = hn::Set(words, static_cast<std::uint32_t>(frame_width));
    const Words offset = hn::Add(hn::Mul(as_fixed(rows.first), width), as_fixed(columns.first));
    const std::size_t end = batch.count;
    const Compress append(is_drawn);
    append(words, offset, &batch.offset[end]);
    append(ints, columns.count, &batch.columns[end]);
    append(ints, rows.count, &batch.rows[end]);
    append(words, columns.texel, &batch.texel_column[end]);
    append(words, rows.texel, &batch.texel_row[end]);
    append(words, as_fixed(dots.step), &batch.step[end]);
    batch.count += hn::CountTrue(ints, is_drawn);
}

/// Places the first `count` of a vector of dots: those in range go into the batch, the others are plotted at
/// once. Dots may be drawn in any order, since saturating sums do not depend on it.
HWY_INLINE void place_dots(const Dots &dots, std::size_t count, DotBatch &batch) {
    const IntLanes ints;
    const DotCorners corners = dot_corners(dots);
    const auto is_dot = hn::And(hn::FirstN(ints, count), hn::Gt(corners.step, hn::Zero(ints)));
    const auto in_range = is_in_range(corners);
    plot_out_of_range(dots, hn::AndNot(in_range, is_dot));
    append_drawn(corners, hn::And(is_dot, in_range), batch);
}

/// Columns that are drawn together. Most dots are small, so that wider vectors would be mostly empty.
using ColumnLanes = hn::CappedTag<std::uint32_t, 8>;
using TexelLanes = hn::Rebind<std::uint8_t, ColumnLanes>;
using Texels = hn::Vec<TexelLanes>;

/// A row of the sprite is looked up in quarters of 16 bytes, one in each 128-bit block of a vector.
using RowLanes = hn::CappedTag<std::uint8_t, 32>;
using RowTexels = hn::Vec<RowLanes>;
using BlockLanes = hn::FixedTag<std::uint8_t, 16>;
constexpr std::size_t quarter_texels = 16;
static_assert(dot_image_size == 4 * quarter_texels);

/// Vectors that hold a row of the sprite.
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

/// The columns of a dot as indices into each quarter of a sprite's row. The lookup TableLookupBytesOr0 gives
/// 0 for an index with its highest bit set, which marks a column of another quarter.
using QuarterIndices = std::array<RowTexels, row_vectors>;

/// Subtracts each quarter's first texel from the columns, so that 0 to 15 are the quarter's own, and sets the
/// highest bit of all others: adding 0x70 carries 16 and more into it, and saturation keeps large ones from
/// wrapping past it. Column 21, which is texel 5 of the second quarter:
///
///     quarter     column - first texel    + 0x70, saturating    & 0x8F    found
///      0 .. 15                    0x15                  0x85      0x85    0
///     16 .. 31                    0x05                  0x75      0x05    texel 5
///     32 .. 47                    0xF5                  0xFF      0x8F    0
///     48 .. 63                    0xE5                  0xFF      0x8F    0
///
/// A wrapping addition would make the third row 0x65 and find texel 5 there as well. The quarters' results
/// are joined by Or. Column 0xFF is in no quarter.
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

/// The glows of the columns in the row of the sprite at `glow`.
HWY_INLINE Texels look_up(const std::uint8_t *glow, const QuarterIndices &indices) {
    const RowLanes row_lanes;
    RowTexels found = hn::TableLookupBytesOr0(hn::Load(row_lanes, glow), indices[0]);
    for (std::size_t i = 1; i < row_vectors; ++i) {
        const auto texels = hn::Load(row_lanes, glow + i * hn::Lanes(row_lanes));
        found = hn::Or(found, hn::TableLookupBytesOr0(texels, indices[i]));
    }
    return narrow_to_texels(BlockLanes(), union_of_blocks(row_lanes, found));
}

/// Draws the first `count` columns of a dot, at most a vector, the first of which is sampled at `texel`.
HWY_INLINE void draw_columns(const GlowSprite &sprite, std::uint8_t *pixels, std::int32_t count,
                             std::uint32_t texel, const DotBatch &batch, std::size_t dot) {
    const ColumnLanes columns;
    const hn::RebindToSigned<ColumnLanes> ints;
    const TexelLanes texels;
    const auto lane = hn::Iota(columns, 0);
    const auto position = hn::Add(hn::Set(columns, texel), hn::Mul(lane, hn::Set(columns, batch.step[dot])));
    const auto is_column = hn::Lt(hn::BitCast(ints, lane), hn::Set(ints, count));
    const auto in_no_quarter = hn::Set(ints, 0xFF);
    const auto column =
        hn::IfThenElse(is_column, hn::BitCast(ints, hn::ShiftRight<16>(position)), in_no_quarter);
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

/// A batch of dots and the sprite that it is drawn from.
class DotPlotter {
public:
    HWY_INLINE DotPlotter() { build_glow_sprite(sprite_, dot_luminance()); }

    /// Plots the first `count` of a vector of dots, some of them later.
    HWY_INLINE void plot(const Dots &dots, std::size_t count) {
        if (batch_.count + hn::Lanes(FloatLanes()) > DotBatch::capacity) {
            draw_dots(sprite_, batch_);
        }
        place_dots(dots, count, batch_);
    }

    /// Draws the dots that still wait.
    HWY_INLINE void finish() { draw_dots(sprite_, batch_); }

private:
    GlowSprite sprite_;
    DotBatch batch_;
};

void plot_dots(const float *x, const float *y, const float *radius, std::size_t count) {
    const FloatLanes floats;
    DotPlotter plotter;
    for (std::size_t i = 0; i < count; i += hn::Lanes(floats)) {
        plotter.plot({hn::LoadU(floats, x + i), hn::LoadU(floats, y + i), hn::LoadU(floats, radius + i)},
                     count - i);
    }
    plotter.finish();
}

void plot_dots_at_points() {
    const FloatLanes floats;
    const std::size_t lanes = hn::Lanes(floats);
    const auto one = hn::Set(floats, 1.0F);
    const auto points = static_cast<std::size_t>(points_to_process());
    DotPlotter plotter;
    std::size_t i = 0;
    for (; i + lanes <= points; i += lanes) {
        Floats x;
        Floats y;
        Floats depth;
        hn::LoadInterleaved3(floats, &lwopoints3[i].x, x, y, depth);
        plotter.plot({x, hn::Add(y, one), hn::Add(hn::Div(depth, hn::Set(floats, 100.0F)), one)}, lanes);
    }
    plotter.finish();
    plain::plot_dots_at_points(i);
}

#endif

} // namespace HWY_NAMESPACE
} // namespace fast
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace fast {

HWY_EXPORT(plot_dots);
HWY_EXPORT(plot_dots_at_points);

namespace {

/// Whether the frame is wide enough for vectors, and no glow is negative or too large for 32 bits. Such glows
/// wrap in the plain plotter.
bool can_plot_on_vectors() {
    constexpr std::int32_t brightest_texel = 255;
    constexpr std::int32_t largest_luminance = std::numeric_limits<std::int32_t>::max() / brightest_texel;
    const std::int32_t luminance = dot_luminance();
    return frame_width >= least_width && luminance >= 0 && luminance <= largest_luminance;
}

} // namespace

void plot_dots(const float *x, const float *y, const float *radius, std::size_t count) {
    if (can_plot_on_vectors()) {
        HWY_DYNAMIC_DISPATCH(plot_dots)(x, y, radius, count);
    } else {
        plain::plot_dots(x, y, radius, count);
    }
}

void plot_dots_at_points() {
    if (can_plot_on_vectors()) {
        HWY_DYNAMIC_DISPATCH(plot_dots_at_points)();
    } else {
        plain::plot_dots_at_points();
    }
}

} // namespace fast

#endif
