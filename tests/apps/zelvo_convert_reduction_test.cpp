// SPDX-License-Identifier: MIT
// How zelvo-convert reduces models.
#include "convert_test.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>
#include <regex>

namespace {

using Reduction = ConvertTest;

/// A sphere of radius 1 as quads, with this many rows of points from pole to pole and twice as many columns.
std::string sphere(int rows, bool has_materials = false) {
    const int columns = 2 * rows;
    std::string text = has_materials ? "mtllib two.mtl\n" : "";
    char line[80];
    for (int row = 0; row < rows; ++row) {
        const double down = (row + 0.5) * std::numbers::pi / rows;
        for (int column = 0; column < columns; ++column) {
            const double around = column * std::numbers::pi / rows;
            std::snprintf(line, sizeof line, "v %.6f %.6f %.6f\n", std::sin(down) * std::sin(around),
                          std::cos(down), std::sin(down) * std::cos(around));
            text += line;
        }
    }
    for (int row = 0; row + 1 < rows; ++row) {
        if (has_materials && (row == 0 || row == rows / 2)) {
            text += row == 0 ? "usemtl north\n" : "usemtl south\n";
        }
        for (int column = 0; column < columns; ++column) {
            const int a = row * columns + column + 1;
            const int b = row * columns + (column + 1) % columns + 1;
            std::snprintf(line, sizeof line, "f %d %d %d %d\n", a, a + columns, b + columns, b);
            text += line;
        }
    }
    return text;
}

/// The number that follows "at most" in percent.
double said_percent(const std::string &printed) {
    std::smatch number;
    return std::regex_search(printed, number, std::regex("at most ([0-9.e-]+)% of its size"))
               ? std::stod(number[1])
               : -1;
}

/// How far the middles of the polygons are from the unit sphere, at most.
double distance_from_sphere(const ReadObject &object) {
    double greatest = 0;
    for (const ReadPolygon &polygon : object.polygons) {
        double x = 0;
        double y = 0;
        double z = 0;
        for (const int corner : polygon.corners) {
            const Vec3 &point = object.points[static_cast<std::size_t>(corner)];
            x += point.x / 3;
            y += point.y / 3;
            z += point.z / 3;
        }
        greatest = std::max(greatest, std::abs(1 - std::sqrt(x * x + y * y + z * z)));
    }
    return greatest;
}

TEST_F(Reduction, MakesLargeModelsFitAndMeasuresTheDifference) {
    constexpr int rows = 200;
    const ReadObject object = converted_obj(sphere(rows));
    EXPECT_LE(object.points.size(), 65535U);
    EXPECT_GE(object.points.size(), 60000U);
    EXPECT_TRUE(was_printed("reduced from 80,000 points and 79,600 polygons to ")) << printed;
    EXPECT_LT(said_percent(printed), 0.1);
    EXPECT_GT(said_percent(printed), 0);
}

TEST_F(Reduction, ReachesTheNumbersThatAreAskedFor) {
    for (const auto &[option, number] :
         {std::pair<std::string, std::size_t>{"--points", 500}, {"--polygons", 700}}) {
        const ReadObject object = converted_obj(sphere(40), {option, std::to_string(number)});
        const std::size_t count = option == "--points" ? object.points.size() : object.polygons.size();
        EXPECT_LE(count, number);
        EXPECT_GE(count, number * 9 / 10);
        // The box of a sphere has a diagonal of twice the square root of 3.
        const double said = said_percent(printed) / 100 * 2 * std::sqrt(3.0);
        EXPECT_GT(said * 1.05, distance_from_sphere(object)) << option;
        EXPECT_LT(said, 0.1) << option;
    }
}

/// A plane of squares with this many points along its sides.
std::string plane(int columns, int rows) {
    std::string text;
    for (int i = 0; i < columns * rows; ++i) {
        text += "v " + std::to_string(i % columns) + " " + std::to_string(i / columns) + " 0\n";
    }
    for (int row = 1; row < rows; ++row) {
        for (int column = 1; column < columns; ++column) {
            const int i = row * columns + column + 1;
            text += "f";
            for (const int corner : {i - columns - 1, i - columns, i, i - 1}) {
                text += " " + std::to_string(corner);
            }
            text += "\n";
        }
    }
    return text;
}

TEST_F(Reduction, BeginsWithOnePointMoreThanAFileHolds) {
    const ReadObject fitting = converted_obj(plane(257, 255));
    EXPECT_EQ(fitting.points.size(), 65535U);
    EXPECT_EQ(fitting.polygons.size(), 256U * 254U);
    EXPECT_FALSE(was_printed("reduced"));
    const ReadObject reduced = converted_obj(plane(256, 256));
    EXPECT_LE(reduced.points.size(), 65535U);
    EXPECT_TRUE(was_printed("reduced from 65,536 points and 65,025 polygons to ")) << printed;
    // A plane stays one.
    EXPECT_TRUE(was_printed("at most 0% of its size")) << printed;
}

TEST_F(Reduction, LeavesSmallModelsAsTheyAre) {
    const ReadObject object = converted_obj(sphere(10), {"--points", "200", "--polygons", "180"});
    EXPECT_EQ(object.points.size(), 200U);
    EXPECT_EQ(object.polygons.size(), 180U);
    EXPECT_FALSE(was_printed("reduced"));
}

TEST_F(Reduction, KeepsTheBorderBetweenSurfaces) {
    files.write("two.mtl", "newmtl north\nKd 1 1 1\nnewmtl south\nKd 0 0 0\n");
    const ReadObject object = converted_obj(sphere(40, true), {"--polygons", "1000"});
    ASSERT_EQ(object.surfaces.size(), 2U);
    int of_south = 0;
    for (const ReadPolygon &polygon : object.polygons) {
        of_south += polygon.surface == 2 ? 1 : 0;
        for (const int corner : polygon.corners) {
            // The border is half a row below the equator.
            const float y = object.points[static_cast<std::size_t>(corner)].y;
            EXPECT_TRUE(polygon.surface == 2 ? y < 0.04F : y > -0.08F) << y;
        }
    }
    EXPECT_GT(of_south, 300);
}

TEST_F(Reduction, MergesPartsIfNothingElseHelps) {
    // Triangles that share no points: no edge can be removed without losing one.
    std::string text;
    char line[80];
    constexpr int side = 160;
    for (int i = 0; i < side * side; ++i) {
        const int x = i % side;
        const int y = i / side;
        std::snprintf(line, sizeof line, "v %d %d 0\nv %d.5 %d 0\nv %d %d.5 0\nf -3 -2 -1\n", x, y, x, y, x,
                      y);
        text += line;
    }
    const ReadObject object = converted_obj(text);
    EXPECT_LE(object.points.size(), 65535U);
    EXPECT_GT(object.polygons.size(), 1000U);
    EXPECT_TRUE(was_printed("reduced from 76,800 points and 25,600 polygons to ")) << printed;
}

} // namespace
