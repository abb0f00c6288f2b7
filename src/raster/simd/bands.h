// SPDX-License-Identifier: MIT
// Bands: ranges of rows that large frames are drawn in, one after another. A band's pixels and depths stay in
// the second-level cache while its triangles are drawn, and all bands share one small buffer of depths.
#pragma once

#include <cstddef>
#include <cstdint>

namespace fast {

/// Rows of the frame, from the first to the last, both included; none if the last is before the first.
struct RowRange {
    std::int32_t first;
    std::int32_t last;
};

/// Where triangles are drawn: rows of the frame, and the pixel and the depth at the start of the first of
/// them.
struct DrawTarget {
    RowRange rows;
    std::uint8_t *pixels;
    std::uint16_t *depths;
};

/// All rows of the current frame in which triangles are drawn, in `chunkybuf1` and `zbuf`.
DrawTarget whole_frame();

/// The pixels of the largest band: with their depths they take 192 KiB, which fits second-level caches from
/// 256 KiB on. Bands of half and a quarter as many pixels took up to 10 and 20 percent longer (docs/speed.md,
/// "Bands").
constexpr std::size_t most_band_pixels = std::size_t{1} << 16U;

/// When a frame is drawn in bands, and how large they are. Set by tests and measurements.
struct BandSizes {
    /// Frames of more pixels are drawn in bands.
    std::size_t frame_pixels;
    /// About as many pixels are in a band, but at least a row; at most `most_band_pixels`.
    std::size_t band_pixels;
};
extern BandSizes band_sizes;

/// The band that begins in this row, with the shared depths.
DrawTarget band_from(std::int32_t row);

/// Clears a band's depths.
void clear_depths(const DrawTarget &band);

/// Exchange a band's depths with its rows of `zbuf`.
void load_depths(const DrawTarget &band);
void keep_depths(const DrawTarget &band);

} // namespace fast
