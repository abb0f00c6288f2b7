// SPDX-License-Identifier: MIT
// The bands of the current frame, and the memory that all bands and frames share.
#include "raster/simd/bands.h"

#include "display/frame_buffers.h"
#include "raster/face_loops.h"
#include "raster/simd/triangle_store.h"
#include "raster/simd/vector_size.h"

#include <algorithm>
#include <array>

namespace fast {

// At 1280 x 720 bands took as long as none, or a few percent longer (docs/speed.md, "Bands").
BandSizes band_sizes{std::size_t{1} << 20U, most_band_pixels};

TriangleStore triangle_store;

namespace {

/// Depths of the band that is being drawn, with a vector to spare.
alignas(vector_bytes) std::array<std::uint16_t, most_band_pixels + vector_lanes> band_depths;

RowRange drawn_rows() {
    return {first_drawn_row, frame_height - first_drawn_row};
}

std::ptrdiff_t start_of(std::int32_t row) {
    return std::ptrdiff_t{row} * frame_width;
}

std::size_t pixels_of(const RowRange &rows) {
    return static_cast<std::size_t>(start_of(rows.last + 1 - rows.first));
}

} // namespace

DrawTarget whole_frame() {
    const RowRange rows = drawn_rows();
    // A frame may have so few rows that none is drawn.
    const std::ptrdiff_t start = start_of(std::min(rows.first, frame_height));
    return {rows, chunkybuf1.get() + start, zbuf.get() + start};
}

bool draws_in_bands() {
    return frame_pixels() > band_sizes.frame_pixels && frame_width >= least_width &&
           static_cast<std::size_t>(frame_width) <= most_band_pixels;
}

DrawTarget band_from(std::int32_t row) {
    const auto width = static_cast<std::size_t>(frame_width);
    const auto rows = static_cast<std::int32_t>(std::max<std::size_t>(band_sizes.band_pixels / width, 1));
    return {{row, std::min(row + rows - 1, drawn_rows().last)},
            chunkybuf1.get() + start_of(row),
            band_depths.data()};
}

void clear_depths(const DrawTarget &band) {
    std::fill_n(band.depths, pixels_of(band.rows), std::uint16_t{0});
}

void load_depths(const DrawTarget &band) {
    std::copy_n(zbuf.get() + start_of(band.rows.first), pixels_of(band.rows), band.depths);
}

void keep_depths(const DrawTarget &band) {
    std::copy_n(band.depths, pixels_of(band.rows), zbuf.get() + start_of(band.rows.first));
}

} // namespace fast
