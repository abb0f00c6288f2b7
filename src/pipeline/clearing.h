// SPDX-License-Identifier: MIT
// How a frame begins: cleared, or made from the previous frame, which leaves trails.
#pragma once

#include <cstddef>
#include <cstdint>

/// Clears, fades or blurs `chunkybuf1` by `clear_style`: 0 clear, 1 fade, 2 blur, 3 blur two rows upwards;
/// any other value leaves it alone. Styles 1 to 3 read the previous frame in `chunkybuf2`.
void clear_frame();

/// Clears `zbuf`.
void clear_zbuffer();

/// Writes zeros in whole blocks of 16 bytes; the remainder of a count that is no multiple of 16 stays as it
/// is, and a count below 16, or a negative one, writes nothing.
void zero_blocks(void *address, std::int32_t byte_count);

/// Fades `source` by a sixteenth plus one into `destination`, both whole frames, for all rows but the last,
/// which is not written.
void fade_frame(const std::uint8_t *source, std::uint8_t *destination);

/// Writes rows 2 to height - 3 of a frame: each pixel is the mean of its four neighbours less a sixteenth and
/// one. Neighbours are taken by address, so a row's ends see the rows above and below. `source_row` of the
/// source is what row 2 is computed around, and `destination_row` is where it is written; the rows that
/// follow likewise.
void blur_frame(const std::uint8_t *source, int source_row, std::uint8_t *destination, int destination_row);

/// Both forms of the runs of pixels that a fade and a blur consist of: `count` pixels from `source`, or
/// around those from `centre` on. The fast ones read and write no other bytes than the plain ones do, but
/// they take the two frames not to overlap.
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
