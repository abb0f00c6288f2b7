// SPDX-License-Identifier: MIT
// Appends the lanes of vectors that a mask selects to arrays, in order.
// Compiled once for each instruction set.
#if defined(ZELVO_RASTER_SIMD_COMPRESS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZELVO_RASTER_SIMD_COMPRESS_INL_H
#undef ZELVO_RASTER_SIMD_COMPRESS_INL_H
#else
#define ZELVO_RASTER_SIMD_COMPRESS_INL_H
#endif

#include "hwy/highway.h"

#include "raster/simd/compress_table.h"
#include "raster/simd/conversions-inl.h"

#include <array>
#include <cstdint>

// Without vectors (Highway's EMU128 and SCALAR) the plain forms are used: not all operations exist there.
#if HWY_TARGET < HWY_EMU128

HWY_BEFORE_NAMESPACE();
namespace fast {
namespace HWY_NAMESPACE {

#if HWY_TARGET <= HWY_AVX3

/// Writes the selected lanes of any number of vectors, of 32 bits per lane, back to back. One instruction
/// compresses a vector.
class Compress {
public:
    explicit Compress(hn::Mask<IntLanes> selected) : selected_(selected) {}

    /// Writes the selected lanes at `to`. The rest of a whole vector after them is overwritten with no
    /// meaning.
    template <class D, typename T>
    HWY_INLINE void operator()(D lanes, hn::Vec<D> value, T *to) const {
        hn::StoreU(hn::Compress(value, hn::RebindMask(lanes, selected_)), lanes, to);
    }

private:
    hn::Mask<IntLanes> selected_;
};

#else

/// Writes the selected lanes of any number of vectors, of 32 bits per lane, back to back. The order is looked
/// up once for all of them. Highway's own Compress has a table too, but GCC copies it to the stack, a KiB for
/// each vector: face loops on AVX2 took three times as long (docs/speed.md, "Other processors and narrower
/// vectors").
class Compress {
public:
    explicit Compress(hn::Mask<IntLanes> selected) : order_(order_of(selected)) {}

    /// Writes the selected lanes at `to`. The rest of a whole vector after them is overwritten with no
    /// meaning.
    template <class D, typename T>
    HWY_INLINE void operator()(D lanes, hn::Vec<D> value, T *to) const {
        hn::StoreU(hn::BitCast(lanes, in_order(hn::BitCast(IntLanes(), value))), lanes, to);
    }

private:
    static HWY_INLINE std::size_t set_of(hn::Mask<IntLanes> selected) {
        std::array<std::uint8_t, 8> set{};
        hn::StoreMaskBits(IntLanes(), selected, set.data());
        return set[0];
    }

#if HWY_MAX_BYTES == 16
    // The instruction looks up bytes.
    using OrderLanes = hn::Repartition<std::uint8_t, IntLanes>;
    using Order = hn::Vec<OrderLanes>;

    static HWY_INLINE Order order_of(hn::Mask<IntLanes> selected) {
        return hn::Load(OrderLanes(), compress_byte_table[set_of(selected)].data());
    }
    HWY_INLINE Ints in_order(Ints value) const {
        return hn::BitCast(IntLanes(), hn::TableLookupBytes(hn::BitCast(OrderLanes(), value), order_));
    }
#else
    using Order = decltype(hn::IndicesFromVec(IntLanes(), Ints()));
    static_assert(hn::MaxLanes(IntLanes()) <= compress_lanes);

    static HWY_INLINE Order order_of(hn::Mask<IntLanes> selected) {
        const IntLanes ints;
        const hn::Rebind<std::uint8_t, IntLanes> bytes;
        const auto lanes = hn::LoadU(bytes, compress_table[set_of(selected)].data());
        return hn::IndicesFromVec(ints, hn::PromoteTo(ints, lanes));
    }
    HWY_INLINE Ints in_order(Ints value) const {
        return hn::TableLookupLanes(value, order_);
    }
#endif

    Order order_;
};

#endif

} // namespace HWY_NAMESPACE
} // namespace fast
HWY_AFTER_NAMESPACE();

#endif

#endif
