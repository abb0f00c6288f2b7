// SPDX-License-Identifier: MIT
// Fade and blur of a vector of pixels at once, by the integer steps of the plain forms. Saturating at 0 is
// their clamp_at_zero; a blur splits bytes into 16-bit lanes, which hold any sum of four.
#include "pipeline/clearing.h"

#include "display/frame_buffers.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "pipeline/simd/clearing.cpp"
#include "hwy/foreach_target.h"

#include "hwy/highway.h"

HWY_BEFORE_NAMESPACE();
namespace fast {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

#if HWY_TARGET >= HWY_EMU128

// A processor without vectors draws by the plain forms.
using plain::blur_pixels;
using plain::fade_pixels;

#else

using ByteLanes = hn::ScalableTag<std::uint8_t>;
using SumLanes = hn::Repartition<std::uint16_t, ByteLanes>;
using Bytes = hn::Vec<ByteLanes>;
using Sums = hn::Vec<SumLanes>;

/// Pixels up to the first one, among `count`, where a vector can be stored without crossing a cache line.
HWY_INLINE std::size_t pixels_to_boundary(const std::uint8_t *destination, std::size_t count) {
    const std::size_t lanes = hn::Lanes(ByteLanes());
    const auto beyond = reinterpret_cast<std::uintptr_t>(destination) % lanes;
    return beyond == 0 ? 0 : std::min(lanes - beyond, count);
}

void fade_pixels(const std::uint8_t *source, std::uint8_t *destination, std::size_t count) {
    const ByteLanes bytes;
    const auto one = hn::Set(bytes, 1);
    const std::size_t lanes = hn::Lanes(bytes);
    std::size_t p = pixels_to_boundary(destination, count);
    plain::fade_pixels(source, destination, p);
    // Four vectors per turn: otherwise counting would take a third of the loop's time.
#pragma GCC unroll 4
    for (; p + lanes <= count; p += lanes) {
        const Bytes value = hn::LoadU(bytes, source + p);
        const Bytes sixteenth = hn::ShiftRight<4>(value);
        hn::Store(hn::SaturatedSub(hn::Sub(value, sixteenth), one), bytes, destination + p);
    }
    plain::fade_pixels(source + p, destination + p, count - p);
}

/// The even and the odd bytes of a vector, each in 16 bits.
struct Halves {
    Sums even;
    Sums odd;
};

HWY_INLINE Halves split(Bytes bytes) {
    const SumLanes sums;
    const Sums both = hn::BitCast(sums, bytes);
    return {hn::And(both, hn::Set(sums, 0xFF)), hn::ShiftRight<8>(both)};
}

/// The blurred pixel of four neighbours' sums.
HWY_INLINE Sums blurred(Sums left, Sums right, Sums above, Sums below) {
    const Sums sum = hn::Add(hn::Add(left, right), hn::Add(above, below));
    const Sums mean_less_sixteenth = hn::Sub(hn::ShiftRight<2>(sum), hn::ShiftRight<6>(sum));
    return hn::SaturatedSub(mean_less_sixteenth, hn::Set(SumLanes(), 1));
}

void blur_pixels(const std::uint8_t *centre, std::uint8_t *destination, std::size_t count) {
    const ByteLanes bytes;
    const std::ptrdiff_t width = frame_width;
    const std::size_t lanes = hn::Lanes(bytes);
    std::size_t p = 0;
    for (; p + lanes <= count; p += lanes) {
        const std::uint8_t *pixel = centre + p;
        const Halves left = split(hn::LoadU(bytes, pixel - 1));
        const Halves right = split(hn::LoadU(bytes, pixel + 1));
        const Halves above = split(hn::LoadU(bytes, pixel - width));
        const Halves below = split(hn::LoadU(bytes, pixel + width));
        const Sums even = blurred(left.even, right.even, above.even, below.even);
        const Sums odd = blurred(left.odd, right.odd, above.odd, below.odd);
        hn::StoreU(hn::BitCast(bytes, hn::Or(even, hn::ShiftLeft<8>(odd))), bytes, destination + p);
    }
    plain::blur_pixels(centre + p, destination + p, count - p);
}

#endif

} // namespace HWY_NAMESPACE
} // namespace fast
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace fast {

HWY_EXPORT(fade_pixels);
HWY_EXPORT(blur_pixels);

void fade_pixels(const std::uint8_t *source, std::uint8_t *destination, std::size_t count) {
    HWY_DYNAMIC_DISPATCH(fade_pixels)(source, destination, count);
}

void blur_pixels(const std::uint8_t *centre, std::uint8_t *destination, std::size_t count) {
    HWY_DYNAMIC_DISPATCH(blur_pixels)(centre, destination, count);
}

} // namespace fast

#endif
