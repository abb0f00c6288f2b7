// SPDX-License-Identifier: MIT
// The lanes of stages that do some of their steps in double.
// Compiled once for each instruction set.
#if defined(ZELVO_PIPELINE_SIMD_DOUBLE_LANES_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZELVO_PIPELINE_SIMD_DOUBLE_LANES_INL_H
#undef ZELVO_PIPELINE_SIMD_DOUBLE_LANES_INL_H
#else
#define ZELVO_PIPELINE_SIMD_DOUBLE_LANES_INL_H
#endif

#include "hwy/highway.h"

#include "raster/simd/wasm_doubles-inl.h"

#include <cstdint>

// Without vectors (Highway's EMU128 and SCALAR) the plain forms are used: not all operations exist there.
#if HWY_TARGET < HWY_EMU128

namespace fast {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

/// A vector of doubles, and half a vector of as many floats or integers.
using DoubleLanes = hn::ScalableTag<double>;
using HalfFloatLanes = hn::Rebind<float, DoubleLanes>;
using HalfIntLanes = hn::Rebind<std::int32_t, DoubleLanes>;
using Doubles = hn::Vec<DoubleLanes>;
using HalfFloats = hn::Vec<HalfFloatLanes>;
using HalfInts = hn::Vec<HalfIntLanes>;

} // namespace HWY_NAMESPACE
} // namespace fast

#endif

#endif
