// SPDX-License-Identifier: MIT
// Appends those lanes of vectors that a mask selects to arrays, in order.
// Compiled once for each instruction set.
#if defined(ZELVO_RASTER_SIMD_PACKING_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZELVO_RASTER_SIMD_PACKING_INL_H
#undef ZELVO_RASTER_SIMD_PACKING_INL_H
#else
#define ZELVO_RASTER_SIMD_PACKING_INL_H
#endif

#include "raster/simd/conversions-inl.h"
#include "raster/simd/packing_orders.h"

#include <array>
#include <cstdint>

HWY_BEFORE_NAMESPACE();
namespace fast {
namespace HWY_NAMESPACE {

#if HWY_TARGET <= HWY_AVX3

/// The selected lanes of any number of vectors, of 32 bits a lane. One instruction packs a vector.
class Packing {
public:
    explicit Packing(hn::Mask<IntLanes> selected) : selected_(selected) {}

    /// Writes the selected lanes at `to`, and up to a whole vector lanes of no meaning behind them.
    template <class D, typename T>
    HWY_INLINE void operator()(D lanes, hn::Vec<D> value, T *to) const {
        hn::StoreU(hn::Compress(value, hn::RebindMask(lanes, selected_)), lanes, to);
    }

private:
    hn::Mask<IntLanes> selected_;
};

#else

/// The selected lanes of any number of vectors, of 32 bits a lane. The order is looked up once for all of
/// them; Highway's own Compress has a table too, but GCC copies it to the stack, a KiB each time that a
/// vector is packed.
class Packing {
public:
    explicit Packing(hn::Mask<IntLanes> selected) : order_(order_of(selected)) {}

    /// Writes the selected lanes at `to`, and up to a whole vector lanes of no meaning behind them.
    template <class D, typename T>
    HWY_INLINE void operator()(D lanes, hn::Vec<D> value, T *to) const {
        const Ints bits = hn::BitCast(IntLanes(), value);
        hn::StoreU(hn::BitCast(lanes, hn::TableLookupLanes(bits, order_)), lanes, to);
    }

private:
    using Order = decltype(hn::IndicesFromVec(IntLanes(), Ints()));
    static_assert(hn::MaxLanes(IntLanes()) <= packed_lanes);

    static HWY_INLINE Order order_of(hn::Mask<IntLanes> selected) {
        const IntLanes ints;
        std::array<std::uint8_t, 8> set{};
        hn::StoreMaskBits(ints, selected, set.data());
        const hn::Rebind<std::uint8_t, IntLanes> bytes;
        return hn::IndicesFromVec(ints, hn::PromoteTo(ints, hn::LoadU(bytes, packing_orders[set[0]].data())));
    }

    Order order_;
};

#endif

} // namespace HWY_NAMESPACE
} // namespace fast
HWY_AFTER_NAMESPACE();

#endif
