// SPDX-License-Identifier: MIT
// Dots: round glows that are added to the frame, one at a time or one at every point of the object.
#pragma once

#include "core/heap_array.h"

#include <cstddef>
#include <cstdint>

/// Exponent of the dot sprite's size: the sprite is 2^(k + 1) pixels square.
constexpr int dot_size_shift = 5;

/// Width and height of the dot sprite, and the radius of its dot, in texels.
constexpr int dot_image_size = 2 << dot_size_shift;
constexpr int dot_image_radius = 1 << dot_size_shift;

/// The dot sprite: a cone of brightness with 255 at texel (R - 1, R - 1), where R is its radius. Allocated at
/// start-up, filled by prepare_object.
extern HeapArray<std::uint8_t> dot_image;

/// Allocates `dot_image`, or ends the program.
void allocate_dot_image();

/// Releases `dot_image`.
void release_dot_image();

/// Fills `dot_image`: 255 at its peak, falling linearly to 0 at a distance of R - 1 texels. The peak is one
/// texel above and left of the square's centre, so the last row and the last column stay 0.
void build_dot_image();

/// Adds a dot of radius `s` (pixels) at (x, y) to `chunkybuf1`, saturating at 255, as bright as dot_luminance
/// says. It is clipped at the frame's sides and to its drawn rows. A radius that gives no positive step
/// through the sprite draws nothing.
void plot_dot(float x, float y, float s);

/// Brightness of a dot: `dot_lum` on cleared frames and `dot_lum_in_blur` otherwise. At 65536 a dot adds the
/// sprite's texels as they are.
std::int32_t dot_luminance();

/// Plots a dot at every projected point, larger where it is nearer. Sets `faces_seen` and `triangles_drawn`
/// to 0.
void draw_dots_overlay();

/// Both forms of plotting `count` dots, and of plotting the overlay's dots. The plain form of the latter can
/// start at the point `first`. The fast plot_dots may read its arrays up to 15 entries past the last dot.
namespace plain {
void plot_dots(const float *x, const float *y, const float *radius, std::size_t count);
void plot_dots_at_points(std::size_t first = 0);
} // namespace plain
#if ZELVO_SIMD
namespace fast {
void plot_dots(const float *x, const float *y, const float *radius, std::size_t count);
void plot_dots_at_points();
} // namespace fast
#endif
