// SPDX-License-Identifier: MIT
// Fitting the object and building its vertex normals on vectors. Points are moved and scaled by the
// operations of the plain form; extremes do not depend on the order of the points, except as find_bounds
// says; normals are summed in list order.
#include "pipeline/preparation.h"

#include "object/model.h"
#include "object/polygon_list.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <optional>
#include <span>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "pipeline/simd/preparation.cpp"
#include "hwy/foreach_target.h"

#include "hwy/highway.h"

#include "pipeline/simd/double_lanes-inl.h"
#include "raster/simd/conversions-inl.h"
#include "raster/simd/polygon_walk.h"
#include "raster/simd/word_pattern-inl.h"

HWY_BEFORE_NAMESPACE();
namespace fast {
namespace HWY_NAMESPACE {

#if HWY_TARGET >= HWY_EMU128

// A processor without vectors prepares by the plain forms.
using plain::build_vertex_normals;
using plain::fit_object;

#else

/// Three vectors of points as they are in memory, x, y and z in turn. They hold as many points as one vector
/// has lanes.
using PointRun = std::array<Floats, 3>;

constexpr std::size_t most_lanes = HWY_MAX_BYTES / sizeof(float);

HWY_INLINE std::size_t run_points() {
    return hn::Lanes(FloatLanes());
}

HWY_INLINE PointRun load_run(const Vec3 *points) {
    const FloatLanes floats;
    const float *first = &points->x;
    const std::size_t lanes = hn::Lanes(floats);
    return {hn::LoadU(floats, first), hn::LoadU(floats, first + lanes), hn::LoadU(floats, first + 2 * lanes)};
}

HWY_INLINE void store_run(const PointRun &run, Vec3 *points) {
    const FloatLanes floats;
    for (std::size_t i = 0; i < run.size(); ++i) {
        hn::StoreU(run[i], floats, &points->x + i * hn::Lanes(floats));
    }
}

/// A run of the same point.
HWY_INLINE PointRun repeat(const Vec3 &point) {
    std::array<Vec3, most_lanes> points;
    points.fill(point);
    return load_run(points.data());
}

/// The smallest and the largest of each coordinate.
struct Bounds {
    Vec3 low;
    Vec3 high;

    void include(const Vec3 &p) {
        low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
    }
};

/// The bounds of the points, at least one. As with std::min and std::max, NaN counts only in the first point.
/// Of zeros with different signs the plain form keeps the first, this one any of them; fit_object handles
/// that case.
HWY_INLINE Bounds find_bounds(std::span<const Vec3> points) {
    PointRun low = repeat(points.front());
    PointRun high = low;
    std::size_t i = 0;
    for (; i + run_points() <= points.size(); i += run_points()) {
        const PointRun run = load_run(&points[i]);
        for (std::size_t k = 0; k < run.size(); ++k) {
            low[k] = hn::IfThenElse(hn::Lt(run[k], low[k]), run[k], low[k]);
            high[k] = hn::IfThenElse(hn::Lt(high[k], run[k]), run[k], high[k]);
        }
    }
    std::array<Vec3, most_lanes> lows;
    std::array<Vec3, most_lanes> highs;
    store_run(low, lows.data());
    store_run(high, highs.data());
    Bounds bounds{points.front(), points.front()};
    for (std::size_t lane = 0; lane < run_points(); ++lane) {
        bounds.include(lows[lane]);
        bounds.include(highs[lane]);
    }
    for (; i < points.size(); ++i) {
        bounds.include(points[i]);
    }
    return bounds;
}

/// Whether the middle between the bounds is a zero whose sign depends on the order of the points.
bool is_flat_at_zero(float low, float high) {
    return low == 0.0F && high == 0.0F;
}

Vec3 moved(const Vec3 &p, const Vec3 &shift) {
    return {p.x + shift.x, p.y + shift.y, p.z + shift.z};
}

/// The largest squared length of the points moved by `shift`.
HWY_INLINE float farthest_square(std::span<const Vec3> points, const Vec3 &shift) {
    const FloatLanes floats;
    const Floats shift_x = hn::Set(floats, shift.x);
    const Floats shift_y = hn::Set(floats, shift.y);
    const Floats shift_z = hn::Set(floats, shift.z);
    Floats farthest = hn::Zero(floats);
    std::size_t i = 0;
    for (; i + run_points() <= points.size(); i += run_points()) {
        Floats x;
        Floats y;
        Floats z;
        hn::LoadInterleaved3(floats, &points[i].x, x, y, z);
        x = hn::Add(x, shift_x);
        y = hn::Add(y, shift_y);
        z = hn::Add(z, shift_z);
        const Floats square = hn::Add(hn::Add(hn::Mul(x, x), hn::Mul(y, y)), hn::Mul(z, z));
        farthest = hn::IfThenElse(hn::Lt(farthest, square), square, farthest);
    }
    float result = hn::GetLane(hn::MaxOfLanes(floats, farthest));
    for (; i < points.size(); ++i) {
        const Vec3 p = moved(points[i], shift);
        result = std::max(result, p.x * p.x + p.y * p.y + p.z * p.z);
    }
    return result;
}

void fit_object() {
    const std::span<Vec3> points(point_chunk.get(), static_cast<std::size_t>(points_to_process()));
    const auto [low, high] = find_bounds(points);
    if (is_flat_at_zero(low.x, high.x) || is_flat_at_zero(low.y, high.y) || is_flat_at_zero(low.z, high.z)) {
        plain::fit_object();
        return;
    }
    const Vec3 shift{(low.x + high.x) * -0.5F, (low.y + high.y) * -0.5F, (low.z + high.z) * -0.5F};
    const float radius = std::sqrt(farthest_square(points, shift));
    const auto scale = static_cast<float>(prepared_radius / static_cast<double>(radius));

    const PointRun shifts = repeat(shift);
    const PointRun scales = repeat({-scale, scale, scale});
    std::size_t i = 0;
    for (; i + run_points() <= points.size(); i += run_points()) {
        PointRun run = load_run(&points[i]);
        for (std::size_t k = 0; k < run.size(); ++k) {
            run[k] = hn::Mul(hn::Add(run[k], shifts[k]), scales[k]);
        }
        store_run(run, &points[i]);
        store_run(run, &lwopoints2[i]);
    }
    for (; i < points.size(); ++i) {
        const Vec3 p = moved(points[i], shift);
        points[i] = lwopoints2[i] = {p.x * -scale, p.y * scale, p.z * scale};
    }
}

/// One point, a sum or a normal in four lanes, the last of which means nothing.
using RecordLanes = hn::FixedTag<float, 4>;
using Record = hn::Vec<RecordLanes>;

/// The unnormalised normal of a triangle, by the products and differences of face_normal. The last step
/// brings its coordinates, which are computed in the order z, x, y, into the order of a record.
HWY_INLINE Record record_normal(Record a, Record b, Record c) {
    const RecordLanes lanes;
    alignas(16) static constexpr std::array<std::int32_t, 4> yzx_lanes{1, 2, 0, 3};
    const auto order =
        hn::IndicesFromVec(lanes, hn::Load(hn::RebindToSigned<RecordLanes>(), yzx_lanes.data()));
    const auto yzx = [order](Record v) HWY_ATTR { return hn::TableLookupLanes(v, order); };
    const Record u = hn::Sub(a, b);
    const Record w = hn::Sub(c, b);
    return yzx(hn::Sub(hn::Mul(yzx(u), w), hn::Mul(u, yzx(w))));
}

/// Adds a normal to a point's sum, which has three floats: x and y together, then z. A store of four would
/// reach into the next point's sum, and a load of that sum would have to wait for the store.
HWY_INLINE void add_to_sum(Record normal, Vec3 &sum) {
    const hn::Half<RecordLanes> two;
    hn::StoreU(hn::Add(hn::LoadU(two, &sum.x), hn::LowerHalf(two, normal)), two, &sum.x);
    sum.z += hn::GetLane(hn::UpperHalf(two, normal));
}

/// Adds each polygon's normal to the sums of its points, in list order. Runs of triangles, which most lists
/// consist of, are checked together.
HWY_INLINE void add_polygon_normals(const Vec3 *points, Vec3 *sums) {
    constexpr std::size_t run = triangle_words * hn::MaxLanes(FloatLanes());
    const auto record = [points](std::size_t point)
                            HWY_ATTR { return hn::LoadU(RecordLanes(), &points[point].x); };
    const PolygonWalk walk = start_polygon_walk();
    const std::span<const std::uint16_t> words = walk.words;
    const auto is_run = [&](std::size_t at) HWY_ATTR {
        return walk.points > 0 && at + run <= words.size() && follow<run>(&words[at], walk.triangles);
    };
    // After other polygons as many words are taken one by one before a run is looked for again.
    std::size_t singly_until = 0;
    for (std::size_t at = 0; at < words.size();) {
        if (at >= singly_until) {
            if (is_run(at)) {
                for (const std::size_t end = at + run; at < end; at += triangle_words) {
                    const std::size_t a = words[at + 1];
                    const std::size_t b = words[at + 2];
                    const std::size_t c = words[at + 3];
                    const Record normal = record_normal(record(a), record(b), record(c));
                    add_to_sum(normal, sums[a]);
                    add_to_sum(normal, sums[b]);
                    add_to_sum(normal, sums[c]);
                }
                continue;
            }
            singly_until = at + run;
        }
        const std::optional<Polygon> polygon = polygon_at(words, at);
        if (!polygon) {
            return;
        }
        if (polygon->has_valid_indices) {
            const auto &indices = polygon->indices;
            const Record normal = record_normal(record(indices[0]), record(indices[1]), record(indices[2]));
            for (const std::uint16_t point : indices.first(polygon->vertices)) {
                add_to_sum(normal, sums[point]);
            }
        }
        at = polygon->next(at);
    }
}

/// Scales the sums to the length of a normal, as scale_to_length does.
HWY_INLINE void scale_sums(std::span<Vec3> sums) {
    const DoubleLanes doubles;
    const HalfFloatLanes floats;
    const auto length = hn::Set(doubles, static_cast<double>(normal_length));
    const std::size_t lanes = hn::Lanes(floats);
    std::size_t i = 0;
    for (; i + lanes <= sums.size(); i += lanes) {
        HalfFloats x;
        HalfFloats y;
        HalfFloats z;
        hn::LoadInterleaved3(floats, &sums[i].x, x, y, z);
        const auto squares = hn::Add(hn::Add(hn::Mul(x, x), hn::Mul(y, y)), hn::Mul(z, z));
        const auto factor = hn::DemoteTo(floats, hn::Div(length, hn::Sqrt(hn::PromoteTo(doubles, squares))));
        hn::StoreInterleaved3(hn::Mul(x, factor), hn::Mul(y, factor), hn::Mul(z, factor), floats, &sums[i].x);
    }
    for (; i < sums.size(); ++i) {
        scale_to_length(sums[i], normal_length);
    }
}

void build_vertex_normals() {
    // If the chunk claims more words than the file held, only the plain form stops at the unread tail.
    if (unread_polygon_words > 0) {
        plain::build_vertex_normals();
        return;
    }
    const std::span<Vec3> normals(lwonormals2.get(), static_cast<std::size_t>(points_to_process()));
    std::fill(normals.begin(), normals.end(), Vec3{1.0F, 1.0F, 1.0F});
    add_polygon_normals(lwopoints2.get(), normals.data());
    scale_sums(normals);
}

#endif

} // namespace HWY_NAMESPACE
} // namespace fast
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace fast {

HWY_EXPORT(fit_object);
HWY_EXPORT(build_vertex_normals);

void fit_object() {
    HWY_DYNAMIC_DISPATCH(fit_object)();
}

void build_vertex_normals() {
    HWY_DYNAMIC_DISPATCH(build_vertex_normals)();
}

} // namespace fast

#endif
