// SPDX-License-Identifier: MIT
// The curve of the dots effect, a vector of its points at once, by the operations of curve_point,
// rotate_point_d and the plain loop.
#include "pipeline/dots_effect.h"

#include "display/frame_buffers.h"
#include "main_68k/viewer_state.h"
#include "pipeline/rotation.h"
#include "pipeline/simd/effect_curve.h"
#include "pipeline/sine_table.h"
#include "raster/dots.h"

#include <cstddef>
#include <limits>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "pipeline/simd/dots_effect.cpp"
#include "hwy/foreach_target.h"

#include "hwy/highway.h"

#include "pipeline/simd/double_lanes-inl.h"

HWY_BEFORE_NAMESPACE();
namespace fast {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

#if HWY_TARGET >= HWY_EMU128

// A processor without vectors draws by the plain form.
using plain::plot_effect_curve;

#else

/// Angles truncate and saturate like every number. NaN gives the smallest integer; the conversion alone would
/// give it a result that depends on the processor.
HWY_INLINE HalfInts table_angle(Doubles units) {
    const HalfIntLanes ints;
    const auto smallest = hn::Set(DoubleLanes(), std::numeric_limits<std::int32_t>::min());
    return hn::DemoteTo(ints, hn::IfThenElse(hn::IsNaN(units), smallest, units));
}

HWY_INLINE HalfFloats sines(HalfInts angle) {
    const auto in_table = hn::And(angle, hn::Set(HalfIntLanes(), sine_period - 1));
    return hn::GatherIndex(HalfFloatLanes(), sine_table.data(), in_table);
}

HWY_INLINE HalfFloats cosines(HalfInts angle) {
    return sines(hn::Add(angle, hn::Set(HalfIntLanes(), sine_period / 4)));
}

void place_dots(const EffectParameters &parameters, EffectDots &dots) {
    const DoubleLanes doubles;
    const HalfFloatLanes floats;
    const auto constant = [doubles](double value) HWY_ATTR { return hn::Set(doubles, value); };
    const auto times = [doubles](Doubles v, float factor)
                           HWY_ATTR { return hn::Mul(v, hn::Set(doubles, static_cast<double>(factor))); };
    const RotationState r = rotation;
    const auto eye = constant(eye_distance);
    const auto sphere = hn::Set(floats, effect_sphere_radius);
    for (std::size_t i = 0; i < parameters.count; i += hn::Lanes(doubles)) {
        const Doubles units = hn::Mul(hn::LoadU(doubles, &parameters.t[i]), constant(effect_angle_units));
        const Doubles wound = hn::Div(units, constant(effect_windings));
        const HalfInts around = table_angle(units);
        const HalfInts along = table_angle(wound);
        const HalfInts across =
            table_angle(hn::Mul(hn::Mul(wound, constant(viewer.spin_angle)), constant(deformation_per_spin)));
        const auto px = hn::PromoteTo(doubles, hn::Mul(hn::Mul(sphere, sines(around)), cosines(along)));
        const auto py = hn::PromoteTo(doubles, hn::Mul(hn::Mul(sphere, cosines(around)), cosines(along)));
        const auto pz = hn::PromoteTo(doubles, hn::Mul(sphere, sines(across)));

        const Doubles x1 = hn::Sub(times(px, r.cos_c), times(py, r.sin_c));
        const Doubles y1 = hn::Add(times(px, r.sin_c), times(py, r.cos_c));
        const Doubles y2 = hn::Add(times(pz, r.sin_a), times(y1, r.cos_a));
        const Doubles z2 = hn::Sub(times(pz, r.cos_a), times(y1, r.sin_a));
        const Doubles x3 = hn::Sub(times(x1, r.cos_b), times(z2, r.sin_b));
        const Doubles z3 = hn::Add(times(x1, r.sin_b), times(z2, r.cos_b));

        const Doubles distance = hn::Add(z3, eye);
        const Doubles across_screen = hn::Div(hn::Div(hn::Mul(eye, x3), distance), constant(projected_width));
        const Doubles x = hn::Add(hn::Mul(across_screen, constant(frame_width)), constant(frame_width * 0.5));
        const Doubles down_screen =
            hn::Mul(hn::Div(hn::Mul(eye, y2), distance), constant(1.0 / projected_height));
        const Doubles y = hn::Add(hn::Mul(down_screen, constant(frame_height)), constant(frame_height * 0.5));
        const Doubles radius = hn::Mul(constant(2.0), hn::Div(eye, distance));
        hn::StoreU(hn::DemoteTo(floats, x), floats, &dots.x[i]);
        hn::StoreU(hn::DemoteTo(floats, y), floats, &dots.y[i]);
        hn::StoreU(hn::DemoteTo(floats, radius), floats, &dots.radius[i]);
    }
}

std::int32_t plot_effect_curve() {
    static constexpr EffectParameters parameters;
    EffectDots dots;
    place_dots(parameters, dots);
    plot_dots(dots.x.data(), dots.y.data(), dots.radius.data(), parameters.count);
    return static_cast<std::int32_t>(parameters.count);
}

#endif

} // namespace HWY_NAMESPACE
} // namespace fast
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace fast {

HWY_EXPORT(plot_effect_curve);

std::int32_t plot_effect_curve() {
    return HWY_DYNAMIC_DISPATCH(plot_effect_curve)();
}

} // namespace fast

#endif
