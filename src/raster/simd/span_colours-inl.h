// SPDX-License-Identifier: MIT
// The colours along a span, as many as pixels are drawn together.
// Compiled once for each instruction set.
#if defined(ZELVO_RASTER_SIMD_SPAN_COLOURS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZELVO_RASTER_SIMD_SPAN_COLOURS_INL_H
#undef ZELVO_RASTER_SIMD_SPAN_COLOURS_INL_H
#else
#define ZELVO_RASTER_SIMD_SPAN_COLOURS_INL_H
#endif

#include "hwy/highway.h"

#include "raster/simd/pixel_vectors-inl.h"
#include "raster/simd/span_list.h"

#include <cstddef>
#include <cstdint>

// Without vectors (Highway's EMU128 and SCALAR) the plain forms are used: not all operations exist there.
#if HWY_TARGET < HWY_EMU128

HWY_BEFORE_NAMESPACE();
namespace fast {
namespace HWY_NAMESPACE {

/// The one colour of a flat triangle.
template <class Pixels>
class FlatColours {
public:
    HWY_INLINE FlatColours(const SpanList &spans, std::size_t span)
        : colour_(hn::Set(typename Pixels::Bytes(), static_cast<std::uint8_t>(spans.colour[span]))) {}

    auto values() const { return colour_; }
    void advance() {}

private:
    hn::Vec<typename Pixels::Bytes> colour_;
};

/// The integer parts of a quantity.
template <class Pixels>
class QuantityColours {
public:
    HWY_INLINE QuantityColours(const SpanList &spans, std::size_t quantity, std::size_t span)
        : quantity_(spans.value[quantity][span], spans.step[quantity][span]) {}

    HWY_INLINE hn::Vec<typename Pixels::Bytes> values() const { return Pixels::colours(quantity_.values()); }
    HWY_INLINE void advance() { quantity_.advance(); }

private:
    typename Pixels::Quantity quantity_;
};

/// Colours in memory.
template <class Pixels>
class StoredColours {
public:
    explicit StoredColours(const std::uint8_t *colours) : colours_(colours) {}

    HWY_INLINE hn::Vec<typename Pixels::Bytes> values() const {
        return hn::LoadU(typename Pixels::Bytes(), colours_);
    }
    HWY_INLINE void advance() { colours_ += hn::Lanes(typename Pixels::Bytes()); }

private:
    const std::uint8_t *colours_;
};

} // namespace HWY_NAMESPACE
} // namespace fast
HWY_AFTER_NAMESPACE();

#endif

#endif
