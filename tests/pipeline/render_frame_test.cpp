// SPDX-License-Identifier: MIT
// Tests of the mode table and of the stages that each mode runs.
#include "pipeline/render_frame.h"

#include "object/model.h"
#include "pipeline/preparation.h"
#include "raster/texture_map.h"
#include "support/frame_copies.h"
#include "support/model_builder.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::uint16_t stale_depth = 0x0123;
constexpr float stale = -777.0F;

/// Shows a solid that faces the viewer, and an isolated point to its right, on a screen of 160 x 120.
class RenderFrame : public testing::Test {
protected:
    void SetUp() override {
        reset_program_state();
        set_frame(160, 120);
        std::fill_n(envmap.get(), envmap_bytes, std::uint8_t{90});
        // A pyramid whose top points at the viewer.
        set_model({{-60, -60, 20},
                   {60, -60, 20},
                   {60, 60, 20},
                   {-60, 60, 20},
                   {0, 0, -40},
                   {110, 0, 20},
                   {-110, 0, 20}},
                  {3, 1, 0, 4, 0, 3, 2, 1, 4, 0, 3, 3, 2, 4, 0, 3, 0, 3, 4, 0});
        prepare_object();
    }

    static void render(std::int32_t mode) {
        viewer.obj_style = mode;
        render_frame();
    }

    static void make_stale(HeapArray<Vec3> &array) {
        std::fill_n(array.get(), point_count(), Vec3{stale, stale, stale});
    }
    static bool is_stale(const HeapArray<Vec3> &array) { return array[0].x == stale && array[4].z == stale; }

    static std::vector<float> floats(const HeapArray<Vec3> &array) {
        std::vector<float> list;
        for (std::int32_t i = 0; i < point_count(); ++i) {
            const Vec3 &v = array[static_cast<std::size_t>(i)];
            list.insert(list.end(), {v.x, v.y, v.z});
        }
        return list;
    }

    static std::vector<bool> silhouette() {
        std::vector<bool> covered;
        for (std::size_t i = 0; i < frame_pixels(); ++i) {
            covered.push_back(chunkybuf1[i] != 0);
        }
        return covered;
    }

    /// The brightness one pixel below the isolated point, where its dot is drawn.
    static int lone_dot() {
        const Vec3 &point = lwopoints3[5];
        return pixel(static_cast<int>(point.x), static_cast<int>(point.y) + 1);
    }
};

} // namespace

TEST_F(RenderFrame, ModeOutsideTheTableLeavesTheFrameUntouched) {
    std::fill_n(chunkybuf1.get(), frame_pixels(), std::uint8_t{33});
    std::fill_n(zbuf.get(), frame_pixels(), stale_depth);
    viewer.dots = 1;
    for (const std::int32_t mode : {7, -1, 1000, std::numeric_limits<std::int32_t>::min()}) {
        render(mode);
        EXPECT_EQ(frame_bytes(), Bytes(frame_pixels(), 33)) << mode;
        EXPECT_EQ(frame_depths(), std::vector<std::uint16_t>(frame_pixels(), stale_depth)) << mode;
    }
}

TEST_F(RenderFrame, EveryModeClearsTheFrameAndDraws) {
    for (std::int32_t mode = 0; mode <= 6; ++mode) {
        std::fill_n(chunkybuf1.get(), frame_pixels(), std::uint8_t{33});
        render(mode);
        EXPECT_EQ(pixel(2, 2), 0) << mode;
        EXPECT_FALSE(lit_rows().empty()) << mode;
    }
}

TEST_F(RenderFrame, OnlySolidModesClearTheDepths) {
    for (std::int32_t mode = 0; mode <= 6; ++mode) {
        std::fill_n(zbuf.get(), frame_pixels(), stale_depth);
        render(mode);
        EXPECT_EQ(depth(2, 2), mode == 0 || mode == 6 ? stale_depth : 0) << mode;
    }
}

TEST_F(RenderFrame, EveryModeButTheEffectProjectsTheObject) {
    for (std::int32_t mode = 0; mode <= 6; ++mode) {
        make_stale(lwopoints3);
        render(mode);
        EXPECT_EQ(is_stale(lwopoints3), mode == 0) << mode;
    }
}

TEST_F(RenderFrame, OnlyEnvmapAndGouraudTurnTheNormals) {
    for (std::int32_t mode = 0; mode <= 6; ++mode) {
        make_stale(lwonormals3);
        render(mode);
        EXPECT_EQ(is_stale(lwonormals3), mode != 1 && mode != 4) << mode;
    }
}

TEST_F(RenderFrame, OnlyGouraudUsesTheVertexColours) {
    for (std::int32_t mode = 0; mode <= 6; ++mode) {
        std::fill_n(lwofis.get(), point_count(), 55.0F);
        render(mode);
        EXPECT_EQ(lwofis[5], mode == 4 ? -1.0F : 55.0F) << mode << ": the point of no polygon";
        EXPECT_EQ(lwofis[0] == 55.0F, mode != 4) << mode;
    }
}

TEST_F(RenderFrame, EachModeHasItsOwnColours) {
    // Modes 1 and 2 show the constant map. In mode 5 the top of the pyramid is the nearest and brightest.
    const int x = 80;
    const int y = 60;
    render(1);
    EXPECT_EQ(pixel(x, y), 90);
    render(2);
    EXPECT_EQ(pixel(x, y), 90);
    render(5);
    EXPECT_EQ(pixel(x, y), depth(x, y) / 256);
    EXPECT_GT(pixel(x, y), 140);
    render(3);
    const std::uint8_t left = pixel(x - 20, y);
    const std::uint8_t right = pixel(x + 20, y);
    EXPECT_NE(left, right);
    EXPECT_EQ(pixel(x - 24, y), left) << "a flat face has one colour";
    render(4);
    EXPECT_NE(pixel(x - 24, y), pixel(x - 8, y)) << "an interpolated one has many";
}

TEST_F(RenderFrame, DotsModeDrawsTheDotsWithoutTheFlag) {
    viewer.dots = 0;
    render(6);
    EXPECT_GT(lone_dot(), 0);
    const Bytes without_flag = frame_bytes();
    viewer.dots = 1;
    render(6);
    EXPECT_EQ(frame_bytes(), without_flag);
    EXPECT_EQ(faces_seen, 0);
}

TEST_F(RenderFrame, SolidModesDrawTheDotsWithTheFlagOnly) {
    for (std::int32_t mode = 1; mode <= 5; ++mode) {
        viewer.dots = 0;
        render(mode);
        EXPECT_EQ(lone_dot(), 0) << mode;
        EXPECT_EQ(faces_seen, 4) << mode;
        EXPECT_EQ(triangles_drawn, 4) << mode;
        viewer.dots = 2;
        render(mode);
        EXPECT_GT(lone_dot(), 0) << mode;
        EXPECT_EQ(faces_seen, 0) << mode << ": the overlay resets the count";
    }
}

TEST_F(RenderFrame, EffectIgnoresTheDotsFlag) {
    viewer.dots = 0;
    render(0);
    const Bytes without_flag = frame_bytes();
    viewer.dots = 1;
    render(0);
    EXPECT_EQ(frame_bytes(), without_flag);
    EXPECT_EQ(faces_seen, 2286);
}

TEST_F(RenderFrame, LightsourcedTurnsTheLightInsteadOfTheObject) {
    render(3);
    const std::vector<bool> still = silhouette();
    const std::vector<float> points = floats(lwopoints3);
    const Bytes before = frame_bytes();

    viewer.lightsource_rotating = 1;
    viewer.tilt_x = 70;
    viewer.tilt_y = -30;
    viewer.spin_angle = 100;
    render(3);
    EXPECT_EQ(silhouette(), still);
    EXPECT_EQ(floats(lwopoints3), points);
    EXPECT_NE(frame_bytes(), before) << "the colours change";

    viewer.lightsource_rotating = 0;
    render(3);
    EXPECT_NE(floats(lwopoints3), points) << "the object jumps to the angles of the mouse and the spin";
}

TEST_F(RenderFrame, GouraudTurnsTheLightInsteadOfTheObjectAndLightsEveryPointAnew) {
    render(4);
    const std::vector<bool> still = silhouette();
    const std::vector<float> points = floats(lwopoints3);
    const std::vector<float> normals = floats(lwonormals3);
    const Bytes before = frame_bytes();
    const float colour = lwofis[0];

    viewer.lightsource_rotating = 1;
    viewer.tilt_x = 70;
    viewer.tilt_y = -30;
    render(4);
    EXPECT_EQ(silhouette(), still);
    EXPECT_EQ(floats(lwopoints3), points);
    EXPECT_EQ(floats(lwonormals3), normals);
    EXPECT_NE(frame_bytes(), before);
    EXPECT_NE(lwofis[0], colour);
}

TEST_F(RenderFrame, LightStaysFixedToTheScreenOtherwise) {
    viewer.tilt_x = 70;
    for (std::int32_t mode = 0; mode <= 6; ++mode) {
        viewer.lightsource_rotating = mode == 3 || mode == 4 ? 0 : 1;
        render(mode);
        EXPECT_EQ(viewer.light.x, -1.0F) << mode;
        EXPECT_EQ(viewer.light.z, 3.0F) << mode;
    }
}

TEST_F(RenderFrame, LightsourceFlagTurnsTheObjectInOtherModes) {
    viewer.lightsource_rotating = 1;
    for (const std::int32_t mode : {1, 2, 5, 6}) {
        viewer.tilt_x = 0;
        render(mode);
        const std::vector<float> points = floats(lwopoints3);
        viewer.tilt_x = 70;
        render(mode);
        EXPECT_NE(floats(lwopoints3), points) << mode;
    }
}

TEST_F(RenderFrame, EveryModeFadesIntoThePreviousFrame) {
    viewer.clear_style = 1;
    for (std::int32_t mode = 0; mode <= 6; ++mode) {
        blank_frame();
        std::fill_n(chunkybuf2.get(), frame_pixels(), std::uint8_t{200});
        chunkybuf1[pixel_index(3, 119)] = 66;
        render(mode);
        EXPECT_EQ(pixel(2, 2), 187) << mode;
        EXPECT_EQ(pixel(3, 119), 66) << mode << ": the last row is never written";
    }
}
