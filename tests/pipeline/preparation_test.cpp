// SPDX-License-Identifier: MIT
// Tests of the preparation of an object: centring, scaling, normals, and the first projection.
#include "pipeline/preparation.h"

#include "object/model.h"
#include "pipeline/sine_table.h"
#include "raster/dots.h"
#include "support/frame_copies.h"
#include "support/model_builder.h"
#include "support/near_vectors.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

class PrepareObject : public testing::Test {
protected:
    void SetUp() override {
        reset_program_state();
        set_frame(320, 256);
    }

    static void prepare(const std::vector<Vec3> &points, const std::vector<std::uint16_t> &words) {
        set_model(points, words);
        prepare_object();
    }
};

float length(const Vec3 &v) {
    return std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
}

/// `v` made 123 long.
Vec3 as_normal(const Vec3 &v) {
    const float factor = 123 / length(v);
    return {v.x * factor, v.y * factor, v.z * factor};
}

const std::vector<Vec3> unit_cube{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0},
                                  {0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}};

/// Four points that preparation only mirrors: the middle of their box is the origin, and the farthest point
/// is 110 away from it.
const std::vector<Vec3> prepared_cross{{-110, 0, 0}, {110, 0, 0}, {0, -110, 0}, {0, 110, 0}};

/// The first three points span a triangle so small that its normal is no larger than the bias. Prepared, its
/// sides of 0.01 are 0.01 x 110 / (1.005 sqrt 2) long. They run from (0, 0) along -x and y, so the normal (C
/// - B) x (A - B) = (side, side, 0) x (side, 0, 0) is minus their product along z.
const std::vector<Vec3> small_triangle_in_a_large_object{
    {0, 0, 0}, {0.01F, 0, 0}, {0, 0.01F, 0}, {-1, -1, 0}, {1.01F, 1.01F, 0}};
constexpr float small_side = 0.7739477F;
constexpr float small_area = small_side * small_side;

} // namespace

TEST_F(PrepareObject, CentresAndScalesAUnitCubeWithItsXMirrored) {
    prepare(unit_cube, {4, 0, 1, 2, 3, 0});
    // 110 / sqrt 0.75 x 0.5.
    constexpr float side = 63.5085F;
    for (std::size_t i = 0; i < unit_cube.size(); ++i) {
        const Vec3 &corner = unit_cube[i];
        const Vec3 expected{corner.x == 0 ? side : -side, corner.y == 0 ? -side : side,
                            corner.z == 0 ? -side : side};
        expect_near(lwopoints2[i], expected, 1e-3F);
    }
}

TEST_F(PrepareObject, CentresTheBoundingBoxNotTheMean) {
    prepare({{0, 0, 0}, {0, 0, 0}, {0, 0, 0}, {8, 0, 0}}, {3, 0, 1, 2, 0});
    expect_near(lwopoints2[0], {110, 0, 0}, 1e-3F);
    expect_near(lwopoints2[3], {-110, 0, 0}, 1e-3F);
}

TEST_F(PrepareObject, CentresEachAxisByItself) {
    prepare({{100, -7, 3}, {102, -7, 3}, {101, -5, 3}, {101, -6, 5}}, {3, 0, 1, 2, 0});
    // The middle of the box is (101, -6, 4). Every point but the last is sqrt 3 or sqrt 2 away from it.
    const auto scale = static_cast<float>(110 / std::sqrt(3.0));
    expect_near(lwopoints2[0], {scale, -scale, -scale}, 1e-2F);
    expect_near(lwopoints2[2], {0, scale, -scale}, 1e-2F);
    expect_near(lwopoints2[3], {0, 0, scale}, 1e-2F);
}

TEST_F(PrepareObject, ChangesThePointsAsReadInPlace) {
    prepare(unit_cube, {4, 0, 1, 2, 3, 0});
    for (std::size_t i = 0; i < unit_cube.size(); ++i) {
        EXPECT_EQ(point_chunk[i].x, lwopoints2[i].x);
        EXPECT_EQ(point_chunk[i].y, lwopoints2[i].y);
        EXPECT_EQ(point_chunk[i].z, lwopoints2[i].z);
    }
    EXPECT_LT(point_chunk[1].x, -63.0F);
}

TEST_F(PrepareObject, ProjectsTheObjectOnce) {
    prepare(prepared_cross, {3, 0, 1, 2, 0});
    // Preparation mirrors the point, and the rotation at rest turns it back.
    expect_near(lwopoints3[0], {50, 128, 128}, 1e-2F);
    expect_near(lwopoints3[1], {270, 128, 128}, 1e-2F);
    expect_near(lwopoints3[2], {160, 238, 128}, 1e-2F);
}

TEST_F(PrepareObject, SetsTheLight) {
    viewer.light = {9, 9, 9};
    prepare(prepared_cross, {3, 0, 1, 2, 0});
    EXPECT_EQ(viewer.light.x, -1.0F);
    EXPECT_EQ(viewer.light.y, -1.0F);
    EXPECT_EQ(viewer.light.z, 3.0F);
}

TEST_F(PrepareObject, BuildsTheTablesOfTheDots) {
    sine_table.fill(0.0F);
    prepare(prepared_cross, {3, 0, 1, 2, 0});
    EXPECT_EQ(sine_table[1024], 1.0F);
    EXPECT_EQ(dot_image[31 * 64 + 31], 255);
    EXPECT_EQ(dot_image[31 * 64 + 30], 246);
}

TEST_F(PrepareObject, MarksEveryPointAsNotYetLit) {
    prepare(prepared_cross, {3, 0, 1, 2, 0});
    for (std::size_t i = 0; i < prepared_cross.size(); ++i) {
        EXPECT_EQ(lwofis[i], -1.0F);
    }
}

TEST_F(PrepareObject, NormalOfASingleTrianglesPointIsItsNormalAndTheBiasScaledTo123) {
    prepare(small_triangle_in_a_large_object, {3, 0, 1, 2, 0});
    for (std::size_t i = 0; i < 3; ++i) {
        expect_near(lwonormals2[i], as_normal({1, 1, 1 - small_area}), 1e-2F);
    }
}

TEST_F(PrepareObject, PointOfNoPolygonPointsAlongTheBias) {
    prepare(prepared_cross, {3, 0, 1, 2, 0});
    const auto component = static_cast<float>(123 / std::sqrt(3.0));
    expect_near(lwonormals2[3], {component, component, component}, 1e-3F);
}

TEST_F(PrepareObject, NormalsAre123Long) {
    prepare(unit_cube, {4, 0, 1, 2, 3, 0, 4, 4, 7, 6, 5, 0, 4, 0, 4, 5, 1, 0});
    for (std::size_t i = 0; i < unit_cube.size(); ++i) {
        EXPECT_NEAR(length(lwonormals2[i]), 123.0F, 1e-3F);
    }
}

TEST_F(PrepareObject, LargeFacesWeighMore) {
    // Point 0 belongs to two faces that begin at it: one of 110 x 220 perpendicular to z, and one of 110 x
    // 110 perpendicular to y. The length of the cross product of a face's sides is its area.
    prepare({{0, 0, 0}, {-110, 0, 0}, {110, 0, 0}, {0, -110, 0}, {0, 110, 0}, {0, 0, -110}, {0, 0, 110}},
            {3, 1, 0, 4, 0, 3, 1, 0, 5, 0, 3, 1, 0, 5, 0});
    // After mirroring, 1 is at (110, 0, 0), 4 at (0, 110, 0) and 5 at (0, 0, -110). (C - B) x (A - B) is
    // (0, 110, 0) x (110, 0, 0) = (0, 0, -12100), and (0, 0, -110) x (110, 0, 0) = (0, -12100, 0), twice.
    expect_near(lwonormals2[0], as_normal({1, 1 - 2 * 12100, 1 - 12100}), 1e-2F);
    expect_near(lwonormals2[4], as_normal({1, 1, 1 - 12100}), 1e-2F);
    expect_near(lwonormals2[5], as_normal({1, 1 - 2 * 12100, 1}), 1e-2F);
}

TEST_F(PrepareObject, PolygonsNormalIsThatOfItsFirstThreePointsForAllOfThem) {
    prepare({{-110, 0, 0}, {0, 0, 0}, {0, 110, 0}, {0, 0, 110}, {110, -110, -110}}, {4, 0, 1, 2, 3, 0});
    const Vec3 normal = face_normal(lwopoints2[0], lwopoints2[1], lwopoints2[2]);
    const Vec3 expected = as_normal({1 + normal.x, 1 + normal.y, 1 + normal.z});
    for (std::size_t i = 0; i < 4; ++i) {
        expect_near(lwonormals2[i], expected, 1e-2F);
    }
    EXPECT_LT(expected.z, -100.0F) << "the fourth point is not in the plane of the first three";
}

TEST_F(PrepareObject, PointThatOccursTwiceGetsTheNormalTwice) {
    prepare(small_triangle_in_a_large_object, {4, 0, 1, 2, 0, 0});
    expect_near(lwonormals2[0], as_normal({1, 1, 1 - 2 * small_area}), 1e-2F);
    expect_near(lwonormals2[1], as_normal({1, 1, 1 - small_area}), 1e-2F);
}

TEST_F(PrepareObject, PolygonWithABadIndexContributesNothing) {
    prepare(prepared_cross, {3, 0, 3, 9, 0, 4, 0, 3, 1, 65535, 0, 3, 0, 3, 1, 0});
    // Only the last polygon counts: 0 is at (110, 0, 0), 3 at (0, 110, 0), 1 at (-110, 0, 0), and
    // (1 - 3) x (0 - 3) is (-110, -110, 0) x (110, -110, 0) = (0, 0, 24200).
    expect_near(lwonormals2[0], as_normal({1, 1, 1 + 24200}), 1e-2F);
    const auto component = static_cast<float>(123 / std::sqrt(3.0));
    expect_near(lwonormals2[2], {component, component, component}, 1e-3F);
}

TEST_F(PrepareObject, PolygonCutShortContributesNothing) {
    prepare(prepared_cross, {3, 0, 3});
    const auto component = static_cast<float>(123 / std::sqrt(3.0));
    expect_near(lwonormals2[0], {component, component, component}, 1e-3F);
}

TEST_F(PrepareObject, LineGetsTheNormalOfTheThreeWordsAfterItsCount) {
    // The surface word 1 is used as third point, but only the line's two points receive the normal.
    prepare(prepared_cross, {2, 0, 3, 1});
    expect_near(lwonormals2[0], as_normal({1, 1, 1 + 24200}), 1e-2F);
    expect_near(lwonormals2[3], as_normal({1, 1, 1 + 24200}), 1e-2F);
    const auto component = static_cast<float>(123 / std::sqrt(3.0));
    expect_near(lwonormals2[1], {component, component, component}, 1e-3F);
}

TEST_F(PrepareObject, TrailingPartialPointIsUnchanged) {
    set_model({{0, 0, 0}, {2, 0, 0}, {500, 600, 700}}, {});
    point_chunk_bytes = 2 * 12 + 8;
    lwonormals2[2] = {-4, -5, -6};
    prepare_object();
    expect_near(lwopoints2[0], {110, 0, 0}, 1e-3F);
    EXPECT_EQ(point_chunk[2].x, 500.0F);
    EXPECT_EQ(lwonormals2[2].x, -4.0F);
}

TEST_F(PrepareObject, ObjectWithoutExtentBecomesNaNHarmlessly) {
    prepare({{3, 4, 5}, {3, 4, 5}, {3, 4, 5}}, {3, 0, 1, 2, 0});
    EXPECT_TRUE(std::isnan(lwopoints2[0].x));
    EXPECT_TRUE(std::isnan(lwonormals2[0].x));
    EXPECT_FLOAT_EQ(lwopoints3[0].x, -2147483.6F);
}

TEST_F(PrepareObject, ObjectOfLessThanAPointIsPrepared) {
    set_model({}, {3, 0, 1, 2, 0});
    point_chunk_bytes = 8;
    prepare_object();
    EXPECT_EQ(point_count(), 0);
    EXPECT_EQ(dot_image[31 * 64 + 31], 255);
}

TEST(FaceNormal, IsTheCrossProductOfTheSidesAtTheSecondPoint) {
    // u = A - B = (1, 2, 3), w = C - B = (4, 5, 6); w x u = (5 x 3 - 6 x 2, 6 x 1 - 4 x 3, 4 x 2 - 5 x 1).
    const Vec3 normal = face_normal({11, 22, 33}, {10, 20, 30}, {14, 25, 36});
    EXPECT_EQ(normal.x, 3.0F);
    EXPECT_EQ(normal.y, -6.0F);
    EXPECT_EQ(normal.z, 3.0F);
}

TEST(FaceNormal, TurnsAroundWithTheWinding) {
    const Vec3 normal = face_normal({14, 25, 36}, {10, 20, 30}, {11, 22, 33});
    EXPECT_EQ(normal.x, -3.0F);
    EXPECT_EQ(normal.y, 6.0F);
    EXPECT_EQ(normal.z, -3.0F);
}

TEST(ScaleToLength, KeepsTheDirection) {
    Vec3 v{2, -3, 6};
    scale_to_length(v, 14.0F);
    EXPECT_EQ(v.x, 4.0F);
    EXPECT_EQ(v.y, -6.0F);
    EXPECT_EQ(v.z, 12.0F);
}

TEST(ScaleToLength, ZeroVectorTurnsIntoNaN) {
    Vec3 v{0, 0, 0};
    scale_to_length(v, 123.0F);
    EXPECT_TRUE(std::isnan(v.x) && std::isnan(v.y) && std::isnan(v.z));
}
