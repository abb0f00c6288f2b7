// SPDX-License-Identifier: MIT
// Adds byte by byte, so that the number is the same on every processor.
#include "platform/shared/frame_sum.h"

namespace host {

void FrameSum::add_number(int number) {
    for (int shift = 0; shift < 32; shift += 8) {
        add_byte(static_cast<std::uint8_t>(static_cast<std::uint32_t>(number) >> shift));
    }
}

void FrameSum::add(std::span<const std::uint8_t> pixels, int width, int height) {
    add_number(width);
    add_number(height);
    for (const std::uint8_t pixel : pixels) {
        add_byte(pixel);
    }
}

} // namespace host
