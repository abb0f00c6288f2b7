// SPDX-License-Identifier: MIT
// Palette indices to true colour, many pixels at once. Most pictures have one level per index for all three
// channels, and a part of most is background. So a block of equal indices gets one colour, and the levels of
// a grey palette are looked up in registers. A palette with colours would need that three times, which takes
// longer than one pixel at a time.
#include "platform/shared/bitmap.h"

#include <array>
#include <cstddef>
#include <cstdint>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "platform/shared/simd/bitmap.cpp"
#include "hwy/foreach_target.h"

#include "hwy/highway.h"

HWY_BEFORE_NAMESPACE();
namespace host::fast {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

#if HWY_TARGET >= HWY_EMU128

// A processor without vectors looks colours up one by one.
using plain::expand_pixels;

#else

using ByteLanes = hn::ScalableTag<std::uint8_t>;
using WordLanes = hn::Repartition<std::uint32_t, ByteLanes>;
using Bytes = hn::Vec<ByteLanes>;

/// Which lanes' indices have bit 4, 5, 6 and 7.
using IndexBits = std::array<hn::Mask<ByteLanes>, 4>;

/// The level of each index, given the levels of `1 << bits` times 16 indices: an index's low four bits choose
/// one of 16 levels, and each of the next bits one of two halves. So all 256 levels take 16 lookups of 16 and
/// 15 choices between two.
template <std::size_t bits>
HWY_INLINE Bytes look_up(const std::uint8_t *levels, Bytes low_bits, const IndexBits &has_bit) {
    if constexpr (bits == 0) {
        return hn::TableLookupBytes(hn::LoadDup128(ByteLanes(), levels), low_bits);
    } else {
        constexpr std::size_t half = std::size_t{16} << (bits - 1);
        return hn::IfThenElse(has_bit[bits - 1], look_up<bits - 1>(levels + half, low_bits, has_bit),
                              look_up<bits - 1>(levels, low_bits, has_bit));
    }
}

/// The bits of an index that choose between halves, each moved to the sign of its byte.
HWY_INLINE IndexBits bits_of(Bytes index) {
    const hn::Repartition<std::uint16_t, ByteLanes> pairs;
    const hn::RebindToSigned<ByteLanes> signed_bytes;
    const auto pair = hn::BitCast(pairs, index);
    const auto is_negative = [signed_bytes](auto value) HWY_ATTR {
        const auto byte = hn::BitCast(signed_bytes, value);
        return hn::RebindMask(ByteLanes(), hn::Lt(byte, hn::Zero(signed_bytes)));
    };
    return {is_negative(hn::ShiftLeft<3>(pair)), is_negative(hn::ShiftLeft<2>(pair)),
            is_negative(hn::ShiftLeft<1>(pair)), is_negative(pair)};
}

HWY_INLINE void write_greys(Bytes index, const std::array<std::uint8_t, 256> &levels, std::uint32_t *pixels) {
    const ByteLanes bytes;
    const Bytes level = look_up<4>(levels.data(), hn::And(index, hn::Set(bytes, 15)), bits_of(index));
    hn::StoreInterleaved4(level, level, level, hn::Set(bytes, 0xFF), bytes,
                          reinterpret_cast<std::uint8_t *>(pixels));
}

/// Pixels that are written together: as many as the widest vector has bytes.
constexpr std::size_t block = 64;

/// Whether the indices of a block are all equal.
HWY_INLINE bool are_equal(const std::uint8_t *indices) {
    const ByteLanes bytes;
    const Bytes first = hn::Set(bytes, *indices);
    Bytes difference = hn::Zero(bytes);
    for (std::size_t p = 0; p < block; p += hn::Lanes(bytes)) {
        difference = hn::Or(difference, hn::Xor(hn::LoadU(bytes, indices + p), first));
    }
    return hn::AllTrue(bytes, hn::Eq(difference, hn::Zero(bytes)));
}

void expand_pixels(const std::uint8_t *indices, std::uint32_t *pixels, std::size_t count,
                   const TrueColours &colours) {
    const ByteLanes bytes;
    const WordLanes words;
    // In vectors of 16 bytes the lookups gain little, or take longer than single ones (docs/speed.md,
    // "Palette expansion").
    const bool looks_levels_up = hn::MaxLanes(bytes) > 16 && colours.are_grey;
    std::size_t p = 0;
    for (; p + block <= count; p += block) {
        if (are_equal(indices + p)) {
            const auto colour = hn::Set(words, colours.of_index[indices[p]]);
            for (std::size_t at = p; at < p + block; at += hn::Lanes(words)) {
                hn::StoreU(colour, words, pixels + at);
            }
        } else if (looks_levels_up) {
            for (std::size_t at = p; at < p + block; at += hn::Lanes(bytes)) {
                write_greys(hn::LoadU(bytes, indices + at), colours.levels, pixels + at);
            }
        } else {
            plain::expand_pixels(indices + p, pixels + p, block, colours);
        }
    }
    plain::expand_pixels(indices + p, pixels + p, count - p, colours);
}

#endif

} // namespace HWY_NAMESPACE
} // namespace host::fast
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace host::fast {

HWY_EXPORT(expand_pixels);

void expand_pixels(const std::uint8_t *indices, std::uint32_t *pixels, std::size_t count,
                   const TrueColours &colours) {
    HWY_DYNAMIC_DISPATCH(expand_pixels)(indices, pixels, count, colours);
}

} // namespace host::fast

#endif
