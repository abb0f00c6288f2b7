// SPDX-License-Identifier: MIT
// Tests of the dots effect, compared with its formulas dot by dot.
#include "pipeline/dots_effect.h"

#include "pipeline/sine_table.h"
#include "raster/dots.h"
#include "support/frame_copies.h"
#include "support/model_builder.h"
#include "support/reference_conversion.h"
#include "support/reference_dot_plotter.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

class DotsEffect : public testing::Test {
protected:
    void SetUp() override {
        reset_program_state();
        set_frame(320, 256);
        build_sine_table();
        build_dot_image();
    }
};

/// The sine of an angle in 4096ths of a turn, of which only the low 12 bits count.
float table_sine(std::int64_t units) {
    const auto index = static_cast<float>(units & 4095);
    const float fraction = index * (1.0F / 4096.0F);
    return static_cast<float>(std::sin(static_cast<double>(fraction) * 6.283185307179586));
}

struct Point {
    double x;
    double y;
    double z;
};

/// Turned about z by c, then about x by a, then about y by b, with sines and cosines in single precision.
Point turned(const Point &p, double a, double b, double c) {
    const double sin_a = static_cast<float>(std::sin(a));
    const double cos_a = static_cast<float>(std::cos(a));
    const double sin_b = static_cast<float>(std::sin(b));
    const double cos_b = static_cast<float>(std::cos(b));
    const double sin_c = static_cast<float>(std::sin(c));
    const double cos_c = static_cast<float>(std::cos(c));
    const double x1 = p.x * cos_c - p.y * sin_c;
    const double y1 = p.x * sin_c + p.y * cos_c;
    const double y2 = p.z * sin_a + y1 * cos_a;
    const double z2 = p.z * cos_a - y1 * sin_a;
    return {x1 * cos_b - z2 * sin_b, y2, x1 * sin_b + z2 * cos_b};
}

/// The effect's frame for the current state, and its number of dots.
std::vector<std::uint8_t> reference_effect(int &dots_plotted) {
    std::vector<std::uint8_t> frame(frame_pixels());
    const std::vector<std::uint8_t> sprite = reference_sprite();
    const ReferenceDots dots{frame_width, frame_height, frame, sprite,
                             viewer.clear_style == 0 ? viewer.dot_lum : viewer.dot_lum_in_blur};
    const double spin = viewer.spin_angle;
    dots_plotted = 0;
    for (double t = -40.0; t < 40.0; t += 0.035) {
        const std::int64_t a = reference_int(t * 2048.0);
        const std::int64_t e = reference_int(t * 2048.0 / 80.0);
        const std::int64_t b = reference_int(t * 2048.0 / 80.0 * spin * 0.0625);
        const float x = 90.0F * table_sine(a) * table_sine(e + 1024);
        const float y = 90.0F * table_sine(a + 1024) * table_sine(e + 1024);
        const float z = 90.0F * table_sine(b);
        const Point p = turned({x, y, z}, -static_cast<double>(viewer.tilt_y) / 80.0,
                               static_cast<double>(viewer.tilt_x) / 80.0, spin * 0.004);
        const double q = p.z + 250.0;
        const double screen_x = 250.0 * p.x / q / 320.0 * frame_width + frame_width * 0.5;
        const double screen_y = 250.0 * p.y / q * 0.00390625 * frame_height + frame_height * 0.5;
        walk_dot(dots, static_cast<float>(screen_x), static_cast<float>(screen_y),
                 static_cast<float>(2.0 * (250.0 / q)));
        ++dots_plotted;
    }
    return frame;
}

} // namespace

TEST_F(DotsEffect, Plots2286Dots) {
    faces_seen = 99;
    triangles_drawn = 7;
    draw_dots_effect();
    EXPECT_EQ(faces_seen, 2286);
    EXPECT_EQ(triangles_drawn, 7) << "no triangle is drawn, and none counted";
}

TEST_F(DotsEffect, MatchesItsFormulasForEveryDot) {
    struct Case {
        double spin;
        std::int32_t tilt_x;
        std::int32_t tilt_y;
    };
    for (const auto &[spin, tilt_x, tilt_y] :
         {Case{0, 0, 0}, {16, 0, 0}, {0.1, 13, -7}, {-37.3, -250, 411}, {4000.7, 80, 80}, {1e7, -3, 5}}) {
        viewer.spin_angle = spin;
        viewer.tilt_x = tilt_x;
        viewer.tilt_y = tilt_y;
        blank_frame();
        draw_dots_effect();
        int dots_plotted = 0;
        const std::vector<std::uint8_t> expected = reference_effect(dots_plotted);
        EXPECT_EQ(dots_plotted, 2286);
        EXPECT_TRUE(frame_bytes() == expected) << "spin " << spin << ", tilt " << tilt_x << ", " << tilt_y;
    }
}

TEST_F(DotsEffect, FillsFramesOfAnySize) {
    for (const auto &[width, height] : {std::pair{100, 75}, {640, 480}, {333, 217}}) {
        set_frame(width, height);
        build_dot_image();
        viewer.spin_angle = 3.75;
        viewer.clear_style = 2;
        draw_dots_effect();
        int dots_plotted = 0;
        EXPECT_TRUE(frame_bytes() == reference_effect(dots_plotted)) << width << " x " << height;
        EXPECT_FALSE(lit_rows().empty());
    }
}

TEST_F(DotsEffect, DoesNotDependOnTheObject) {
    draw_dots_effect();
    const std::vector<std::uint8_t> without_object = frame_bytes();
    blank_frame();
    set_model({{1, 2, 3}, {4, 5, 6}, {7, 8, 10}}, {3, 0, 1, 2, 0});
    draw_dots_effect();
    EXPECT_EQ(frame_bytes(), without_object);
}

TEST_F(DotsEffect, SpinThatIsNaNDrawsInsideTheFrame) {
    viewer.spin_angle = std::nan("");
    draw_dots_effect();
    EXPECT_EQ(faces_seen, 2286);
    for (const int row : {0, 5, 251, 255}) {
        EXPECT_EQ(lit_columns(row), std::vector<int>{}) << row;
    }
}
