// SPDX-License-Identifier: MIT
// What zelvo-thumbnailer draws.
#include "picture_reading.h"
#include "support/model_builder.h"
#include "support/tool_run.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>
#include <numbers>
#include <sstream>

namespace {

using Points = std::vector<Vec3>;
using Words = std::vector<std::uint16_t>;

const Points square{{-1, -1, 0}, {1, -1, 0}, {1, 1, 0}, {-1, 1, 0}};
const Words square_from_the_front{4, 0, 3, 2, 1, 1};
const Words square_from_the_back{4, 0, 1, 2, 3, 1};

/// A tetrahedron with its faces pointing outwards; its points are exact when they are moved by powers of two.
const Points tetrahedron{{-1, -1, -1}, {1, 1, -1}, {1, -1, 1}, {-1, 1, 1}};
const Words tetrahedron_faces{3, 0, 1, 2, 1, 3, 0, 3, 1, 1, 3, 0, 2, 3, 1, 3, 1, 3, 2, 1};

Words with_faces_reversed(Words triangles) {
    for (std::size_t at = 0; at < triangles.size(); at += 5) {
        std::swap(triangles[at + 1], triangles[at + 2]);
    }
    return triangles;
}

/// The smallest rectangle around all pixels that are not fully transparent.
struct Box {
    int left, top, right, bottom;
    int longer_side() const { return std::max(right - left, bottom - top) + 1; }
};

Box box_of(const GreyPicture &picture) {
    Box box{picture.width, picture.height, -1, -1};
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            if (picture.at(x, y)[1] != 0) {
                box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x),
                       std::max(box.bottom, y)};
            }
        }
    }
    return box;
}

/// The part of the picture that the object covers.
double cover(const GreyPicture &picture) {
    double opacity = 0;
    for (const auto &pixel : picture.pixels) {
        opacity += pixel[1] / 255.0;
    }
    return opacity / static_cast<double>(picture.pixels.size());
}

/// The mean level of the object's pixels.
double brightness(const GreyPicture &picture) {
    double sum = 0;
    double count = 0;
    for (const auto &[level, opacity] : picture.pixels) {
        sum += opacity != 0 ? level : 0;
        count += opacity != 0 ? 1 : 0;
    }
    return sum / count;
}

class Thumbnail : public testing::Test {
protected:
    ToolRun make(const std::string &input, const std::string &size) {
        return run_tool("zelvo-thumbnailer", {input, files.path("out.png"), size},
                        {files.folder(), files.folder(), {}});
    }

    /// The thumbnail of an object file, which must be made without a word.
    GreyPicture of_file(const std::string &input, int size = 128) {
        const ToolRun run = make(input, std::to_string(size));
        EXPECT_EQ(run.exit_code, 0) << input;
        EXPECT_EQ(run.output + run.errors, "") << input;
        return read_grey_png(files.path("out.png"));
    }

    GreyPicture of(const Points &points, const Words &words, int size = 128) {
        return of_file(files.write("object.lwo", object_file(points, words)), size);
    }

    TemporaryFiles files;
};

TEST_F(Thumbnail, HasTheSizeThatWasAskedFor) {
    for (const int size : {1, 2, 5, 33, 128, 256, 257, 512, 513, 1024}) {
        const GreyPicture picture = of(tetrahedron, tetrahedron_faces, size);
        EXPECT_EQ(picture.width, size);
        EXPECT_EQ(picture.height, size);
        EXPECT_GT(cover(picture), 0.2) << size;
    }
}

TEST_F(Thumbnail, IsFilledToNineTenthsAndCentredWhateverTheShape) {
    const Points needle{{0, 0, 0}, {0, 20, 0}, {1, 0, 0}, {0, 0, 1}};
    const Points flat{{-9, 0, -1}, {9, 0, -1}, {9, 0, 1}, {-9, 0, 1}};
    const std::vector<std::pair<Points, Words>> objects{
        {tetrahedron, tetrahedron_faces},
        {square, square_from_the_front},
        {needle, tetrahedron_faces},
        {flat, square_from_the_back},
        {{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {3, 0, 2, 1, 1}},
    };
    for (const auto &[points, words] : objects) {
        for (const int size : {128, 256, 512, 1024}) {
            const Box box = box_of(of(points, words, size));
            const std::string which =
                std::to_string(&points - &objects[0].first) + " " + std::to_string(size);
            // The tip of a corner can be too narrow to cover a pixel.
            const double tip = 2 + size / 128.0;
            EXPECT_NEAR(box.longer_side(), 0.9 * size, tip) << which;
            EXPECT_NEAR(box.left, size - 1 - box.right, tip) << which;
            EXPECT_NEAR(box.top, size - 1 - box.bottom, tip) << which;
        }
    }
}

/// Where most of the object is, from the middle of the box around it: x to the right, y downwards.
std::pair<double, double> heavy_side(const GreyPicture &picture) {
    const Box box = box_of(picture);
    double x_sum = 0;
    double y_sum = 0;
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            x_sum += picture.at(x, y)[1] * (x - (box.left + box.right) / 2.0);
            y_sum += picture.at(x, y)[1] * (y - (box.top + box.bottom) / 2.0);
        }
    }
    return {x_sum, y_sum};
}

TEST_F(Thumbnail, IsSeenFromTheFrontOneSideAndAbove) {
    // A large tetrahedron far away in this direction, and a small one on the other side.
    const auto heavy_side_of = [&](const Vec3 &direction) {
        Points points;
        Words words;
        for (const auto &[place, size] : {std::pair{20.0F, 2.0F}, {-20.0F, 1.0F}}) {
            const auto first = static_cast<std::uint16_t>(points.size());
            for (const Vec3 &p : tetrahedron) {
                points.push_back({p.x * size + direction.x * place, p.y * size + direction.y * place,
                                  p.z * size + direction.z * place});
            }
            for (std::size_t i = 0; i < tetrahedron_faces.size(); ++i) {
                const bool is_corner = i % 5 >= 1 && i % 5 <= 3;
                words.push_back(static_cast<std::uint16_t>(tetrahedron_faces[i] + (is_corner ? first : 0)));
            }
        }
        return heavy_side(of(points, words));
    };
    const auto [top_x, top_y] = heavy_side_of({0, 1, 0});
    EXPECT_LT(top_y, 0);
    const auto [right_x, right_y] = heavy_side_of({1, 0, 0});
    EXPECT_GT(right_x, 0);
    // What is in front is lower than what is behind, and to the right of it.
    const auto [front_x, front_y] = heavy_side_of({0, 0, -1});
    EXPECT_GT(front_y, 0);
    EXPECT_GT(front_x, 0);
}

TEST_F(Thumbnail, HasEdgesOfTheObjectsOwnColour) {
    const GreyPicture picture = of(square, square_from_the_front);
    const std::uint8_t level = picture.at(64, 64)[0];
    int partly_covered = 0;
    for (const auto &pixel : picture.pixels) {
        EXPECT_EQ(pixel[0], pixel[1] == 0 ? 0 : level);
        partly_covered += pixel[1] != 0 && pixel[1] != 255 ? 1 : 0;
    }
    EXPECT_GT(level, 50);
    EXPECT_GT(partly_covered, 100);
    EXPECT_EQ(picture.at(64, 64)[1], 255);
    EXPECT_EQ(picture.at(0, 0)[1], 0);
}

TEST_F(Thumbnail, IsTheSameFarFromTheOriginAndInAnotherUnit) {
    const GreyPicture expected = of(tetrahedron, tetrahedron_faces);
    Points moved = tetrahedron;
    for (Vec3 &point : moved) {
        point = {point.x * 4 + 65536, point.y * 4 - 32768, point.z * 4 + 1024};
    }
    EXPECT_EQ(of(moved, tetrahedron_faces).pixels, expected.pixels);
}

TEST_F(Thumbnail, IsTheSameWithAFarPointThatNoPolygonUses) {
    const GreyPicture expected = of(tetrahedron, tetrahedron_faces);
    Points more = tetrahedron;
    more.push_back({1e6F, -1e9F, 3});
    EXPECT_EQ(of(more, tetrahedron_faces).pixels, expected.pixels);
}

TEST_F(Thumbnail, OfAnObjectTurnedInsideOutIsAsBright) {
    const GreyPicture expected = of(tetrahedron, tetrahedron_faces);
    const GreyPicture picture = of(tetrahedron, with_faces_reversed(tetrahedron_faces));
    EXPECT_NEAR(brightness(picture), brightness(expected), 3);
    EXPECT_NEAR(cover(picture), cover(expected), 0.002);
}

TEST_F(Thumbnail, ShowsBothSidesOfAnOpenSurface) {
    const GreyPicture front = of(square, square_from_the_front);
    const GreyPicture back = of(square, square_from_the_back);
    EXPECT_NEAR(cover(back), cover(front), 0.002);
    EXPECT_NEAR(brightness(back), brightness(front), 10);

    // Two squares with a common edge, one of which shows its back.
    Points two = square;
    two.insert(two.end(), {{3, -1, 0}, {3, 1, 0}});
    const GreyPicture alike = of(two, {4, 0, 3, 2, 1, 1, 4, 1, 2, 5, 4, 1});
    const GreyPicture mixed = of(two, {4, 0, 3, 2, 1, 1, 4, 1, 4, 5, 2, 1});
    EXPECT_NEAR(cover(mixed), cover(alike), 0.002);
}

TEST_F(Thumbnail, ShowsAFlatObjectThatTheUsualViewSeesFromItsEdge) {
    const double around = 30 * std::numbers::pi / 180;
    const double above = 22 * std::numbers::pi / 180;
    // Along the direction of view, and across it.
    const auto x = static_cast<float>(std::sin(around) * std::cos(above));
    const auto y = static_cast<float>(std::sin(above));
    const auto z = static_cast<float>(std::cos(around) * std::cos(above));
    for (const float side : {1.0F, -1.0F}) {
        const Points edge_on{
            {side * x, y - 1, -z}, {-side * x, -y - 1, z}, {-side * x, 1 - y, z}, {side * x, 1 + y, -z}};
        EXPECT_GT(cover(of(edge_on, square_from_the_front)), 0.05) << side;
    }
}

TEST_F(Thumbnail, IsTheSameThroughAFileUri) {
    const std::string path = files.write("an \xC3\xB6"
                                         "bject%.lwo",
                                         object_file(tetrahedron, tetrahedron_faces));
    const GreyPicture expected = of_file(path);
    std::filesystem::remove(files.path("out.png"));
    EXPECT_EQ(of_file("file://" + files.folder() + "/an%20%c3%B6bject%25.lwo").pixels, expected.pixels);
    EXPECT_EQ(of_file("file://localhost" + files.folder() + "/an%20%C3%B6bject%25.lwo").pixels,
              expected.pixels);
}

TEST_F(Thumbnail, ReplacesAnOlderFileAndLeavesNoOther) {
    files.write("out.png", "old");
    EXPECT_EQ(of(tetrahedron, tetrahedron_faces).width, 128);
    int count = 0;
    for ([[maybe_unused]] const auto &entry : std::filesystem::directory_iterator(files.folder())) {
        ++count;
    }
    EXPECT_EQ(count, 2);
}

TEST_F(Thumbnail, FillsAnEmptyFileThatAServiceKeepsOpen) {
    files.write("out.png", "");
    const std::ifstream kept_open(files.path("out.png"), std::ios::binary);
    EXPECT_EQ(of(tetrahedron, tetrahedron_faces).width, 128);
    std::ostringstream bytes;
    bytes << kept_open.rdbuf();
    EXPECT_EQ(bytes.str(), files.read("out.png"));
}

TEST_F(Thumbnail, IsWrittenThroughALink) {
    const std::string target = files.write("target", "something longer than nothing");
    std::filesystem::create_symlink(target, files.path("out.png"));
    EXPECT_EQ(of(tetrahedron, tetrahedron_faces).width, 128);
    EXPECT_TRUE(std::filesystem::is_symlink(files.path("out.png")));
    EXPECT_EQ(read_grey_png(target).width, 128);
}

} // namespace
