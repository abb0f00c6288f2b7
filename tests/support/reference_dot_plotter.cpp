// SPDX-License-Identifier: MIT
// Walks a dot texel by texel, including those outside the frame.
#include "support/reference_dot_plotter.h"

#include "support/reference_conversion.h"

#include <cmath>
#include <cstddef>

std::vector<std::uint8_t> reference_sprite() {
    std::vector<std::uint8_t> sprite;
    for (int j = 0; j < 64; ++j) {
        for (int i = 0; i < 64; ++i) {
            const int dx = i + 1 - 32;
            const int dy = j + 1 - 32;
            const double distance = std::sqrt(static_cast<double>(dx * dx + dy * dy));
            const double value = std::trunc(255.0 - distance * 255.0 / 31.0);
            sprite.push_back(value > 0.0 ? static_cast<std::uint8_t>(value) : std::uint8_t{0});
        }
    }
    return sprite;
}

void walk_dot(const ReferenceDots &dots, float x, float y, float s) {
    constexpr std::int64_t sprite_end = 64 * 65536;
    const float quotient = 32.0F / s;
    const std::int32_t step = reference_int(static_cast<double>(quotient) * 65536.0);
    if (step <= 0) {
        return;
    }
    const float left = x - s;
    const float top = y - s;
    const std::int32_t x0 = reference_int(left);
    const std::int32_t y0 = reference_int(top);
    const auto float_step = static_cast<float>(step);
    const float lead_x = (left - static_cast<float>(x0)) * float_step;
    const float lead_y = (top - static_cast<float>(y0)) * float_step;
    const std::int32_t u0 = reference_int(float_step - lead_x);
    const std::int32_t v0 = reference_int(float_step - lead_y);

    std::int64_t row = y0;
    for (std::int64_t v = v0; v < sprite_end; v += step, ++row) {
        if (row <= 5 || row >= dots.height - 5) {
            continue;
        }
        std::int64_t column = x0;
        for (std::int64_t u = u0; u < sprite_end; u += step, ++column) {
            if (column < 0 || column >= dots.width) {
                continue;
            }
            const std::int32_t texel = dots.sprite[static_cast<std::size_t>((v >> 16) * 64 + (u >> 16))];
            std::uint8_t &pixel = dots.pixels[static_cast<std::size_t>(row * dots.width + column)];
            const std::int32_t sum = pixel + ((texel * dots.luminance) >> 16);
            pixel = sum <= 254 ? static_cast<std::uint8_t>(sum) : std::uint8_t{255};
        }
    }
}
