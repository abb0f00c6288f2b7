// SPDX-License-Identifier: MIT
// The dot sprite, scaled onto the frame for each dot, and the overlay of one dot per point.
#include "raster/dots.h"

#include "core/forms.h"
#include "display/frame_buffers.h"
#include "main_68k/viewer_state.h"
#include "object/model.h"
#include "raster/fixed_point.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

HeapArray<std::uint8_t> dot_image;

namespace {

/// One past the sprite's last texel, in 16.16.
constexpr std::int64_t sprite_end = std::int64_t{dot_image_size} << 16;

/// Where a dot is along one axis: on the frame's pixels `first` to `end` - 1. The first of them shows the
/// sprite at `texel` (16.16).
struct DotExtent {
    std::int64_t first;
    std::int64_t end;
    std::int64_t texel;
};

/// Clips a dot to the pixels `low` to `high` - 1. Its pixel `start` shows the sprite at `texel`, and each
/// further pixel shows it `step` later. Pixels outside are never visited, so a dot costs only what it draws.
DotExtent clip_dot(std::int64_t start, std::int64_t texel, std::int64_t step, std::int64_t low,
                   std::int64_t high) {
    const std::int64_t pixels = texel < sprite_end ? (sprite_end - texel + step - 1) / step : 0;
    const std::int64_t before_sprite = texel < 0 ? (-texel + step - 1) / step : 0;
    const std::int64_t first = std::max(start + before_sprite, low);
    return {first, std::min(start + pixels, high), texel + (first - start) * step};
}

/// Adds a texel's brightness times the luminance to a pixel.
std::uint8_t add_glow(std::uint8_t pixel, std::uint8_t texel, std::int32_t luminance) {
    const std::int32_t glow = as_signed(Fixed{texel} * static_cast<Fixed>(luminance)) >> 16;
    const std::int32_t sum = pixel + glow;
    return static_cast<std::uint8_t>(sum <= 254 ? sum : 255);
}

void plot_point(const Vec3 &point) {
    plot_dot(point.x, point.y + 1.0F, point.z / 100.0F + 1.0F);
}

/// A count below 512 that gives the same picture as plotting one dot `times` times. A glow of 0 or more
/// saturates within 256 plots; a negative one, which only an edited settings file can give, cycles with a
/// period that divides 256.
std::int32_t equivalent_plots(std::int32_t times) {
    constexpr std::int32_t pixel_values = 256;
    return times < pixel_values ? times : pixel_values + times % pixel_values;
}

} // namespace

void allocate_dot_image() {
    dot_image = allocate_or_exit<std::uint8_t>(std::size_t{dot_image_size} * dot_image_size,
                                               "Couldn't allocate 'dot' memory\n");
}

void release_dot_image() {
    dot_image.reset();
}

void build_dot_image() {
    constexpr int peak = dot_image_radius - 1;
    std::uint8_t *texel = dot_image.get();
    for (int row = 0; row < dot_image_size; ++row) {
        for (int column = 0; column < dot_image_size; ++column) {
            const int dx = column - peak;
            const int dy = row - peak;
            const double distance = std::sqrt(static_cast<double>(dx * dx + dy * dy));
            const std::int32_t value = to_int(255.0 - distance * 255.0 / peak);
            *texel++ = static_cast<std::uint8_t>(std::max<std::int32_t>(value, 0));
        }
    }
}

std::int32_t dot_luminance() {
    return viewer.clear_style == 0 ? viewer.dot_lum : viewer.dot_lum_in_blur;
}

void plot_dot(float x, float y, float s) {
    const std::int32_t luminance = dot_luminance();
    const float left = x - s;
    const float top = y - s;
    const std::int32_t x0 = to_int(left);
    const std::int32_t y0 = to_int(top);

    // `step` is texels per pixel in 16.16. The first pixel shows the sprite at one step, less the dot's
    // fraction of a pixel.
    const std::int32_t step = to_int(static_cast<float>(dot_image_radius) / s * 65536.0F);
    if (step <= 0) {
        return;
    }
    const auto float_step = static_cast<float>(step);
    const float fx = left - static_cast<float>(x0);
    const float fy = top - static_cast<float>(y0);
    const std::int32_t u0 = to_int(float_step - fx * float_step);
    const std::int32_t v0 = to_int(float_step - fy * float_step);

    const DotExtent rows = clip_dot(y0, v0, step, first_drawn_row, frame_height - first_drawn_row + 1);
    const DotExtent columns = clip_dot(x0, u0, step, 0, frame_width);
    std::int64_t v = rows.texel;
    for (std::int64_t row = rows.first; row < rows.end; ++row, v += step) {
        std::uint8_t *pixels = chunkybuf1.get() + row * frame_width;
        const std::uint8_t *texels = dot_image.get() + (v >> 16) * dot_image_size;
        std::int64_t u = columns.texel;
        for (std::int64_t column = columns.first; column < columns.end; ++column, u += step) {
            pixels[column] = add_glow(pixels[column], texels[u >> 16], luminance);
        }
    }
}

namespace plain {

void plot_dots(const float *x, const float *y, const float *radius, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        plot_dot(x[i], y[i], radius[i]);
    }
}

void plot_dots_at_points(std::size_t first) {
    const auto points = static_cast<std::size_t>(points_to_process());
    for (std::size_t i = first; i < points; ++i) {
        plot_point(lwopoints3[i]);
    }
}

} // namespace plain

void draw_dots_overlay() {
    faces_seen = 0;
    triangles_drawn = 0;
    if (draws_fast) {
        fast::plot_dots_at_points();
    } else {
        plain::plot_dots_at_points();
    }
    for (std::int32_t again = equivalent_plots(unread_points - 1); again > 0; --again) {
        plot_point(lwopoints3[static_cast<std::size_t>(points_to_process() - 1)]);
    }
}
