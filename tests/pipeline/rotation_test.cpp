// SPDX-License-Identifier: MIT
// Tests of rotation, projection, and the turning of normals and light.
#include "pipeline/rotation.h"

#include "display/frame_buffers.h"
#include "object/model.h"
#include "support/model_builder.h"
#include "support/near_vectors.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>

namespace {

constexpr double pi = 3.141592653589793;

class Rotation : public testing::Test {
protected:
    void SetUp() override { reset_program_state(); }
};

using SetRotation = Rotation;
using TransformAndProject = Rotation;
using RotateNormals = Rotation;
using RotateLight = Rotation;

void expect_same(const Vec3 &actual, const Vec3 &expected) {
    EXPECT_EQ(actual.x, expected.x);
    EXPECT_EQ(actual.y, expected.y);
    EXPECT_EQ(actual.z, expected.z);
}

/// The projection of a single point of the object.
Vec3 project(const Vec3 &point) {
    set_model({point}, {});
    transform_and_project();
    return lwopoints3[0];
}

/// A point that the rotation at rest turns into this one.
Vec3 before_rest(const Vec3 &rotated) {
    return {-rotated.x, -rotated.y, rotated.z};
}

} // namespace

TEST_F(SetRotation, ZeroAnglesLeaveAPointUnchanged) {
    set_rotation(0, 0, 0);
    expect_same(rotate_point({1, 2, 3}), {1, 2, 3});
}

TEST_F(SetRotation, QuarterTurnsAboutEachAxis) {
    set_rotation(pi / 2, 0, 0);
    expect_near(rotate_point({1, 2, 3}), {1, 3, -2}, 1e-6F);
    set_rotation(0, pi / 2, 0);
    expect_near(rotate_point({1, 2, 3}), {-3, 2, 1}, 1e-6F);
    set_rotation(0, 0, pi / 2);
    expect_near(rotate_point({1, 2, 3}), {-2, 1, 3}, 1e-6F);
}

TEST_F(SetRotation, TurnsAboutZThenXThenY) {
    // z takes x to y, x then takes y to -z.
    set_rotation(pi / 2, 0, pi / 2);
    expect_near(rotate_point({1, 0, 0}), {0, 0, -1}, 1e-6F);
    // z takes x to y, which y leaves alone.
    set_rotation(0, pi / 2, pi / 2);
    expect_near(rotate_point({1, 0, 0}), {0, 1, 0}, 1e-6F);
    // x takes y to -z, y then takes -z to x.
    set_rotation(pi / 2, pi / 2, 0);
    expect_near(rotate_point({0, 1, 0}), {1, 0, 0}, 1e-6F);
}

TEST_F(SetRotation, IsKeptInSinglePrecision) {
    set_rotation(0, 0, 1.0);
    const DVec3 turned = rotate_point_d({1, 0, 0});
    EXPECT_EQ(turned.x, static_cast<double>(static_cast<float>(std::cos(1.0))));
    EXPECT_EQ(turned.y, static_cast<double>(static_cast<float>(std::sin(1.0))));
    EXPECT_EQ(turned.z, 0.0);
}

TEST_F(SetRotation, DoublePointsAreTurnedInDoublePrecision) {
    // A coordinate that a float cannot represent survives a rotation by 0.
    set_rotation(0, 0, 0);
    constexpr double fine = 1.0 + 1e-12;
    EXPECT_EQ(rotate_point_d({fine, 0, 0}).x, fine);
    set_rotation(pi / 2, pi / 2, 0);
    const DVec3 turned = rotate_point_d({0, 1, 0});
    EXPECT_NEAR(turned.x, 1.0, 1e-7);
    EXPECT_NEAR(turned.y, 0.0, 1e-7);
    EXPECT_NEAR(turned.z, 0.0, 1e-7);
}

TEST_F(RotateNormals, AtRestTurnByHalfATurnAboutTheViewingAxis) {
    set_model({{0, 0, 0}, {0, 0, 0}}, {});
    lwonormals2[0] = {10, 20, 30};
    lwonormals2[1] = {-45.5F, 7.25F, -99};
    rotate_normals();
    // The sine of pi is negligible compared with these numbers.
    expect_same(lwonormals3[0], {-10, -20, 30});
    expect_same(lwonormals3[1], {45.5F, -7.25F, -99});
}

TEST_F(RotateNormals, TurnByOneRadianForEightyCountsOfTheMouse) {
    set_model({{0, 0, 0}}, {});
    const auto sin1 = static_cast<float>(std::sin(1.0));
    const auto cos1 = static_cast<float>(std::cos(1.0));
    lwonormals2[0] = {100, 0, 0};
    viewer.tilt_x = 80;
    rotate_normals();
    expect_near(lwonormals3[0], {-100 * cos1, 0, -100 * sin1}, 1e-4F);

    lwonormals2[0] = {0, 100, 0};
    viewer.tilt_x = 0;
    viewer.tilt_y = 80;
    rotate_normals();
    // By x: y2 = 100 cos (1 + pi), z2 = -100 sin (1 + pi); by y at rest: z3 = -z2.
    expect_near(lwonormals3[0], {0, -100 * cos1, -100 * sin1}, 1e-4F);
}

TEST_F(RotateNormals, TurnBackwardsByFourThousandthsOfARadianPerUnitOfSpin) {
    set_model({{0, 0, 0}}, {});
    lwonormals2[0] = {100, 0, 0};
    viewer.tilt_x = 80;
    viewer.spin_angle = 250;
    rotate_normals();
    expect_near(lwonormals3[0], {-100, 0, 0}, 1e-4F);
    viewer.tilt_x = 0;
    rotate_normals();
    expect_near(lwonormals3[0],
                {-100 * static_cast<float>(std::cos(1.0)), 0, 100 * static_cast<float>(std::sin(1.0))},
                1e-4F);
}

TEST_F(RotateNormals, KeepTheirLength) {
    set_model({{0, 0, 0}}, {});
    lwonormals2[0] = {71.0F, 71.0F, -71.0F};
    viewer.tilt_x = 37;
    viewer.tilt_y = -215;
    viewer.spin_angle = 1234.5;
    rotate_normals();
    const Vec3 &n = lwonormals3[0];
    EXPECT_NEAR(std::sqrt(n.x * n.x + n.y * n.y + n.z * n.z), 71.0F * std::sqrt(3.0F), 1e-3F);
}

TEST_F(TransformAndProject, OriginIsInTheMiddleOfAnyScreen) {
    for (const auto &[width, height] : {std::pair{320, 256}, {640, 480}, {333, 217}, {1, 1}, {16384, 3}}) {
        frame_width = width;
        frame_height = height;
        const auto x = static_cast<float>(width) / 2;
        const auto y = static_cast<float>(height) / 2;
        expect_near(project({0, 0, 0}), {x, y, 128}, 1e-3F);
    }
}

TEST_F(TransformAndProject, PointAtTheRightEndProjectsByTheEyesDistance) {
    expect_near(project(before_rest({110, 0, 0})), {270, 128, 128}, 1e-4F);
    expect_near(project(before_rest({0, 100, 0})), {160, 228, 128}, 1e-4F);
}

TEST_F(TransformAndProject, FartherPointsAreSmallerAndDarker) {
    // 250 / (250 + 110) of 72 is 50, 250 / (250 - 110) of 14 is 25.
    expect_near(project(before_rest({72, -36, 110})), {210, 103, 29}, 1e-3F);
    expect_near(project(before_rest({14, 28, -110})), {185, 178, 227}, 1e-3F);
}

TEST_F(TransformAndProject, ScalesWithTheFrame) {
    frame_width = 640;
    frame_height = 512;
    expect_near(project(before_rest({110, 0, 0})), {540, 256, 128}, 1e-3F);
    expect_near(project(before_rest({0, 100, 0})), {320, 456, 128}, 1e-3F);
    frame_width = 80;
    expect_near(project(before_rest({100, 0, 0})), {65, 256, 128}, 1e-3F);
}

TEST_F(TransformAndProject, UsesTheOpenDisplaysSizeNotTheSettings) {
    viewer.width = 640;
    viewer.height = 512;
    expect_near(project(before_rest({110, 0, 0})), {270, 128, 128}, 1e-4F);
}

TEST_F(TransformAndProject, SnapsPositiveValuesToTheNearestThousandth) {
    // A point at x = 1.2344 minus half a screen projects to 1.2344.
    EXPECT_FLOAT_EQ(project(before_rest({1.2344F - 160, 0, 0})).x, 1.234F);
    EXPECT_FLOAT_EQ(project(before_rest({1.2346F - 160, 0, 0})).x, 1.235F);
    EXPECT_FLOAT_EQ(project(before_rest({0, 1.2346F - 128, 0})).y, 1.235F);
}

TEST_F(TransformAndProject, SnapsNegativeValuesTowardZero) {
    EXPECT_FLOAT_EQ(project(before_rest({-1.2346F - 160, 0, 0})).x, -1.234F);
    EXPECT_FLOAT_EQ(project(before_rest({-1.2341F - 160, 0, 0})).x, -1.233F);
    EXPECT_FLOAT_EQ(project(before_rest({0, -1.2341F - 128, 0})).y, -1.233F);
    // The depth is 128 - 0.9 x 144.0005 = -1.60045, and half a thousandth above it is -1.59995.
    EXPECT_FLOAT_EQ(project({0, 0, 144.0005F}).z, -1.599F);
}

TEST_F(TransformAndProject, SnapsDepths) {
    // 128 - 0.9 x 10.0005 = 118.99955.
    EXPECT_FLOAT_EQ(project({0, 0, 10.0005F}).z, 119.0F);
    // 128 - 0.9 x 10.001 = 118.9991.
    EXPECT_FLOAT_EQ(project({0, 0, 10.001F}).z, 118.999F);
}

TEST_F(TransformAndProject, TurnsThePointsAsItTurnsTheNormals) {
    viewer.tilt_x = 33;
    viewer.tilt_y = -58;
    viewer.spin_angle = 77.5;
    const Vec3 point{20, -30, 40};
    set_model({point}, {});
    lwonormals2[0] = point;
    rotate_normals();
    transform_and_project();
    const Vec3 &turned = lwonormals3[0];
    const float scale = 250 / (turned.z + 250);
    expect_near(lwopoints3[0], {turned.x * scale + 160, turned.y * scale + 128, 128 - 0.9F * turned.z},
                1e-3F);
}

TEST_F(TransformAndProject, LeavesTheObjectAndATrailingPartialPointAlone) {
    set_model({{1, 2, 3}, {4, 5, 6}}, {});
    point_chunk_bytes = 12 + 11;
    lwopoints3[1] = {-7, -8, -9};
    transform_and_project();
    expect_same(lwopoints2[0], {1, 2, 3});
    expect_same(lwopoints3[1], {-7, -8, -9});
}

TEST_F(TransformAndProject, PointInTheEyeSaturates) {
    // z + 250 is 0 here, so the quotients are infinite and saturate.
    const Vec3 projected = project({-10, 10, -250});
    EXPECT_FLOAT_EQ(projected.x, 2147483.6F);
    EXPECT_FLOAT_EQ(projected.y, -2147483.6F);
    EXPECT_FLOAT_EQ(projected.z, 353.0F);
}

TEST_F(TransformAndProject, PointThatIsNaNSnapsToTheSmallestInteger) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const Vec3 projected = project({nan, nan, nan});
    expect_near(projected, {-2147483.6F, -2147483.6F, -2147483.6F}, 1.0F);
}

TEST_F(RotateLight, AtRestIsTheReversedBaseExactly) {
    viewer.light = {0, 0, 0};
    viewer.light_source = {0, 0, 0};
    rotate_light();
    expect_same(viewer.light, {-1, -1, 3});
    expect_same(viewer.light_source, {-1, -1, 3});
    expect_same(viewer.light_base, {3, -1, -1});
}

TEST_F(RotateLight, FollowsTheMouseWithItsHorizontalSenseReversed) {
    // 40 counts are half a radian; the light turns by minus that about y.
    viewer.tilt_x = 40;
    rotate_light();
    const auto sine = static_cast<float>(std::sin(0.5));
    const auto cosine = static_cast<float>(std::cos(0.5));
    expect_near(viewer.light, {-cosine + 3 * sine, -1, sine + 3 * cosine}, 1e-6F);

    viewer.tilt_x = 0;
    viewer.tilt_y = 40;
    rotate_light();
    expect_near(viewer.light, {-1, 3 * sine - cosine, 3 * cosine + sine}, 1e-6F);
}

TEST_F(RotateLight, DoesNotSpin) {
    viewer.spin_angle = 321;
    rotate_light();
    expect_same(viewer.light, {-1, -1, 3});
}

TEST_F(RotateLight, StaysFlippedAfterTheVectorsWereNegated) {
    viewer.light_base = {-3, 1, 1};
    viewer.light_source = {1, 1, -3};
    viewer.light = {1, 1, -3};
    rotate_light();
    expect_same(viewer.light, {1, 1, -3});
}
