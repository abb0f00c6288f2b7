// SPDX-License-Identifier: MIT
// Clears, fades or blurs the frame, and clears the depth buffer.
#include "pipeline/clearing.h"

#include "core/forms.h"
#include "display/frame_buffers.h"
#include "main_68k/viewer_state.h"
#include "raster/face_loops.h"

#include <algorithm>
#include <cstring>

namespace {

/// Rows at the top and at the bottom that a blur does not write, so that every neighbour is inside the frame.
constexpr int blur_margin = 2;

std::uint8_t clamp_at_zero(int value) {
    return static_cast<std::uint8_t>(std::max(value, 0));
}

/// Whether two frames share no byte. Their addresses are compared as numbers, because only pointers into the
/// same array may be compared as pointers.
bool is_apart(const std::uint8_t *a, const std::uint8_t *b) {
    const auto first = reinterpret_cast<std::uintptr_t>(a);
    const auto second = reinterpret_cast<std::uintptr_t>(b);
    return std::max(first, second) - std::min(first, second) >= frame_pixels();
}

} // namespace

void zero_blocks(void *address, std::int32_t byte_count) {
    constexpr int block_shift = 4;
    const std::int32_t blocks = byte_count >> block_shift;
    if (blocks > 0) {
        std::memset(address, 0, static_cast<std::size_t>(blocks) << block_shift);
    }
}

namespace plain {

void fade_pixels(const std::uint8_t *source, std::uint8_t *destination, std::size_t count) {
    for (std::size_t p = 0; p < count; ++p) {
        const int value = source[p];
        destination[p] = clamp_at_zero(value - (value >> 4) - 1);
    }
}

void blur_pixels(const std::uint8_t *centre, std::uint8_t *destination, std::size_t count) {
    const std::ptrdiff_t width = frame_width;
    for (std::size_t p = 0; p < count; ++p) {
        const std::uint8_t *pixel = centre + p;
        const int sum = pixel[-1] + pixel[1] + pixel[-width] + pixel[width];
        destination[p] = clamp_at_zero((sum >> 2) - (sum >> 6) - 1);
    }
}

} // namespace plain

void fade_frame(const std::uint8_t *source, std::uint8_t *destination) {
    if (frame_height <= 1) {
        return;
    }
    const std::size_t pixels = frame_pixels() - static_cast<std::size_t>(frame_width);
    if (draws_fast && is_apart(source, destination)) {
        fast::fade_pixels(source, destination, pixels);
    } else {
        plain::fade_pixels(source, destination, pixels);
    }
}

void blur_frame(const std::uint8_t *source, int source_row, std::uint8_t *destination, int destination_row) {
    const std::ptrdiff_t width = frame_width;
    const std::ptrdiff_t rows = frame_height - 2 * blur_margin;
    if (rows <= 0) {
        return;
    }
    const std::uint8_t *centre = source + source_row * width;
    std::uint8_t *first = destination + destination_row * width;
    const auto pixels = static_cast<std::size_t>(rows * width);
    if (draws_fast && is_apart(source, destination)) {
        fast::blur_pixels(centre, first, pixels);
    } else {
        plain::blur_pixels(centre, first, pixels);
    }
}

void clear_frame() {
    std::uint8_t *current = chunkybuf1.get();
    const std::uint8_t *previous = chunkybuf2.get();
    switch (viewer.clear_style) {
    case 0:
        zero_blocks(current, static_cast<std::int32_t>(frame_pixels()));
        break;
    case 1:
        fade_frame(previous, current);
        break;
    case 2:
        blur_frame(previous, blur_margin, current, blur_margin);
        break;
    case 3:
        // Read a row lower and written a row higher, the picture rises by two rows per frame while it blurs.
        blur_frame(previous, blur_margin + 1, current, blur_margin - 1);
        break;
    default:
        break;
    }
}

void clear_zbuffer() {
    zero_blocks(zbuf.get(), static_cast<std::int32_t>(frame_pixels() * sizeof(std::uint16_t)));
}

void clear_depths_for_faces() {
    if (!face_loops_clear_depths()) {
        clear_zbuffer();
    }
}
