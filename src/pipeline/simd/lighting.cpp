// SPDX-License-Identifier: MIT
// The light of several faces or points at once, by the operations of face_light and vertex_light. A vector
// has as many lanes as it holds doubles, since the square root and the quotient are computed in double, as in
// the plain form.
#include "pipeline/lighting.h"

#include "main_68k/viewer_state.h"
#include "object/model.h"

#include <array>
#include <cstddef>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "pipeline/simd/lighting.cpp"
#include "hwy/foreach_target.h"

#include "hwy/highway.h"

#include "pipeline/simd/double_lanes-inl.h"

HWY_BEFORE_NAMESPACE();
namespace fast {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

#if HWY_TARGET >= HWY_EMU128

// A processor without vectors draws by the plain forms.
using plain::face_lights;
using plain::vertex_lights;

#else

/// Half a vector of points.
struct HalfPoints {
    HalfFloats x;
    HalfFloats y;
    HalfFloats z;
};

/// Sum of three products, from left to right.
HWY_INLINE HalfFloats dot(const HalfPoints &a, const HalfPoints &b) {
    return hn::Add(hn::Add(hn::Mul(a.x, b.x), hn::Mul(a.y, b.y)), hn::Mul(a.z, b.z));
}

HWY_INLINE HalfPoints difference(const HalfPoints &a, const HalfPoints &b) {
    return {hn::Sub(a.x, b.x), hn::Sub(a.y, b.y), hn::Sub(a.z, b.z)};
}

/// The light that shading reads, the same in every lane.
HWY_INLINE HalfPoints light_lanes() {
    const HalfFloatLanes floats;
    return {hn::Set(floats, viewer.light.x), hn::Set(floats, viewer.light.y),
            hn::Set(floats, viewer.light.z)};
}

/// The colours for normals whose scalar products with the light are `facing`.
HWY_INLINE HalfFloats colour(HalfFloats facing, const HalfPoints &normal, const HalfPoints &light) {
    const DoubleLanes doubles;
    const HalfFloatLanes floats;
    const HalfFloats lengths = hn::Mul(dot(normal, normal), dot(light, light));
    const Doubles quotient =
        hn::Div(hn::PromoteTo(doubles, facing), hn::Sqrt(hn::PromoteTo(doubles, lengths)));
    const HalfFloats cosine = hn::DemoteTo(floats, hn::Mul(quotient, hn::Set(doubles, diffuse_light)));
    const auto is_dark = hn::Lt(cosine, hn::Zero(floats));
    return hn::Add(hn::IfThenZeroElse(is_dark, cosine), hn::Set(floats, ambient_light));
}

/// Lights the vector of faces from `first` on.
HWY_INLINE void light_faces(const FaceCorners &corners, std::size_t first, const HalfPoints &light,
                            float *colours) {
    const HalfFloatLanes floats;
    std::array<HalfPoints, 3> p;
    for (std::size_t c = 0; c < 3; ++c) {
        p[c] = {hn::LoadU(floats, corners.x[c] + first), hn::LoadU(floats, corners.y[c] + first),
                hn::LoadU(floats, corners.depth[c] + first)};
    }
    const HalfPoints a = difference(p[0], p[1]);
    const HalfPoints b = difference(p[2], p[1]);
    const HalfPoints normal{hn::Sub(hn::Mul(a.z, b.y), hn::Mul(a.y, b.z)),
                            hn::Sub(hn::Mul(a.x, b.z), hn::Mul(a.z, b.x)),
                            hn::Sub(hn::Mul(a.y, b.x), hn::Mul(a.x, b.y))};
    hn::StoreU(colour(dot(light, normal), normal, light), floats, colours + first);
}

void face_lights(const FaceCorners &corners, std::size_t count, float *colours) {
    const std::size_t lanes = hn::Lanes(HalfFloatLanes());
    if (count < lanes) {
        plain::face_lights(corners, count, colours);
        return;
    }
    const HalfPoints light = light_lanes();
    for (std::size_t i = 0; i + lanes < count; i += lanes) {
        light_faces(corners, i, light, colours);
    }
    // The last vector ends with the last face; the faces that it shares with the one before it get the same
    // colours again.
    light_faces(corners, count - lanes, light, colours);
}

void vertex_lights(const std::uint32_t *points, std::size_t count) {
    const HalfFloatLanes floats;
    const HalfIntLanes ints;
    const HalfPoints light = light_lanes();
    const HalfFloats minus_x = hn::Neg(light.x);
    const std::size_t lanes = hn::Lanes(floats);
    std::size_t i = 0;
    for (; i + lanes <= count; i += lanes) {
        const auto at = hn::BitCast(ints, hn::LoadU(hn::Rebind<std::uint32_t, HalfIntLanes>(), points + i));
        const auto record = hn::Add(at, hn::Add(at, at));
        const float *normals = &lwonormals3[0].x;
        const HalfPoints normal{hn::GatherIndex(floats, normals, record),
                                hn::GatherIndex(floats, normals + 1, record),
                                hn::GatherIndex(floats, normals + 2, record)};
        const HalfFloats facing = hn::Add(hn::Sub(hn::Mul(minus_x, normal.x), hn::Mul(light.y, normal.y)),
                                          hn::Mul(light.z, normal.z));
        alignas(HWY_MAX_BYTES) std::array<float, HWY_MAX_BYTES / sizeof(float)> lit;
        hn::StoreU(colour(facing, normal, light), floats, lit.data());
        for (std::size_t lane = 0; lane < lanes; ++lane) {
            lwofis[points[i + lane]] = lit[lane];
        }
    }
    plain::vertex_lights(points + i, count - i);
}

#endif

} // namespace HWY_NAMESPACE
} // namespace fast
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace fast {

HWY_EXPORT(face_lights);
HWY_EXPORT(vertex_lights);

void face_lights(const FaceCorners &corners, std::size_t count, float *colours) {
    HWY_DYNAMIC_DISPATCH(face_lights)(corners, count, colours);
}

void vertex_lights(const std::uint32_t *points, std::size_t count) {
    HWY_DYNAMIC_DISPATCH(vertex_lights)(points, count);
}

} // namespace fast

#endif
