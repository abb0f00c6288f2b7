// SPDX-License-Identifier: MIT
// Pixels that are drawn together: the quantities of a vector of them along a span, and the depth test.
// Compiled once for each instruction set.
#if defined(ZELVO_RASTER_SIMD_PIXEL_VECTORS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZELVO_RASTER_SIMD_PIXEL_VECTORS_INL_H
#undef ZELVO_RASTER_SIMD_PIXEL_VECTORS_INL_H
#else
#define ZELVO_RASTER_SIMD_PIXEL_VECTORS_INL_H
#endif

#include "hwy/highway.h"

#include "raster/simd/conversions-inl.h"
#include "raster/simd/span_list.h"
#include "raster/simd/vector_size.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <type_traits>

// Without vectors (Highway's EMU128 and SCALAR) the plain forms are used: not all operations exist there.
#if HWY_TARGET < HWY_EMU128

HWY_BEFORE_NAMESPACE();
namespace fast {
namespace HWY_NAMESPACE {

/// Whether two vectors of words are narrowed to 16-bit lanes in blocks of four: block 0 of the first vector,
/// block 0 of the second, block 1 of the first and so on. That is one instruction there.
constexpr bool narrows_by_block = HWY_TARGET == HWY_AVX2 || HWY_TARGET == HWY_SSE4;

/// Which pixels are in the lanes of the vectors of words that are drawn together. Narrowing them leaves the
/// pixels in order. With 2 vectors of 8 words each:
///
///     first vector     0  1  2  3    8  9 10 11
///     second vector    4  5  6  7   12 13 14 15
template <class D, std::size_t vectors>
struct PixelOrder {
    static constexpr std::size_t lanes = hn::MaxLanes(D());
    /// From a pixel of the first vector to the one in the same lane of the second.
    static constexpr std::size_t step = narrows_by_block && vectors > 1 ? 4 : lanes;

    /// The pixels in the first vector.
    static HWY_INLINE hn::Vec<D> first() {
        if constexpr (step == lanes) {
            return hn::Iota(D(), 0);
        } else {
            alignas(vector_bytes) static constexpr auto pixels = [] {
                std::array<std::uint32_t, lanes> of_lane{};
                for (std::size_t lane = 0; lane < lanes; ++lane) {
                    of_lane[lane] = static_cast<std::uint32_t>(lane / step * step * vectors + lane % step);
                }
                return of_lane;
            }();
            return hn::Load(D(), pixels.data());
        }
    }
};

/// The accumulators of a quantity along a span, one for each pixel that is drawn together.
template <class D, std::size_t vectors>
class PixelValues {
public:
    using Values = std::array<hn::Vec<D>, vectors>;

    /// Those of the span's first pixels. `quantity` is its number in the list.
    HWY_INLINE PixelValues(const SpanList &spans, std::size_t quantity, std::size_t span) {
        using Order = PixelOrder<D, vectors>;
        const auto one = hn::Set(D(), spans.step[quantity][span]);
        const auto pixels = [one](std::size_t count) HWY_ATTR {
            return hn::Mul(one, hn::Set(D(), static_cast<std::uint32_t>(count)));
        };
        values_[0] = hn::Add(hn::Set(D(), spans.value[quantity][span]), hn::Mul(Order::first(), one));
        for (std::size_t i = 1; i < vectors; ++i) {
            values_[i] = hn::Add(values_[i - 1], pixels(Order::step));
        }
        stride_ = pixels(vectors * Order::lanes);
    }

    const Values &values() const { return values_; }

    /// Goes on to the next pixels.
    HWY_INLINE void advance() {
        for (auto &vector : values_) {
            vector = hn::Add(vector, stride_);
        }
    }

private:
    Values values_;
    /// What all pixels of these vectors together add.
    hn::Vec<D> stride_;
};

/// Vectors of words, each shifted to the right without sign.
template <int bits, class Vector, std::size_t vectors>
HWY_INLINE std::array<Vector, vectors> shifted_right(std::array<Vector, vectors> words) {
    for (auto &vector : words) {
        vector = hn::ShiftRight<bits>(vector);
    }
    return words;
}

/// Words below 65536 as a vector of 16-bit lanes, in the order of the pixels.
template <class Halves, class Vector>
HWY_INLINE hn::Vec<Halves> narrowed(const std::array<Vector, 1> &words) {
    return hn::TruncateTo(Halves(), words[0]);
}
template <class Halves, class Vector>
HWY_INLINE hn::Vec<Halves> narrowed(const std::array<Vector, 2> &words) {
#if HWY_TARGET == HWY_AVX2
    return hn::Vec<Halves>{_mm256_packus_epi32(words[0].raw, words[1].raw)};
#elif HWY_TARGET == HWY_SSE4
    return hn::Vec<Halves>{_mm_packus_epi32(words[0].raw, words[1].raw)};
#else
    return hn::ConcatEven(Halves(), hn::BitCast(Halves(), words[1]), hn::BitCast(Halves(), words[0]));
#endif
}

/// A mask of depths as a mask of bytes.
template <class Bytes, class Depths>
HWY_INLINE hn::Mask<Bytes> byte_mask(Depths depth_lanes, hn::Mask<Depths> mask) {
#if HWY_TARGET <= HWY_AVX3
    // Here a mask is one bit for each lane, whatever the lanes are.
    (void)depth_lanes;
    hn::Mask<Bytes> same_bits;
    same_bits.raw = static_cast<decltype(same_bits.raw)>(mask.raw);
    return same_bits;
#else
    const hn::RebindToSigned<Bytes> signed_bytes;
    const auto all_bits = hn::BitCast(hn::RebindToSigned<Depths>(), hn::VecFromMask(depth_lanes, mask));
    return hn::RebindMask(Bytes(), hn::MaskFromVec(hn::DemoteTo(signed_bytes, all_bits)));
#endif
}

/// Stores the selected lanes of a depth and a colour for each pixel, where the old ones were read from.
/// Highway's BlendedStore goes lane by lane if the processor cannot store single lanes: frames took twice as
/// long.
template <class Depths, class Bytes>
HWY_INLINE void store_drawn(hn::Mask<Depths> is_drawn, hn::Vec<Depths> depth, hn::Vec<Depths> old_depth,
                            hn::Vec<Bytes> colour, std::uint8_t *pixels, std::uint16_t *depths) {
    const Bytes bytes;
    const auto drawn_bytes = byte_mask<Bytes>(Depths(), is_drawn);
#if HWY_TARGET <= HWY_AVX3
    (void)old_depth;
    hn::BlendedStore(depth, is_drawn, Depths(), depths);
    hn::BlendedStore(colour, drawn_bytes, bytes, pixels);
#else
    hn::StoreU(hn::IfThenElse(is_drawn, depth, old_depth), Depths(), depths);
    hn::StoreU(hn::IfThenElse(drawn_bytes, colour, hn::LoadU(bytes, pixels)), bytes, pixels);
#endif
}

/// Pixels whose depths, in 8.8, fit 16 bits and are compared as such: those of `vectors` vectors of words.
/// Depths come from accumulators in 16.16.
template <class D, std::size_t vectors>
struct NarrowPixels {
    using Words = D;
    static constexpr std::size_t word_vectors = vectors;
    using Depths =
        std::conditional_t<vectors == 1, hn::Rebind<std::uint16_t, D>, hn::Repartition<std::uint16_t, D>>;
    using Bytes = hn::Rebind<std::uint8_t, Depths>;
    using Quantity = PixelValues<D, vectors>;
    using Values = typename Quantity::Values;

    /// The low bytes of the integer parts.
    static HWY_INLINE hn::Vec<Bytes> colours(const Values &accumulators) {
        return hn::TruncateTo(Bytes(), narrowed<Depths>(shifted_right<16>(accumulators)));
    }

    /// Writes those of the first `count` pixels that are nearer than what the frame holds. The others keep
    /// their values, but may be written back.
    static HWY_INLINE void write_nearer(const Values &accumulated_depths, hn::Vec<Bytes> colour,
                                        std::int32_t count, std::uint8_t *pixels, std::uint16_t *depths) {
        const Depths depth_lanes;
        const hn::RebindToSigned<Depths> ints;
        // No span is longer than 32767 pixels, because an x in 16.16 is not larger.
        const auto is_in_span = hn::RebindMask(
            depth_lanes, hn::Lt(hn::Iota(ints, 0), hn::Set(ints, static_cast<std::int16_t>(count))));
        // Nothing is farther than 0, so that pixels after the span's end are never drawn.
        const auto depth =
            hn::IfThenElseZero(is_in_span, narrowed<Depths>(shifted_right<8>(accumulated_depths)));
        const auto old_depth = hn::LoadU(depth_lanes, depths);
#if HWY_TARGET <= HWY_AVX3
        store_drawn<Depths, Bytes>(hn::Gt(depth, old_depth), depth, old_depth, colour, pixels, depths);
#else
        // The larger depth is what is stored; where it is the old one, the pixel is hidden.
        const Bytes bytes;
        const auto nearest = hn::Max(depth, old_depth);
        const auto hidden_bytes = byte_mask<Bytes>(depth_lanes, hn::Eq(nearest, old_depth));
        hn::StoreU(nearest, depth_lanes, depths);
        hn::StoreU(hn::IfThenElse(hidden_bytes, hn::LoadU(bytes, pixels), colour), bytes, pixels);
#endif
    }
};

/// Pixels of any depth, compared as 32-bit integers, as draw_span does: those of one vector of words.
struct WidePixels {
    using Depths = hn::Rebind<std::uint16_t, WordLanes>;
    using Bytes = hn::Rebind<std::uint8_t, WordLanes>;
    using Quantity = PixelValues<WordLanes, 1>;

    static HWY_INLINE hn::Vec<Bytes> colours(const Quantity::Values &accumulators) {
        return hn::TruncateTo(Bytes(), hn::ShiftRight<16>(accumulators[0]));
    }

    static HWY_INLINE void write_nearer(const Quantity::Values &accumulated_depths, hn::Vec<Bytes> colour,
                                        std::int32_t count, std::uint8_t *pixels, std::uint16_t *depths) {
        const IntLanes ints;
        const Depths depth_lanes;
        const hn::RebindToSigned<Depths> halves;
        const Ints depth = hn::ShiftRight<8>(as_signed(accumulated_depths[0]));
        const auto old_depth = hn::LoadU(depth_lanes, depths);
        const auto is_drawn = hn::And(hn::Gt(depth, hn::PromoteTo(ints, old_depth)),
                                      hn::Lt(hn::Iota(ints, 0), hn::Set(ints, count)));
        const auto drawn_halves = hn::MaskFromVec(hn::DemoteTo(halves, hn::VecFromMask(ints, is_drawn)));
        store_drawn<Depths, Bytes>(hn::RebindMask(depth_lanes, drawn_halves),
                                   hn::TruncateTo(depth_lanes, as_fixed(depth)), old_depth, colour, pixels,
                                   depths);
    }
};

/// What decides how the spans of a list are drawn.
struct SpanBounds {
    /// The length of the longest span.
    std::int32_t longest;
    /// Whether the depths of all pixels fit 16 bits.
    bool has_narrow_depths;
};

/// The bounds of a list. A depth grows or shrinks evenly along its span, so that looking at the first pixel
/// and at the one after the last is enough. Floats do not wrap. Their rounding is far less than the margin of
/// 1 on both sides of the depths that are taken to fit. Lanes after the last span count as a span of no
/// pixels in the middle of the range.
HWY_INLINE SpanBounds bounds_of(const SpanList &spans) {
    const IntLanes ints;
    const FloatLanes floats;
    constexpr float one = 65536.0F;
    const Ints middle = hn::Set(ints, 128 * 65536);
    Ints longest = hn::Zero(ints);
    Floats least = hn::ConvertTo(floats, middle);
    Floats largest = least;
    for (std::size_t at = 0; at < spans.count; at += hn::Lanes(ints)) {
        const auto is_span = hn::FirstN(ints, spans.count - at);
        const auto load = [at](const SpanList::Array<std::uint32_t> &array)
                              HWY_ATTR { return as_signed(hn::Load(WordLanes(), &array[at])); };
        const Ints length = hn::IfThenElseZero(is_span, hn::Load(ints, &spans.length[at]));
        const Ints step = hn::IfThenElseZero(is_span, load(spans.step[0]));
        const Floats first = hn::ConvertTo(floats, hn::IfThenElse(is_span, load(spans.value[0]), middle));
        const Floats end =
            hn::Add(first, hn::Mul(hn::ConvertTo(floats, length), hn::ConvertTo(floats, step)));
        longest = hn::Max(longest, length);
        least = hn::Min(least, hn::Min(first, end));
        largest = hn::Max(largest, hn::Max(first, end));
    }
    const auto fits =
        hn::And(hn::Ge(least, hn::Set(floats, one)), hn::Le(largest, hn::Set(floats, 255.0F * one)));
    return {hn::GetLane(hn::MaxOfLanes(ints, longest)), hn::AllTrue(floats, fits)};
}

} // namespace HWY_NAMESPACE
} // namespace fast
HWY_AFTER_NAMESPACE();

#endif

#endif
