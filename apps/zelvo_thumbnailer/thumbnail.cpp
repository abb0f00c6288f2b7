// SPDX-License-Identifier: MIT
// An exact box filter in whole numbers. Light is taken as the square of brightness, which is close to the
// curve of sRGB and needs no table.
#include "thumbnail.h"

#include "core/to_int.h"
#include "display/frame_buffers.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <type_traits>

namespace {

/// The sums of one row of squares, for each column of the frame.
struct Sums {
    std::vector<std::uint32_t> light;
    std::vector<std::uint16_t> covered;
};

/// Adds a row of the frame.
void add_row(Sums &sums, const std::uint8_t *levels) {
    for (std::size_t x = 0; x < sums.light.size(); ++x) {
        sums.light[x] += static_cast<std::uint32_t>(levels[x] * levels[x]);
        sums.covered[x] = static_cast<std::uint16_t>(sums.covered[x] + (levels[x] != 0 ? 1 : 0));
    }
}

template <typename T, typename Count>
std::uint32_t sum_of(const std::vector<T> &values, std::size_t first, Count count) {
    std::uint32_t sum = 0;
    for (std::size_t i = 0; i < count; ++i) {
        sum += values[first + i];
    }
    return sum;
}

/// The level whose light is nearest to the mean of `light` over `covered` pixels.
std::uint8_t level_of(std::uint32_t light, std::uint32_t covered) {
    const float mean = static_cast<float>(light) / static_cast<float>(covered);
    return static_cast<std::uint8_t>(to_int(std::sqrt(mean) + 0.5F));
}

/// The opacity of a pixel by how many of its `pixels` parts are covered.
std::vector<std::uint8_t> opacities(std::size_t pixels) {
    std::vector<std::uint8_t> values(pixels + 1);
    for (std::size_t covered = 0; covered <= pixels; ++covered) {
        values[covered] = static_cast<std::uint8_t>((covered * 255 + pixels / 2) / pixels);
    }
    return values;
}

/// Makes one pixel, of two bytes, from every square. `Square` is the type of a number, or of a constant.
template <typename Square>
Thumbnail reduce_by(Square square) {
    const auto width = static_cast<std::size_t>(frame_width);
    const std::vector<std::uint8_t> opacity = opacities(square * square);
    Thumbnail thumbnail{static_cast<int>(width / square),
                        std::vector<std::uint8_t>(2 * (width / square) * (width / square))};
    std::uint8_t *pixel = thumbnail.bytes.data();
    for (std::size_t row = 0; row < width; row += square) {
        Sums sums{std::vector<std::uint32_t>(width), std::vector<std::uint16_t>(width)};
        for (std::size_t y = row; y < row + square; ++y) {
            add_row(sums, chunkybuf1.get() + y * width);
        }
        for (std::size_t x = 0; x < width; x += square, pixel += 2) {
            const std::uint32_t covered = sum_of(sums.covered, x, square);
            if (covered != 0) {
                pixel[0] = level_of(sum_of(sums.light, x, square), covered);
                pixel[1] = opacity[covered];
            }
        }
    }
    return thumbnail;
}

} // namespace

Thumbnail reduce_frame(int factor) {
    // Constants for the factors of large thumbnails: the compiler then unrolls the sums.
    switch (factor) {
    case 2:
        return reduce_by(std::integral_constant<std::size_t, 2>());
    case 3:
        return reduce_by(std::integral_constant<std::size_t, 3>());
    default:
        return reduce_by(static_cast<std::size_t>(factor));
    }
}

bool is_empty(const Thumbnail &thumbnail) {
    return std::all_of(thumbnail.bytes.begin(), thumbnail.bytes.end(),
                       [](std::uint8_t byte) { return byte == 0; });
}
