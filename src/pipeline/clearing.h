// SPDX-License-Identifier: MIT
// How a frame begins: cleared, or made from the previous frame, so that moving objects have trails.
#pragma once

#include <cstddef>
#include <cstdint>

/// Begins the frame in `chunkybuf1` by `clear_style`: 0 clears it, 1 fades the previous frame, 2 blurs that,
/// 3 blurs it and moves it two rows upwards; any other value leaves `chunkybuf1` as it is. The previous frame
/// is in `chunkybuf2`.
void clear_frame();

/// Clears `zbuf`.
void clear_zbuffer();

/// Clears `zbuf` before a face loop, unless the loop will begin with cleared depths of its own.
void clear_depths_for_faces();

/// Writes zeros in whole blocks of 16 bytes. If the count is no multiple of 16, the rest stays as it is; if
/// it is below 16 or negative, nothing is written.
void zero_blocks(void *address, std::int32_t byte_count);

/// Writes all rows but the last of a frame: each pixel is that of `source` less a sixteenth and one, at least
/// 0.
void fade_frame(const std::uint8_t *source, std::uint8_t *destination);

/// Writes height - 4 rows of a frame, each pixel the mean of four neighbours less a sixteenth and one, at
/// least 0. The first row is computed around the row `source_row` and written to `destination_row`, and the
/// next ones follow. Neighbours are found by address, so the left neighbour of a row's first pixel is the
/// last pixel of the row above.
void blur_frame(const std::uint8_t *source, int source_row, std::uint8_t *destination, int destination_row);

/// Both forms of a fade and a blur of `count` consecutive pixels. A pixel is made from the one in `source`,
/// or from the neighbours of the one in `centre`. The fast forms read and write the same bytes as the plain
/// ones, but the two frames must not overlap.
namespace plain {
void fade_pixels(const std::uint8_t *source, std::uint8_t *destination, std::size_t count);
void blur_pixels(const std::uint8_t *centre, std::uint8_t *destination, std::size_t count);
} // namespace plain
#if ZELVO_SIMD
namespace fast {
void fade_pixels(const std::uint8_t *source, std::uint8_t *destination, std::size_t count);
void blur_pixels(const std::uint8_t *centre, std::uint8_t *destination, std::size_t count);
} // namespace fast
#endif
