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

/// The accumulators of a quantity along a span, one for each pixel that is drawn together. They are in
/// vectors of words. If there are two, one has the even pixels and the other has the odd ones:
///
///     first vector     0  2  4  6  8 10 12 14
///     second vector    1  3  5  7  9 11 13 15
template <class D, std::size_t vectors>
class PixelValues {
public:
    using Values = std::array<hn::Vec<D>, vectors>;

    /// Those of the span's first pixels. The first one has the value `first`, and each pixel adds `step`.
    HWY_INLINE PixelValues(std::uint32_t first, std::uint32_t step) {
        const D words;
        const auto one = hn::Set(words, step);
        const auto first_pixels = hn::Mul(hn::Iota(words, 0), hn::Set(words, vectors));
        values_[0] = hn::Add(hn::Set(words, first), hn::Mul(first_pixels, one));
        for (std::size_t i = 1; i < vectors; ++i) {
            values_[i] = hn::Add(values_[i - 1], one);
        }
        stride_ = hn::Mul(one, hn::Set(words, vectors * hn::MaxLanes(words)));
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

/// 16 bits of each word, from bit `first` on, in the order of the pixels. With two vectors, the even pixels'
/// bits are moved to the low halves of the words, the odd ones' to the high halves.
template <class Halves, int first, class Vector>
HWY_INLINE hn::Vec<Halves> halves_from(const std::array<Vector, 1> &words) {
    return hn::TruncateTo(Halves(), hn::ShiftRight<first>(words[0]));
}
template <class Halves, int first, class Vector>
HWY_INLINE hn::Vec<Halves> halves_from(const std::array<Vector, 2> &words) {
    Vector odd = words[1];
    if constexpr (first < 16) {
        odd = hn::ShiftLeft<16 - first>(odd);
    }
    return hn::OddEven(hn::BitCast(Halves(), odd), hn::BitCast(Halves(), hn::ShiftRight<first>(words[0])));
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
        return hn::TruncateTo(Bytes(), halves_from<Depths, 16>(accumulators));
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
        const auto depth = hn::IfThenElseZero(is_in_span, halves_from<Depths, 8>(accumulated_depths));
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

} // namespace HWY_NAMESPACE
} // namespace fast
HWY_AFTER_NAMESPACE();

#endif

#endif
