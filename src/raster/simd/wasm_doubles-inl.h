// SPDX-License-Identifier: MIT
// Vectors of doubles for WebAssembly, which Highway 1.0.3 does not have: the operations that this program
// uses. Compiled once for each instruction set.
#if defined(ZELVO_RASTER_SIMD_WASM_DOUBLES_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZELVO_RASTER_SIMD_WASM_DOUBLES_INL_H
#undef ZELVO_RASTER_SIMD_WASM_DOUBLES_INL_H
#else
#define ZELVO_RASTER_SIMD_WASM_DOUBLES_INL_H
#endif

#include "hwy/highway.h"

#if HWY_TARGET == HWY_WASM

HWY_BEFORE_NAMESPACE();
namespace hwy {
namespace HWY_NAMESPACE {

template <std::size_t N>
HWY_API Vec128<double, N> Set(Simd<double, N, 0> /* lanes */, double value) {
    return Vec128<double, N>{wasm_f64x2_splat(value)};
}

template <std::size_t N>
HWY_API Vec128<double, N> operator+(Vec128<double, N> a, Vec128<double, N> b) {
    return Vec128<double, N>{wasm_f64x2_add(a.raw, b.raw)};
}

template <std::size_t N>
HWY_API Vec128<double, N> operator-(Vec128<double, N> a, Vec128<double, N> b) {
    return Vec128<double, N>{wasm_f64x2_sub(a.raw, b.raw)};
}

template <std::size_t N>
HWY_API Vec128<double, N> operator*(Vec128<double, N> a, Vec128<double, N> b) {
    return Vec128<double, N>{wasm_f64x2_mul(a.raw, b.raw)};
}

template <std::size_t N>
HWY_API Vec128<double, N> operator/(Vec128<double, N> a, Vec128<double, N> b) {
    return Vec128<double, N>{wasm_f64x2_div(a.raw, b.raw)};
}

template <std::size_t N>
HWY_API Mask128<double, N> operator!=(Vec128<double, N> a, Vec128<double, N> b) {
    return Mask128<double, N>{wasm_f64x2_ne(a.raw, b.raw)};
}

template <std::size_t N>
HWY_API Vec128<double, N> Sqrt(Vec128<double, N> value) {
    return Vec128<double, N>{wasm_f64x2_sqrt(value.raw)};
}

template <std::size_t N>
HWY_API Vec128<double, N> PromoteTo(Simd<double, N, 0> /* lanes */, Vec128<float, N> value) {
    return Vec128<double, N>{wasm_f64x2_promote_low_f32x4(value.raw)};
}

template <std::size_t N>
HWY_API Vec128<float, N> DemoteTo(Simd<float, N, 0> /* lanes */, Vec128<double, N> value) {
    return Vec128<float, N>{wasm_f32x4_demote_f64x2_zero(value.raw)};
}

} // namespace HWY_NAMESPACE
} // namespace hwy
HWY_AFTER_NAMESPACE();

#endif

#endif
