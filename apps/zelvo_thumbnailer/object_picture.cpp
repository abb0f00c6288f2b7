// SPDX-License-Identifier: MIT
// The stages of mode 1 with a view, a projection and a texture of the thumbnailer's own.
#include "object_picture.h"

#include "built_in_texture.h"
#include "core/forms.h"
#include "core/to_int.h"
#include "display/frame_buffers.h"
#include "failure.h"
#include "main_68k/viewer_state.h"
#include "object/model.h"
#include "object/polygon_list.h"
#include "pipeline/lighting.h"
#include "pipeline/preparation.h"
#include "pipeline/rotation.h"
#include "raster/face_loops.h"
#include "raster/texture_map.h"
#include "shared/place_hash.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <memory>
#include <numbers>
#include <span>
#include <sys/mman.h>
#include <vector>

namespace {

constexpr double degree = std::numbers::pi / 180.0;

/// How the camera looks at the object: turned to one side, and looking down.
struct View {
    double around;
    double from_above;
};
constexpr View three_quarter_view{-30.0 * degree, 22.0 * degree};

/// For an object that is flat and would be seen from its edge.
constexpr View other_view{35.0 * degree, 40.0 * degree};

/// The usual view is good enough if polygons cover at least this part of the square around the object.
constexpr double least_cover = 0.02;

/// The part of the square's side that the object's longer direction fills.
constexpr double filled_part = 0.9;

/// The scale of the projection in which the object is measured. It keeps small parts of a large object
/// exact, since projected points are whole thousandths.
constexpr float measured_scale = 1000.0F;

/// Turns the object about its vertical axis and then towards the camera. The program turns about z, x and y,
/// in this order; these are its angles for that turn, with the half turns that every view begins with.
void set_view(const View &view) {
    const double a = std::numbers::pi + std::asin(std::sin(view.from_above) * std::cos(view.around));
    const double b = std::atan2(std::sin(view.around), -std::cos(view.from_above) * std::cos(view.around));
    const double c = std::atan2(std::sin(view.from_above) * std::sin(view.around), std::cos(view.from_above));
    set_rotation(a, b, c);
}

/// The smallest and the largest of some numbers; NaN does not count.
struct Range {
    float low = std::numeric_limits<float>::max();
    float high = std::numeric_limits<float>::lowest();

    void include(float value) {
        low = std::min(low, value);
        high = std::max(high, value);
    }
    float length() const { return high - low; }
    float middle() const { return low + length() * 0.5F; }
};

/// What the projected polygons look like.
struct Outline {
    Range x;
    Range y;
    /// The areas of all polygons, hidden ones too.
    double area = 0.0;
    /// The same with a sign, positive for front faces, and weighted by nearness. Since the near faces of a
    /// body weigh more than the far ones, it is negative if a body's faces point inwards, and also if an open
    /// surface is seen from its back.
    double facing = 0.0;

    float longer_side() const { return std::max(x.length(), y.length()); }
    double cover() const { return area / (static_cast<double>(longer_side()) * longer_side()); }
};

void add_triangle(Outline &outline, const Vec3 &a, const Vec3 &b, const Vec3 &c) {
    const double area =
        ((double{b.x} - a.x) * (double{c.y} - a.y) - (double{b.y} - a.y) * (double{c.x} - a.x)) / 2.0;
    if (std::isfinite(area)) {
        outline.area += std::abs(area);
        outline.facing += area * (double{a.z} + b.z + c.z) / 3.0;
    }
}

Outline measure(const View &view) {
    set_view(view);
    fast::project_points({measured_scale, measured_scale, 0.0F, 0.0F});
    Outline outline;
    for_each_polygon([&outline](const Polygon &polygon) {
        if (!polygon.has_valid_indices) {
            return;
        }
        for (const std::uint16_t index : polygon.indices) {
            outline.x.include(lwopoints3[index].x);
            outline.y.include(lwopoints3[index].y);
        }
        for (std::size_t i = 2; i < polygon.indices.size(); ++i) {
            add_triangle(outline, lwopoints3[polygon.indices[0]], lwopoints3[polygon.indices[i - 1]],
                         lwopoints3[polygon.indices[i]]);
        }
    });
    return outline;
}

/// Sets the better of the two views, and measures the object in it.
Outline choose_view() {
    const Outline usual = measure(three_quarter_view);
    if (usual.cover() >= least_cover) {
        return usual;
    }
    const Outline other = measure(other_view);
    return other.cover() > usual.cover() ? other : measure(three_quarter_view);
}

/// The projection that centres the outline in the frame.
Projection framing(const Outline &outline) {
    const double scale = filled_part * frame_width / static_cast<double>(outline.longer_side());
    const auto place = [scale](const Range &range) {
        return static_cast<float>(frame_width / 2.0 - static_cast<double>(range.middle()) * scale);
    };
    const auto projected_scale = static_cast<float>(scale * static_cast<double>(measured_scale));
    return {projected_scale, projected_scale, place(outline.x), place(outline.y)};
}

/// The texture of mode 1 with the light of mode 4: since both depend on the normal alone, and a texel belongs
/// to a normal, each texel becomes the mean of its level and the light's colour for that normal. It is never
/// 0, as the background is, since surfaces without light are not black.
void make_texture() {
    rotate_light();
    allocate_envmap();
    constexpr int centre = 128;
    for (int row = 0; row < 256; ++row) {
        for (int column = 0; column < 256; ++column) {
            const auto x = static_cast<float>(column - centre);
            const auto y = static_cast<float>(row - centre);
            // Normals point inwards, so those that are seen point away. Texels outside the circle are those
            // of its edge.
            const float z = std::sqrt(std::max(normal_length * normal_length - x * x - y * y, 0.0F));
            const std::size_t texel = static_cast<std::size_t>(row) * 256 + static_cast<std::size_t>(column);
            const int lit = to_int(vertex_light({x, y, z}));
            envmap[texel] = static_cast<std::uint8_t>((built_in_texture[texel] + lit) / 2);
        }
    }
}

/// Lets the system use large pages for a buffer. Getting thousands of small ones would take most of the time
/// of a large thumbnail.
void ask_for_large_pages(void *buffer, std::size_t bytes) {
#ifdef MADV_HUGEPAGE
    constexpr std::size_t page = std::size_t{2} << 20;
    std::size_t space = bytes;
    if (std::align(page, page, buffer, space) != nullptr) {
        madvise(buffer, space, MADV_HUGEPAGE);
    }
#endif
}

void turn_normals_around() {
    for (Vec3 &normal : std::span(lwonormals2.get(), static_cast<std::size_t>(points_to_process()))) {
        normal = {-normal.x, -normal.y, -normal.z};
    }
}

/// Whether the polygons enclose a space: each edge is also the edge of a neighbour, in the other direction.
/// An edge adds a number that the opposite edge takes away, so that the sum of a closed surface is 0. That of
/// an open one is 0 only by a chance of one in 2^64.
bool is_closed() {
    std::uint64_t sum = 0;
    for_each_polygon([&sum](const Polygon &polygon) {
        if (!polygon.has_valid_indices) {
            return;
        }
        std::uint64_t from = place_hash(lwopoints2[polygon.indices.back()]);
        for (const std::uint16_t index : polygon.indices) {
            const std::uint64_t to = place_hash(lwopoints2[index]);
            sum += mix(from, to) - mix(to, from);
            from = to;
        }
    });
    return sum == 0;
}

/// Moves every point that no polygon uses to the place of one that is used: a point far away would make the
/// object tiny, and its normals and depths coarse.
void gather_unused_points() {
    const auto points = static_cast<std::size_t>(points_to_process());
    std::vector<bool> is_used(points);
    for_each_polygon([&is_used](const Polygon &polygon) {
        if (polygon.has_valid_indices) {
            for (const std::uint16_t index : polygon.indices) {
                is_used[index] = true;
            }
        }
    });
    const auto first_used =
        static_cast<std::size_t>(std::find(is_used.begin(), is_used.end(), true) - is_used.begin());
    for (std::size_t i = 0; i < points; ++i) {
        if (!is_used[i] && first_used < points) {
            point_chunk[i] = point_chunk[first_used];
        }
    }
}

} // namespace

void draw_object(std::int32_t side) {
    allocate_frame_buffers(side, side);
    ask_for_large_pages(chunkybuf1.get(), frame_pixels());
    ask_for_large_pages(zbuf.get(), frame_pixels() * sizeof zbuf[0]);
    make_texture();
    gather_unused_points();
    if (points_to_process() > 0) {
        fast::fit_object();
    }
    fast::build_vertex_normals();
    const Outline outline = choose_view();
    if (!(outline.longer_side() > 0.0F)) {
        fail(exit_no_picture, "nothing of the object can be seen");
    }
    fast::project_points(framing(outline));
    if (outline.facing < 0.0) {
        viewer.flip = 1;
        turn_normals_around();
    }
    fast::rotate_normals();
    // The inside of a closed body is never seen, and drawing it would take as long again.
    viewer.doubleside = is_closed() ? 0 : 1;
    face_loop_envmap();
}
