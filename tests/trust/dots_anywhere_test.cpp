// SPDX-License-Identifier: MIT
// Dots of any size and place draw what a walk over all their pixels would draw, and nothing outside the
// frame.
#include "core/to_int.h"
#include "display/frame_buffers.h"
#include "raster/dots.h"
#include "support/model_builder.h"

#include <gtest/gtest.h>
#include <vector>

namespace {

constexpr int width = 40;
constexpr int height = 30;

/// Where every pixel of a dot is visited in turn, inside the frame or not; for dots of up to some thousand
/// pixels a side.
std::vector<std::uint8_t> walk_dot(float x, float y, float s) {
    std::vector<std::uint8_t> pixels(std::size_t{width} * height, 10);
    const std::int32_t step = to_int(dot_image_radius / s * 65536.0F);
    const std::int32_t x0 = to_int(x - s);
    const std::int32_t y0 = to_int(y - s);
    const auto float_step = static_cast<float>(step);
    const std::int64_t u0 = to_int(float_step - (x - s - static_cast<float>(x0)) * float_step);
    const std::int64_t v0 = to_int(float_step - (y - s - static_cast<float>(y0)) * float_step);
    constexpr std::int64_t end = std::int64_t{dot_image_size} << 16;
    std::int64_t row = y0;
    for (std::int64_t v = v0; v < end; v += step, ++row) {
        std::int64_t column = x0;
        for (std::int64_t u = u0; u < end; u += step, ++column) {
            if (row > 5 && row < height - 5 && column >= 0 && column < width) {
                const std::uint8_t texel =
                    dot_image[static_cast<std::size_t>((v >> 16) * dot_image_size + (u >> 16))];
                std::uint8_t &pixel = pixels[static_cast<std::size_t>(row * width + column)];
                const int sum = pixel + (texel * viewer.dot_lum >> 16);
                pixel = static_cast<std::uint8_t>(sum <= 254 ? sum : 255);
            }
        }
    }
    return pixels;
}

std::vector<std::uint8_t> plotted(float x, float y, float s) {
    std::fill_n(chunkybuf1.get(), frame_pixels(), std::uint8_t{10});
    plot_dot(x, y, s);
    return {chunkybuf1.get(), chunkybuf1.get() + frame_pixels()};
}

class DotsAnywhere : public testing::Test {
protected:
    void SetUp() override {
        reset_program_state();
        set_frame(width, height);
        build_dot_image();
    }
    void TearDown() override { reset_program_state(); }
};

TEST_F(DotsAnywhere, DrawWhatAWalkOverAllPixelsDraws) {
    for (const float s : {0.3F, 0.49F, 0.5F, 0.51F, 1.0F, 1.7F, 3.27F, 8.0F, 40.0F, 300.0F}) {
        for (const float x : {-310.2F, -9.0F, -0.6F, 0.0F, 0.4F, 7.3F, 20.5F, 39.9F, 41.0F, 330.7F}) {
            for (const float y : {-305.0F, -2.2F, 5.9F, 6.0F, 14.75F, 24.0F, 29.5F, 310.1F}) {
                EXPECT_EQ(plotted(x, y, s), walk_dot(x, y, s)) << x << ' ' << y << ' ' << s;
            }
        }
    }
}

TEST_F(DotsAnywhere, FarOutsideDrawNothing) {
    const std::vector<std::uint8_t> untouched(frame_pixels(), 10);
    for (const float far : {4e9F, -4e9F, 1e30F, -1e30F}) {
        EXPECT_EQ(plotted(far, 15.0F, 2.0F), untouched);
        EXPECT_EQ(plotted(15.0F, far, 2.0F), untouched);
        EXPECT_EQ(plotted(far, far, 0.01F), untouched);
    }
}

} // namespace
