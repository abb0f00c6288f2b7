// SPDX-License-Identifier: MIT
// Rotation, projection and lighting of several points at once. The vectors are as wide as the doubles that
// some of the steps are taken in.
#include "pipeline/lighting.h"
#include "pipeline/preparation.h"
#include "pipeline/rotation.h"

#include "main_68k/viewer_state.h"
#include "object/model.h"

#include <array>
#include <cstddef>
#include <limits>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "pipeline/simd/points.cpp"
#include "hwy/foreach_target.h"

#include "hwy/highway.h"

HWY_BEFORE_NAMESPACE();
namespace fast {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

#if HWY_TARGET >= HWY_EMU128

// A processor without any vectors draws by the plain forms.
void project_points(const Projection &projection) {
    plain::project_points(projection);
}
void rotate_normals() {
    plain::rotate_normals();
}
void scale_normals() {
    plain::scale_normals();
}
using plain::face_lights;
using plain::vertex_lights;

#else

using DoubleLanes = hn::ScalableTag<double>;
using FloatLanes = hn::Rebind<float, DoubleLanes>;
using IntLanes = hn::Rebind<std::int32_t, DoubleLanes>;
using Doubles = hn::Vec<DoubleLanes>;
using Floats = hn::Vec<FloatLanes>;

/// A vector of points.
struct Points {
    Floats x;
    Floats y;
    Floats z;
};

HWY_INLINE Points load_points(const Vec3 *from) {
    Points p;
    hn::LoadInterleaved3(FloatLanes(), &from->x, p.x, p.y, p.z);
    return p;
}

HWY_INLINE void store_points(const Points &p, Vec3 *to) {
    hn::StoreInterleaved3(p.x, p.y, p.z, FloatLanes(), &to->x);
}

/// The rotation by the set angles, about z, then x, then y, with the operations of rotate_point.
HWY_INLINE Points rotate(const Points &in, const RotationState &r) {
    const FloatLanes floats;
    const auto times = [floats](Floats v, float factor)
                           HWY_ATTR { return hn::Mul(v, hn::Set(floats, factor)); };
    const Floats x1 = hn::Sub(times(in.x, r.cos_c), times(in.y, r.sin_c));
    const Floats y1 = hn::Add(times(in.x, r.sin_c), times(in.y, r.cos_c));
    const Floats y2 = hn::Add(times(in.z, r.sin_a), times(y1, r.cos_a));
    const Floats z2 = hn::Sub(times(in.z, r.cos_a), times(y1, r.sin_a));
    const Floats x3 = hn::Sub(times(x1, r.cos_b), times(z2, r.sin_b));
    const Floats z3 = hn::Add(times(x1, r.sin_b), times(z2, r.cos_b));
    return {x3, y2, z3};
}

/// Rounds to thousandths, half up for positive values and toward zero for negative ones.
HWY_INLINE Floats snap(Floats value) {
    const DoubleLanes doubles;
    const FloatLanes floats;
    const IntLanes ints;
    const Floats thousands = hn::Mul(value, hn::Set(floats, 1000.0F));
    const Doubles raised = hn::Add(hn::PromoteTo(doubles, thousands), hn::Set(doubles, 0.5));
    // The conversion saturates; not-a-number, which it may take either way, gives the smallest integer.
    const auto smallest = hn::Set(ints, std::numeric_limits<std::int32_t>::min());
    const auto is_nan = hn::RebindMask(ints, hn::IsNaN(thousands));
    const auto whole = hn::IfThenElse(is_nan, smallest, hn::DemoteTo(ints, raised));
    return hn::Mul(hn::ConvertTo(floats, whole), hn::Set(floats, 1.0F / 1000.0F));
}

void project_points(const Projection &projection) {
    const DoubleLanes doubles;
    const FloatLanes floats;
    const RotationState state = rotation;
    const Floats eye = hn::Set(floats, eye_distance);
    const auto on_screen = [floats, eye](Floats v, Floats z, float scale, float centre) HWY_ATTR {
        const Floats in_view = hn::Div(hn::Mul(v, eye), hn::Add(z, eye));
        return hn::Add(hn::Mul(in_view, hn::Set(floats, scale)), hn::Set(floats, centre));
    };
    const std::size_t lanes = hn::Lanes(floats);
    const auto points = static_cast<std::size_t>(worked_points());
    std::size_t i = 0;
    for (; i + lanes <= points; i += lanes) {
        const Points p = rotate(load_points(&lwopoints2[i]), state);
        const Doubles z = hn::PromoteTo(doubles, p.z);
        const Floats depth =
            hn::DemoteTo(floats, hn::Add(hn::Mul(z, hn::Set(doubles, -0.9)), hn::Set(doubles, 128.0)));
        const Floats x = on_screen(p.x, p.z, projection.scale_x, projection.centre_x);
        const Floats y = on_screen(p.y, p.z, projection.scale_y, projection.centre_y);
        store_points({snap(x), snap(y), snap(depth)}, &lwopoints3[i]);
    }
    plain::project_points(projection, i);
}

void rotate_normals() {
    const RotationState state = rotation;
    const std::size_t lanes = hn::Lanes(FloatLanes());
    const auto points = static_cast<std::size_t>(worked_points());
    std::size_t i = 0;
    for (; i + lanes <= points; i += lanes) {
        store_points(rotate(load_points(&lwonormals2[i]), state), &lwonormals3[i]);
    }
    plain::rotate_normals(i);
}

/// Sum of three products, from left to right.
HWY_INLINE Floats dot(const Points &a, const Points &b) {
    return hn::Add(hn::Add(hn::Mul(a.x, b.x), hn::Mul(a.y, b.y)), hn::Mul(a.z, b.z));
}

void scale_normals() {
    const DoubleLanes doubles;
    const FloatLanes floats;
    const auto length = hn::Set(doubles, static_cast<double>(normal_length));
    const std::size_t lanes = hn::Lanes(floats);
    const auto points = static_cast<std::size_t>(worked_points());
    std::size_t i = 0;
    for (; i + lanes <= points; i += lanes) {
        const Points p = load_points(&lwonormals2[i]);
        const Floats squares = dot(p, p);
        const Floats factor =
            hn::DemoteTo(floats, hn::Div(length, hn::Sqrt(hn::PromoteTo(doubles, squares))));
        store_points({hn::Mul(p.x, factor), hn::Mul(p.y, factor), hn::Mul(p.z, factor)}, &lwonormals2[i]);
    }
    plain::scale_normals(i);
}

HWY_INLINE Points difference(const Points &a, const Points &b) {
    return {hn::Sub(a.x, b.x), hn::Sub(a.y, b.y), hn::Sub(a.z, b.z)};
}

/// The light that shading reads, the same in every lane.
HWY_INLINE Points light_lanes() {
    const FloatLanes floats;
    return {hn::Set(floats, viewer.light.x), hn::Set(floats, viewer.light.y),
            hn::Set(floats, viewer.light.z)};
}

/// The colours for normals whose scalar products with the light are `facing`.
HWY_INLINE Floats colour(Floats facing, const Points &normal, const Points &light) {
    const DoubleLanes doubles;
    const FloatLanes floats;
    const Floats lengths = hn::Mul(dot(normal, normal), dot(light, light));
    const Doubles quotient =
        hn::Div(hn::PromoteTo(doubles, facing), hn::Sqrt(hn::PromoteTo(doubles, lengths)));
    const Floats cosine = hn::DemoteTo(floats, hn::Mul(quotient, hn::Set(doubles, diffuse_light)));
    const auto is_dark = hn::Lt(cosine, hn::Zero(floats));
    return hn::Add(hn::IfThenZeroElse(is_dark, cosine), hn::Set(floats, ambient_light));
}

void face_lights(const FaceCorners &corners, std::size_t count, float *colours) {
    const FloatLanes floats;
    const Points light = light_lanes();
    for (std::size_t i = 0; i < count; i += hn::Lanes(floats)) {
        std::array<Points, 3> p;
        for (std::size_t c = 0; c < 3; ++c) {
            p[c] = {hn::LoadU(floats, corners.x[c] + i), hn::LoadU(floats, corners.y[c] + i),
                    hn::LoadU(floats, corners.depth[c] + i)};
        }
        const Points a = difference(p[0], p[1]);
        const Points b = difference(p[2], p[1]);
        const Points normal{hn::Sub(hn::Mul(a.z, b.y), hn::Mul(a.y, b.z)),
                            hn::Sub(hn::Mul(a.x, b.z), hn::Mul(a.z, b.x)),
                            hn::Sub(hn::Mul(a.y, b.x), hn::Mul(a.x, b.y))};
        hn::StoreU(colour(dot(light, normal), normal, light), floats, colours + i);
    }
}

void vertex_lights(const std::uint32_t *points, std::size_t count) {
    const FloatLanes floats;
    const IntLanes ints;
    const Points light = light_lanes();
    const Floats minus_x = hn::Neg(light.x);
    const std::size_t lanes = hn::Lanes(floats);
    std::size_t i = 0;
    for (; i + lanes <= count; i += lanes) {
        const auto at = hn::BitCast(ints, hn::LoadU(hn::Rebind<std::uint32_t, IntLanes>(), points + i));
        const auto record = hn::Add(at, hn::Add(at, at));
        const float *normals = &lwonormals3[0].x;
        const Points normal{hn::GatherIndex(floats, normals, record),
                            hn::GatherIndex(floats, normals + 1, record),
                            hn::GatherIndex(floats, normals + 2, record)};
        const Floats facing = hn::Add(hn::Sub(hn::Mul(minus_x, normal.x), hn::Mul(light.y, normal.y)),
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

HWY_EXPORT(project_points);
HWY_EXPORT(rotate_normals);
HWY_EXPORT(scale_normals);
HWY_EXPORT(face_lights);
HWY_EXPORT(vertex_lights);

void project_points(const Projection &projection) {
    HWY_DYNAMIC_DISPATCH(project_points)(projection);
}

void rotate_normals() {
    HWY_DYNAMIC_DISPATCH(rotate_normals)();
}

void scale_normals() {
    HWY_DYNAMIC_DISPATCH(scale_normals)();
}

void face_lights(const FaceCorners &corners, std::size_t count, float *colours) {
    HWY_DYNAMIC_DISPATCH(face_lights)(corners, count, colours);
}

void vertex_lights(const std::uint32_t *points, std::size_t count) {
    HWY_DYNAMIC_DISPATCH(vertex_lights)(points, count);
}

} // namespace fast

#endif
