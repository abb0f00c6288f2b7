// SPDX-License-Identifier: MIT
// Rotation and projection of a vector of points at once, by the operations of rotate_point and
// project_points.
#include "pipeline/rotation.h"

#include "main_68k/viewer_state.h"
#include "object/model.h"

#include <cstddef>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "pipeline/simd/rotation.cpp"
#include "hwy/foreach_target.h"

#include "hwy/highway.h"

#include "raster/simd/conversions-inl.h"
#include "raster/simd/load_points-inl.h"

HWY_BEFORE_NAMESPACE();
namespace fast {
namespace HWY_NAMESPACE {

#if HWY_TARGET >= HWY_EMU128

// A processor without vectors draws by the plain forms.
void project_points(const Projection &projection) {
    plain::project_points(projection);
}
void rotate_normals() {
    plain::rotate_normals();
}

#else

HWY_INLINE Points load_consecutive(const Vec3 *from) {
    Points p;
    hn::LoadInterleaved3(FloatLanes(), &from->x, p.x, p.y, p.z);
    return p;
}

HWY_INLINE void store_consecutive(const Points &p, Vec3 *to) {
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

/// Rounds numbers of thousandths, as the plain form, which adds 0.5 to the float in double and truncates.
/// Splitting the number into an integer and a remainder, both exact, avoids doubles: adding 0.5 carries into
/// the next integer if the remainder is at least 0.5, or above -0.5 for a negative number. Saturated numbers
/// have a remainder of 0 or above 1 and do not carry.
HWY_INLINE Ints round_any(Floats thousandths) {
    const FloatLanes floats;
    const IntLanes ints;
    const Ints whole = to_int(thousandths);
    const Floats remainder = hn::Sub(thousandths, hn::ConvertTo(floats, whole));
    const auto carries_above =
        hn::And(hn::Ge(remainder, hn::Set(floats, 0.5F)), hn::Lt(remainder, hn::Set(floats, 1.0F)));
    const auto is_negative = hn::RebindMask(floats, hn::Lt(whole, hn::Zero(ints)));
    const auto carries_below = hn::And(is_negative, hn::Gt(remainder, hn::Set(floats, -0.5F)));
    const auto carries = hn::RebindMask(ints, hn::Or(carries_above, carries_below));
    return hn::Add(whole, hn::IfThenElseZero(carries, hn::Set(ints, 1)));
}

/// Numbers below this in magnitude have all integers, and are rounded in fewer steps. They are 8388 units,
/// many times the width of the screen.
constexpr float few_thousandths = 8388608.0F;

/// The same for numbers below `few_thousandths`. A negative number plus 0.5 is exact in float, or below 0.5
/// and truncated to 0. A positive one plus 0.5 may round up to an integer that it does not reach; with the
/// next float below 0.5 it reaches the integer exactly where it should.
HWY_INLINE Ints round_few(Floats thousandths) {
    const FloatLanes floats;
    const Floats half_or_less =
        hn::IfNegativeThenElse(thousandths, hn::Set(floats, 0.5F), hn::Set(floats, 0x1.FFFFFEp-2F));
    return processor_truncation(hn::Add(thousandths, half_or_less));
}

/// Rounds to thousandths.
HWY_INLINE Points snap(const Points &p) {
    const FloatLanes floats;
    const Floats thousand = hn::Set(floats, 1000.0F);
    const Points t{hn::Mul(p.x, thousand), hn::Mul(p.y, thousand), hn::Mul(p.z, thousand)};
    // A NaN makes the sum NaN, which is not below anything. Only some processors truncate it like to_int.
    const Floats sum = hn::Add(hn::Add(hn::Abs(t.x), hn::Abs(t.y)), hn::Abs(t.z));
    const bool are_few = hn::AllTrue(floats, hn::Lt(sum, hn::Set(floats, few_thousandths)));
    const auto rounded = [floats](Ints number) HWY_ATTR {
        return hn::Mul(hn::ConvertTo(floats, number), hn::Set(floats, 1.0F / 1000.0F));
    };
    if (are_few) {
        return {rounded(round_few(t.x)), rounded(round_few(t.y)), rounded(round_few(t.z))};
    }
    return {rounded(round_any(t.x)), rounded(round_any(t.y)), rounded(round_any(t.z))};
}

/// Depth values, larger nearer, in double and rounded once.
HWY_INLINE Floats depth_values(Floats z) {
    const FloatLanes floats;
    const hn::Half<FloatLanes> half;
    const hn::RepartitionToWide<FloatLanes> doubles;
    const auto of_half = [half, doubles](auto z_half) HWY_ATTR {
        const auto wide = hn::PromoteTo(doubles, z_half);
        const auto scaled = hn::Mul(wide, hn::Set(doubles, depth_per_unit));
        return hn::DemoteTo(half, hn::Add(scaled, hn::Set(doubles, depth_at_origin)));
    };
    return hn::Combine(floats, of_half(hn::UpperHalf(half, z)), of_half(hn::LowerHalf(half, z)));
}

void project_points(const Projection &projection) {
    const FloatLanes floats;
    const RotationState state = rotation;
    const Floats eye = hn::Set(floats, eye_distance);
    const auto on_screen = [floats, eye](Floats v, Floats z, float scale, float centre) HWY_ATTR {
        const Floats in_view = hn::Div(hn::Mul(v, eye), hn::Add(z, eye));
        return hn::Add(hn::Mul(in_view, hn::Set(floats, scale)), hn::Set(floats, centre));
    };
    const std::size_t lanes = hn::Lanes(floats);
    const auto points = static_cast<std::size_t>(points_to_process());
    std::size_t i = 0;
    for (; i + lanes <= points; i += lanes) {
        const Points p = rotate(load_consecutive(&lwopoints2[i]), state);
        const Floats x = on_screen(p.x, p.z, projection.scale_x, projection.centre_x);
        const Floats y = on_screen(p.y, p.z, projection.scale_y, projection.centre_y);
        store_consecutive(snap({x, y, depth_values(p.z)}), &lwopoints3[i]);
    }
    plain::project_points(projection, i);
}

void rotate_normals() {
    const RotationState state = rotation;
    const std::size_t lanes = hn::Lanes(FloatLanes());
    const auto points = static_cast<std::size_t>(points_to_process());
    std::size_t i = 0;
    for (; i + lanes <= points; i += lanes) {
        store_consecutive(rotate(load_consecutive(&lwonormals2[i]), state), &lwonormals3[i]);
    }
    plain::rotate_normals(i);
}

#endif

} // namespace HWY_NAMESPACE
} // namespace fast
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace fast {

HWY_EXPORT(project_points);
HWY_EXPORT(rotate_normals);

void project_points(const Projection &projection) {
    HWY_DYNAMIC_DISPATCH(project_points)(projection);
}

void rotate_normals() {
    HWY_DYNAMIC_DISPATCH(rotate_normals)();
}

} // namespace fast

#endif
