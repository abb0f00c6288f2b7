// SPDX-License-Identifier: MIT
// Tests of the light on polygons and points.
#include "pipeline/lighting.h"

#include "object/model.h"
#include "support/model_builder.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

class Lighting : public testing::Test {
protected:
    void SetUp() override { reset_program_state(); }
};

using FaceLightTest = Lighting;
using VertexLightTest = Lighting;
using ResetVertexColours = Lighting;

// The light is (-1, -1, 3). It and these two are perpendicular to one another, and `along` x `across` is
// twice the light.
constexpr Vec3 along{1, -1, 0};
constexpr Vec3 across{3, 3, 2};
constexpr Vec3 corner{50, 60, 70};

Vec3 plus(const Vec3 &a, const Vec3 &b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}

} // namespace

TEST_F(FaceLightTest, IsFullWhenTheNormalPointsAlongTheLight) {
    EXPECT_FLOAT_EQ(face_light(plus(corner, across), corner, plus(corner, along)), 255.0F);
}

TEST_F(FaceLightTest, IsAmbientWhenTheNormalPointsAgainstTheLight) {
    EXPECT_EQ(face_light(plus(corner, along), corner, plus(corner, across)), 25.0F);
}

TEST_F(FaceLightTest, IsAmbientWhenTheLightGrazes) {
    EXPECT_EQ(face_light(plus(corner, viewer.light), corner, plus(corner, across)), 25.0F);
    EXPECT_EQ(face_light(plus(corner, across), corner, plus(corner, viewer.light)), 25.0F);
}

TEST_F(FaceLightTest, FallsWithTheCosine) {
    // A face square to the depth axis: the cosine is 3 / sqrt 11.
    const auto expected = static_cast<float>(25 + 230 * 3 / std::sqrt(11.0));
    EXPECT_FLOAT_EQ(face_light({0, 5, 9}, {0, 0, 9}, {7, 0, 9}), expected);
    EXPECT_EQ(face_light({7, 0, 9}, {0, 0, 9}, {0, 5, 9}), 25.0F) << "its normal points away";
}

TEST_F(FaceLightTest, DoesNotDependOnTheFacesSize) {
    // The normal is along (0, -1, 1).
    const auto expected = static_cast<float>(25 + 230 * 4 / std::sqrt(22.0));
    EXPECT_FLOAT_EQ(face_light({0, 1, 1}, {0, 0, 0}, {1, 0, 0}), expected);
    EXPECT_FLOAT_EQ(face_light({0, 1000, 1000}, {0, 0, 0}, {1000, 0, 0}), expected);
}

TEST_F(FaceLightTest, TurnsAroundWithTheLight) {
    viewer.light = {1, 1, -3};
    EXPECT_EQ(face_light(plus(corner, across), corner, plus(corner, along)), 25.0F);
    EXPECT_FLOAT_EQ(face_light(plus(corner, along), corner, plus(corner, across)), 255.0F);
}

TEST_F(FaceLightTest, DegenerateFaceIsNaN) {
    EXPECT_TRUE(std::isnan(face_light(corner, corner, corner)));
}

TEST_F(VertexLightTest, NegatesXAndYOfTheLight) {
    EXPECT_FLOAT_EQ(vertex_light({1, 1, 3}), 255.0F);
    // (-1 - 1 + 9) of 11.
    EXPECT_FLOAT_EQ(vertex_light({-1, -1, 3}), static_cast<float>(25 + 230.0 * 7 / 11));
}

TEST_F(VertexLightTest, IsAmbientIfFacingAwayOrGrazed) {
    EXPECT_EQ(vertex_light({-1, -1, -3}), 25.0F);
    EXPECT_EQ(vertex_light({1, -1, 0}), 25.0F);
}

TEST_F(VertexLightTest, DoesNotDependOnTheNormalsLength) {
    EXPECT_FLOAT_EQ(vertex_light({123, 123, 369}), 255.0F);
    EXPECT_FLOAT_EQ(vertex_light({0, 0, 123}), static_cast<float>(25 + 230 * 3 / std::sqrt(11.0)));
}

TEST_F(VertexLightTest, ZeroNormalIsNaN) {
    EXPECT_TRUE(std::isnan(vertex_light({0, 0, 0})));
}

TEST_F(ResetVertexColours, MarksEveryPointAndNoMore) {
    set_model({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}}, {});
    std::fill_n(lwofis.get(), 4, 88.0F);
    point_chunk_bytes = 2 * 12 + 11;
    reset_vertex_colours();
    EXPECT_EQ(lwofis[0], -1.0F);
    EXPECT_EQ(lwofis[1], -1.0F);
    EXPECT_EQ(lwofis[2], 88.0F);
}
