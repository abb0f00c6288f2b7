// SPDX-License-Identifier: MIT
// Draws triangles one at a time and counts the pixels that they cover.
#include "span_lengths.h"

#include "display/frame_buffers.h"
#include "object/model.h"
#include "peers/peer.h"
#include "pipeline/clearing.h"
#include "raster/face_loops.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

namespace {

using Indices = std::array<std::uint16_t, 3>;

/// Counts the rows and the pixels that a triangle has drawn into a cleared depth buffer, and clears them
/// again.
void count_spans(const Indices &triangle, double &spans, double &pixels) {
    const auto [low, high] =
        std::minmax({lwopoints3[triangle[0]].y, lwopoints3[triangle[1]].y, lwopoints3[triangle[2]].y});
    const int last_row = std::min(static_cast<int>(std::ceil(high)), frame_height - 1);
    for (int row = std::max(static_cast<int>(low), 0); row <= last_row; ++row) {
        std::uint16_t *depths = zbuf.get() + static_cast<std::ptrdiff_t>(row) * frame_width;
        const auto empty = std::count(depths, depths + frame_width, 0);
        std::fill_n(depths, frame_width, std::uint16_t{0});
        spans += empty < frame_width ? 1 : 0;
        pixels += static_cast<double>(frame_width - empty);
    }
}

} // namespace

double mean_span_length() {
    std::vector<Indices> triangles;
    for_each_visible_triangle([](const Vec3 &, const Vec3 &, const Vec3 &) {},
                              [&triangles](std::uint16_t a, std::uint16_t b, std::uint16_t c) {
                                  triangles.push_back({a, b, c});
                              });
    auto list = allocate_array<std::uint16_t>(6);
    std::swap(polygon_chunk, list);
    const std::int32_t list_bytes = std::exchange(polygon_chunk_bytes, 10);
    clear_zbuffer();
    double spans = 0.0;
    double pixels = 0.0;
    for (const Indices &triangle : triangles) {
        std::copy_n(std::array<std::uint16_t, 5>{3, triangle[0], triangle[1], triangle[2], 1}.begin(), 5,
                    polygon_chunk.get());
        plain::face_loop_zlight();
        count_spans(triangle, spans, pixels);
    }
    std::swap(polygon_chunk, list);
    polygon_chunk_bytes = list_bytes;
    return spans > 0.0 ? pixels / spans : 0.0;
}
