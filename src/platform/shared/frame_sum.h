// SPDX-License-Identifier: MIT
// One number for all frames of a run, by which two runs are compared.
#pragma once

#include <cstdint>
#include <span>

namespace host {

/// The FNV-1a hash, in 64 bits, of the frames that were added: of each the width and the height, four bytes
/// each with the lowest first, and the pixels.
class FrameSum {
public:
    void add(std::span<const std::uint8_t> pixels, int width, int height);
    std::uint64_t value() const { return hash; }

private:
    void add_byte(std::uint8_t byte) { hash = (hash ^ byte) * 0x100000001B3; }
    void add_number(int number);

    std::uint64_t hash = 0xCBF29CE484222325;
};

} // namespace host
