// SPDX-License-Identifier: MIT
// Tests of the face loops: culling, fans, counters, and what each mode passes to its filler.
#include "raster/face_loops.h"

#include "object/model.h"
#include "raster/texture_map.h"
#include "support/frame_copies.h"
#include "support/model_builder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <set>

namespace {

/// A face's first three corners.
using LitFace = std::array<Vec3, 3>;

bool same(const Vec3 &a, const Vec3 &b) {
    return a.x == b.x && a.y == b.y && a.z == b.z;
}

bool same(const LitFace &a, const LitFace &b) {
    return std::equal(a.begin(), a.end(), b.begin(), [](const Vec3 &p, const Vec3 &q) { return same(p, q); });
}

/// The different faces and all the points that the lighting stubs were called with, in order.
std::vector<LitFace> lit_faces;
std::vector<std::uint32_t> lit_points;

/// Replaces the lighting: the n-th different face gets the colour 100 + 10 n.
void numbered_lights(const FaceCorners &corners, std::size_t count, float *colours) {
    for (std::size_t i = 0; i < count; ++i) {
        const auto corner = [&corners, i](std::size_t c) {
            return Vec3{corners.x[c][i], corners.y[c][i], corners.depth[c][i]};
        };
        const LitFace face{corner(0), corner(1), corner(2)};
        auto known = std::find_if(lit_faces.begin(), lit_faces.end(),
                                  [&face](const LitFace &other) { return same(face, other); });
        if (known == lit_faces.end()) {
            known = lit_faces.insert(known, face);
        }
        colours[i] = 100.0F + 10.0F * static_cast<float>(known - lit_faces.begin());
    }
}

void constant_lights(const FaceCorners &, std::size_t count, float *colours) {
    std::fill_n(colours, count, 150.0F);
}

/// Replaces the lighting: a point's colour is the x of its normal.
void lights_of_normals(const std::uint32_t *points, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        lit_points.push_back(points[i]);
        lwofis[points[i]] = lwonormals3[points[i]].x;
    }
}

class FaceLoops : public testing::Test {
protected:
    void SetUp() override {
        reset_program_state();
        set_frame(64, 48);
        lit_faces.clear();
        lit_points.clear();
    }

    /// Sets a model whose points are already projected.
    static void set_scene(const std::vector<Vec3> &points, const std::vector<std::uint16_t> &words) {
        set_model(points, words);
        std::copy(points.begin(), points.end(), lwopoints3.get());
        reset_colours();
    }

    static void reset_colours() { std::fill_n(lwofis.get(), point_count(), -1.0F); }

    static int pixels_lit() {
        return static_cast<int>(std::count_if(chunkybuf1.get(), chunkybuf1.get() + frame_pixels(),
                                              [](std::uint8_t value) { return value != 0; }));
    }
};

/// A square with corners at 10 and 30. Its points have the order that is visible without flip.
const std::vector<Vec3> square{{10, 10, 100}, {30, 10, 100}, {30, 30, 100}, {10, 30, 100}};

} // namespace

TEST_F(FaceLoops, EmptyListDrawsNothingAndZeroesBothCounters) {
    const std::array<void (*)(), 5> loops{face_loop_envmap, [] { face_loop_texturemap(constant_lights); },
                                          [] { face_loop_lightsourced(constant_lights); },
                                          [] { face_loop_gouraud(lights_of_normals); }, face_loop_zlight};
    set_scene(square, {});
    for (std::size_t mode = 1; mode <= loops.size(); ++mode) {
        faces_seen = 7;
        triangles_drawn = 9;
        loops[mode - 1]();
        EXPECT_EQ(faces_seen, 0) << mode;
        EXPECT_EQ(triangles_drawn, 0) << mode;
    }
    EXPECT_EQ(pixels_lit(), 0);
}

TEST_F(FaceLoops, PolygonOfNPointsYieldsNLessTwoTriangles) {
    std::vector<Vec3> ring;
    for (int i = 0; i < 8; ++i) {
        const auto angle = static_cast<float>(i) * 0.785398F;
        ring.push_back({32 + 15 * std::cos(angle), 24 + 15 * std::sin(angle), 100});
    }
    for (std::uint16_t n = 3; n <= 8; ++n) {
        std::vector<std::uint16_t> words{n};
        for (std::uint16_t i = 0; i < n; ++i) {
            words.push_back(i);
        }
        words.push_back(0);
        set_scene(ring, words);
        face_loop_zlight();
        EXPECT_EQ(faces_seen, 1) << n;
        EXPECT_EQ(triangles_drawn, n - 2);
    }
}

TEST_F(FaceLoops, FanCoversTheWholePolygon) {
    set_scene(square, {4, 0, 1, 2, 3, 0});
    face_loop_zlight();
    EXPECT_EQ(triangles_drawn, 2);
    for (int row = 11; row <= 29; ++row) {
        EXPECT_EQ(lit_columns(row), columns(10, 29)) << row;
    }
}

TEST_F(FaceLoops, FanTurnsAroundTheFirstPoint) {
    // The fourth point is inside the triangle of the first three. The corner between the second and the third
    // would be missing only if the fan turned around another point.
    set_scene({{10, 10, 100}, {50, 10, 100}, {30, 40, 50}, {20, 20, 200}}, {4, 0, 1, 2, 3, 0});
    face_loop_zlight();
    EXPECT_EQ(triangles_drawn, 2);
    EXPECT_NE(pixel(40, 15), 0) << "(p1, p2, p3) reaches this pixel, (p1, p2, p4) does not";
    // Next to the edge from p1 to p3, (p1, p3, p4) is nearer than (p1, p2, p3).
    EXPECT_GT(pixel(19, 22), 100);
}

TEST_F(FaceLoops, CulledPolygonOnlyCountsAsSeen) {
    set_scene(square, {3, 2, 1, 0, 0});
    face_loop_zlight();
    EXPECT_EQ(faces_seen, 1);
    EXPECT_EQ(triangles_drawn, 0);
    EXPECT_EQ(pixels_lit(), 0);
}

TEST_F(FaceLoops, FlipReversesTheBackFaceTestAndDoublesideTurnsItOff) {
    struct Case {
        const char *name;
        std::vector<std::uint16_t> words;
        bool without_flip;
        bool with_flip;
    };
    const std::array<Case, 3> cases{{{"front", {3, 0, 1, 2, 0}, true, false},
                                     {"mirror image", {3, 2, 1, 0, 0}, false, true},
                                     {"collinear", {3, 0, 1, 4, 0}, false, true}}};
    std::vector<Vec3> points = square;
    points.push_back({50, 10, 100});
    for (const Case &face : cases) {
        SCOPED_TRACE(face.name);
        set_scene(points, face.words);
        viewer.doubleside = 0;
        viewer.flip = 0;
        face_loop_zlight();
        EXPECT_EQ(triangles_drawn, face.without_flip ? 1 : 0);
        viewer.flip = 1;
        face_loop_zlight();
        EXPECT_EQ(triangles_drawn, face.with_flip ? 1 : 0);
        viewer.doubleside = 1;
        face_loop_zlight();
        EXPECT_EQ(triangles_drawn, 1);
        viewer.flip = 0;
        face_loop_zlight();
        EXPECT_EQ(triangles_drawn, 1);
    }
}

TEST_F(FaceLoops, BackFaceTestUsesOnlyTheFirstThreePoints) {
    // The fan's second triangle faces away, but is drawn with its polygon.
    set_scene({{10, 10, 100}, {30, 10, 100}, {30, 30, 100}, {35, 20, 100}}, {4, 0, 1, 2, 3, 0});
    face_loop_zlight();
    EXPECT_EQ(triangles_drawn, 2);
}

TEST_F(FaceLoops, PolygonWithABadIndexIsSeenAndSkipped) {
    set_scene(square, {3, 0, 1, 9, 0, 4, 0, 1, 2, 65535, 0, 3, 0, 1, 2, 0});
    face_loop_zlight();
    EXPECT_EQ(faces_seen, 3);
    EXPECT_EQ(triangles_drawn, 1);
}

TEST_F(FaceLoops, PolygonCutShortIsNotSeen) {
    set_scene(square, {3, 0, 1, 2, 0, 4, 0, 1, 2});
    face_loop_zlight();
    EXPECT_EQ(faces_seen, 1);
    EXPECT_EQ(triangles_drawn, 1);
}

TEST_F(FaceLoops, PolygonOfFewerThanThreePointsIsOneTriangle) {
    // The line uses its surface word 2 as third point.
    set_scene(square, {2, 0, 1, 2, 3, 0, 2, 3, 0});
    face_loop_lightsourced(numbered_lights);
    EXPECT_EQ(faces_seen, 2);
    EXPECT_EQ(triangles_drawn, 2);
    EXPECT_EQ(pixel(28, 20), 100);
    EXPECT_EQ(pixel(12, 20), 110);
}

TEST_F(FaceLoops, LaterPolygonOfEqualDepthDoesNotOverwrite) {
    set_scene(square, {4, 0, 1, 2, 3, 0, 4, 1, 2, 3, 0, 0});
    face_loop_lightsourced(numbered_lights);
    EXPECT_EQ(triangles_drawn, 4);
    EXPECT_EQ(lit_faces.size(), 2U);
    EXPECT_EQ(pixel(20, 15), 100);
}

TEST_F(FaceLoops, EnvmapUsesTheRotatedNormals) {
    set_scene(square, {4, 0, 1, 2, 3, 0});
    std::fill_n(lwonormals3.get(), 4, Vec3{-20, 33, 99});
    std::fill_n(lwopoints2.get(), 4, Vec3{1, 1, 1});
    envmap[(128 + 33) * 256 + 128 - 20] = 181;
    face_loop_envmap();
    EXPECT_EQ(pixels_lit(), 19 * 20 + 20);
    EXPECT_EQ(pixel(15, 20), 181);
    EXPECT_EQ(pixel(25, 20), 181);
}

TEST_F(FaceLoops, EnvmapGivesEachVertexItsOwnNormal) {
    // From -20 at the left side to 20 at the right side, one column per half pixel.
    set_scene(square, {4, 0, 1, 2, 3, 0});
    for (std::size_t i = 0; i < 4; ++i) {
        lwonormals3[i] = {square[i].x == 10 ? -20.0F : 20.0F, 0, 99};
    }
    for (std::size_t column = 0; column < 256; ++column) {
        envmap[128 * 256 + column] = static_cast<std::uint8_t>(column);
    }
    face_loop_envmap();
    // x = 16 shows the value of x = 17, which is 7 of 20 pixels into the square.
    EXPECT_EQ(pixel(16, 25), 128 - 20 + 2 * 7);
    EXPECT_EQ(pixel(24, 15), 128 - 20 + 2 * 15);
}

TEST_F(FaceLoops, TexturemapUsesThePointsOfTheObject) {
    set_scene(square, {4, 0, 1, 2, 3, 0});
    std::fill_n(lwopoints2.get(), 4, Vec3{100, -110, 5});
    std::fill_n(lwonormals3.get(), 4, Vec3{1, 1, 1});
    envmap[(128 - 110) * 256 + 128 + 100] = 182;
    face_loop_texturemap(constant_lights);
    EXPECT_EQ(pixel(15, 20), 182);
    EXPECT_EQ(pixel(25, 20), 182);
}

TEST_F(FaceLoops, PlainTexturemapLightsEachVisiblePolygonOnceForNothing) {
    set_scene(square, {4, 0, 1, 2, 3, 0, 3, 2, 1, 0, 0, 3, 0, 2, 3, 0});
    std::fill_n(envmap.get(), envmap_bytes, std::uint8_t{50});
    plain::face_loop_texturemap(numbered_lights);
    ASSERT_EQ(lit_faces.size(), 2U);
    EXPECT_TRUE(same(lit_faces[0], {square[0], square[1], square[2]}));
    EXPECT_TRUE(same(lit_faces[1], {square[0], square[2], square[3]}));
    EXPECT_EQ(pixel(20, 15), 50);
}

TEST_F(FaceLoops, LightsourcedDrawsANonPlanarQuadInTheOneColourOfItsFirstTriangle) {
    std::vector<Vec3> bent = square;
    bent[3].z = 180;
    set_scene(bent, {4, 0, 1, 2, 3, 0});
    face_loop_lightsourced(numbered_lights);
    ASSERT_EQ(lit_faces.size(), 1U);
    EXPECT_TRUE(same(lit_faces[0], {bent[0], bent[1], bent[2]}));
    EXPECT_EQ(std::set<std::uint8_t>(chunkybuf1.get(), chunkybuf1.get() + frame_pixels()),
              (std::set<std::uint8_t>{0, 100}));
    EXPECT_EQ(pixel(12, 25), 100);
    EXPECT_EQ(pixel(28, 15), 100);
}

TEST_F(FaceLoops, LightsourcedDoesNotLightCulledPolygons) {
    set_scene(square, {3, 2, 1, 0, 0});
    face_loop_lightsourced(numbered_lights);
    EXPECT_TRUE(lit_faces.empty());
}

TEST_F(FaceLoops, GouraudLightsAPointSharedBySixTrianglesOnce) {
    std::vector<Vec3> points{{32, 24, 100}};
    std::vector<std::uint16_t> words;
    for (std::uint16_t i = 0; i < 6; ++i) {
        const auto angle = static_cast<float>(i) * 1.0471976F;
        points.push_back({32 + 15 * std::cos(angle), 24 + 15 * std::sin(angle), 100});
        words.insert(words.end(), {3, 0, static_cast<std::uint16_t>(1 + i),
                                   static_cast<std::uint16_t>(1 + (i + 1) % 6), 0});
    }
    set_scene(points, words);
    for (std::size_t i = 0; i < 7; ++i) {
        lwonormals3[i] = {40.0F + 10.0F * static_cast<float>(i), 0, 0};
    }
    face_loop_gouraud(lights_of_normals);
    EXPECT_EQ(triangles_drawn, 6);
    EXPECT_EQ(lit_points.size(), 7U);
    for (std::size_t i = 0; i < 7; ++i) {
        EXPECT_EQ(lwofis[i], 40.0F + 10.0F * static_cast<float>(i));
    }
}

TEST_F(FaceLoops, GouraudReusesAColourThatIsAlreadyThere) {
    set_scene(square, {4, 0, 1, 2, 3, 0});
    std::fill_n(lwofis.get(), 4, 77.0F);
    face_loop_gouraud(lights_of_normals);
    EXPECT_TRUE(lit_points.empty());
    EXPECT_EQ(pixel(20, 20), 77);
}

TEST_F(FaceLoops, GouraudDoesNotLightPointsOfCulledPolygons) {
    set_scene(square, {3, 2, 1, 0, 0});
    face_loop_gouraud(lights_of_normals);
    EXPECT_TRUE(lit_points.empty());
    EXPECT_EQ(lwofis[0], -1.0F);
}

TEST_F(FaceLoops, GouraudInterpolatesBetweenItsPoints) {
    set_scene(square, {4, 0, 1, 2, 3, 0});
    for (std::size_t i = 0; i < 4; ++i) {
        lwonormals3[i] = {square[i].x == 10 ? 60.0F : 100.0F, 0, 0};
    }
    face_loop_gouraud(lights_of_normals);
    // Two levels per pixel, and each pixel shows the level of the pixel to its right.
    EXPECT_EQ(pixel(16, 25), 60 + 2 * 7);
    EXPECT_EQ(pixel(24, 15), 60 + 2 * 15);
}

TEST_F(FaceLoops, ZlightDrawsTheDepthAsColour) {
    set_scene({{10, 10, 60}, {30, 10, 100}, {30, 30, 100}, {10, 30, 60}}, {4, 0, 1, 2, 3, 0});
    face_loop_zlight();
    EXPECT_EQ(pixel(16, 25), 60 + 2 * 7);
    EXPECT_EQ(depth(16, 25), (60 + 2 * 7) * 256);
    EXPECT_EQ(pixel(24, 15), 60 + 2 * 15);
}

TEST_F(FaceLoops, PointsThatAreNaNStayInsideTheFrame) {
    const float nan = std::nanf("");
    set_scene({{nan, nan, nan}, {1e30F, -1e30F, 100}, {30, nan, 100}, {10, 30, 1e30F}},
              {4, 0, 1, 2, 3, 0, 3, 1, 2, 3, 0});
    std::fill_n(lwonormals3.get(), 4, Vec3{nan, 1e30F, nan});
    std::fill_n(lwopoints2.get(), 4, Vec3{nan, -1e30F, nan});
    viewer.doubleside = 1;
    face_loop_envmap();
    face_loop_texturemap(constant_lights);
    face_loop_lightsourced(constant_lights);
    face_loop_gouraud(lights_of_normals);
    face_loop_zlight();
    EXPECT_EQ(triangles_drawn, 3);
    for (const int row : {0, 5, 43, 47}) {
        EXPECT_EQ(lit_columns(row), std::vector<int>{}) << row;
    }
}
