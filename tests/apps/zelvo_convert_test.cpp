// SPDX-License-Identifier: MIT
// What zelvo-convert makes of models.
#include "convert_test.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>
#include <sstream>

namespace {

using Convert = ConvertTest;

std::vector<std::vector<int>> corners_of(const ReadObject &object) {
    std::vector<std::vector<int>> corners;
    for (const ReadPolygon &polygon : object.polygons) {
        corners.push_back(polygon.corners);
    }
    return corners;
}

std::vector<int> surfaces_of(const ReadObject &object) {
    std::vector<int> surfaces;
    for (const ReadPolygon &polygon : object.polygons) {
        surfaces.push_back(polygon.surface);
    }
    return surfaces;
}

void expect_point(const Vec3 &point, float x, float y, float z) {
    EXPECT_EQ(point.x, x);
    EXPECT_EQ(point.y, y);
    EXPECT_EQ(point.z, z);
}

/// A polygon's area along z, where it is positive if the corners run clockwise for a viewer at negative z.
double area_seen(const ReadObject &object, const ReadPolygon &polygon) {
    double area = 0;
    for (std::size_t i = 0; i < polygon.corners.size(); ++i) {
        const Vec3 &a = object.points[static_cast<std::size_t>(polygon.corners[i])];
        const Vec3 &b =
            object.points[static_cast<std::size_t>(polygon.corners[(i + 1) % polygon.corners.size()])];
        area += (double{b.x} * a.y - double{a.x} * b.y) / 2;
    }
    return area;
}

/// A face that looks towards the viewer of the model.
constexpr char quad[] = "v 0 0 1\nv 4 0 1\nv 4 2 1\nv 0 2 1\nf 1 2 3 4\n";

TEST_F(Convert, TurnsTheAxesAndTheCornersOfPolygonsAround) {
    const ReadObject object = converted_obj(quad);
    ASSERT_EQ(object.points.size(), 4U);
    expect_point(object.points[0], 0, 0, -1);
    expect_point(object.points[2], 4, 2, -1);
    EXPECT_EQ(corners_of(object), (std::vector<std::vector<int>>{{0, 3, 2, 1}}));
    EXPECT_EQ(object.chunks, (Words{"PNTS", "SRFS", "POLS", "SURF"}));
    EXPECT_EQ(printed, "out.lwo: 4 points, 1 polygon, 1 surface (Wavefront Object Importer)\n");
}

TEST_F(Convert, KeepsPolygonsAndTheirOrder) {
    const ReadObject object = converted_obj("v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\nv -1 2 0\nv 3 3 0\n"
                                            "f 1 2 3\nf 1 2 6 4 5\nf 1 2 3 4\n");
    // assimp numbers the points by their first use.
    EXPECT_EQ(corners_of(object), (std::vector<std::vector<int>>{{0, 2, 1}, {0, 5, 4, 3, 1}, {0, 4, 2, 1}}));
}

TEST_F(Convert, CutsPolygonsOnRequest) {
    EXPECT_EQ(corners_of(converted_obj(quad, {"--triangles"})),
              (std::vector<std::vector<int>>{{0, 3, 2}, {0, 2, 1}}));
}

TEST_F(Convert, FlipsOnRequest) {
    EXPECT_EQ(corners_of(converted_obj(quad, {"--flip"})), (std::vector<std::vector<int>>{{0, 1, 2, 3}}));
}

TEST_F(Convert, PutsZUpOnRequest) {
    const ReadObject object = converted_obj("v 1 2 3\nv 2 2 3\nv 1 2 5\nf 1 2 3\n", {"--up", "Z"});
    // The model's front, at negative y, is the object's front, at negative z.
    expect_point(object.points[0], 1, 3, 2);
    expect_point(object.points[2], 1, 5, 2);
    EXPECT_GT(area_seen(object, object.polygons[0]), 0);
}

TEST_F(Convert, TakesModelsForPrintersAsHavingZUp) {
    const std::string stl = files.write(
        "a.stl", "solid a\nfacet normal 0 -1 0\nouter loop\nvertex 1 2 3\nvertex 2 2 3\nvertex 1 2 5\n"
                 "endloop\nendfacet\nendsolid a\n");
    expect_point(converted(stl).points[0], 1, 3, 2);
    expect_point(converted(stl, {"--up", "y"}).points[0], 1, 2, -3);
}

TEST_F(Convert, WeldsPointsInTheSamePlace) {
    const ReadObject object = converted_obj("v 0 0 0\nv 1 0 0\nv 0 1 0\nv -0 1 0\nv 1 0 0\nv 1 1 0\n"
                                            "f 1 2 3\nf 5 6 4\n");
    EXPECT_EQ(object.points.size(), 4U);
    EXPECT_EQ(corners_of(object), (std::vector<std::vector<int>>{{0, 2, 1}, {1, 2, 3}}));
}

TEST_F(Convert, SaysWhatItLeavesOut) {
    const ReadObject object = converted_obj("v 0 0 0\nv 1 0 0\nv 0 1 0\nv 2 0 0\nv nan 0 0\n"
                                            "f 1 2 3\nf 1 1 2\nf 1 2 4\nf 1 2 5\nf 1 3 3\nl 1 2\n");
    EXPECT_EQ(object.polygons.size(), 1U);
    EXPECT_EQ(object.points.size(), 3U);
    EXPECT_TRUE(was_printed("  3 polygons left out: no area\n")) << printed;
    EXPECT_TRUE(was_printed("  1 polygon left out: a coordinate is infinite or no number\n")) << printed;
    EXPECT_TRUE(was_printed("  1 line left out: the viewer shows polygons only\n")) << printed;
}

TEST_F(Convert, BeginsAPolygonWhereItsFanCoversIt) {
    // An arrow head: only the fan around the notch or around the tip covers it.
    const ReadObject object = converted_obj("v 2 -1 0\nv 0 3 0\nv -2 -1 0\nv 0 0 0\nf 1 2 3 4\n");
    ASSERT_EQ(object.polygons.size(), 1U);
    EXPECT_TRUE(object.polygons[0].corners[0] == 1 || object.polygons[0].corners[0] == 3);
    EXPECT_FALSE(was_printed("concave"));
    // The viewer takes the direction of a polygon from its first three corners.
    const ReadObject straight = converted_obj("v 0 0 0\nv 1 0 0\nv 2 0 0\nv 2 2 0\nv 0 2 0\nf 1 2 3 4 5\n");
    ASSERT_EQ(straight.polygons.size(), 1U);
    ReadPolygon first = straight.polygons[0];
    first.corners.resize(3);
    EXPECT_GT(area_seen(straight, first), 0.5);
}

TEST_F(Convert, CutsPolygonsThatNoFanCovers) {
    // A comb of two teeth, and a star.
    std::string text =
        "v 0 0 0\nv 5 0 0\nv 5 3 0\nv 4 3 0\nv 4 1 0\nv 1 1 0\nv 1 3 0\nv 0 3 0\nf 1 2 3 4 5 6 7 8\n";
    for (int i = 0; i < 10; ++i) {
        const double turn = i * std::numbers::pi / 5;
        const double radius = i % 2 == 0 ? 9 : 3;
        text += "v " + std::to_string(radius * std::cos(turn)) + " " +
                std::to_string(radius * std::sin(turn)) + " 7\n";
    }
    text += "f 9 10 11 12 13 14 15 16 17 18\n";
    const ReadObject object = converted_obj(text);
    double comb = 0;
    double star = 0;
    for (const ReadPolygon &polygon : object.polygons) {
        EXPECT_EQ(polygon.corners.size(), 3U);
        const double area = area_seen(object, polygon);
        EXPECT_GT(area, 0);
        (polygon.corners[0] < 8 ? comb : star) += area;
    }
    EXPECT_EQ(object.polygons.size(), 6U + 8U);
    EXPECT_DOUBLE_EQ(comb, 9);
    EXPECT_NEAR(star, 10 * 0.5 * 9 * 3 * std::sin(std::numbers::pi / 5), 1e-4);
    EXPECT_TRUE(was_printed("  2 concave polygons cut into triangles\n")) << printed;
}

TEST_F(Convert, MakesASurfaceOfEachMaterialThatIsUsed) {
    files.write("model.mtl",
                "newmtl red\nKd 1 0 0\nnewmtl unused\nKd 0 1 0\nnewmtl dark sea\nKd 0 0.2 0.4\n");
    const ReadObject object = converted_obj("mtllib model.mtl\nv 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\n"
                                            "usemtl dark sea\nf 1 2 3\nusemtl red\nf 1 3 4\n");
    ASSERT_EQ(object.surfaces.size(), 2U);
    EXPECT_EQ(object.surfaces[0].name, "dark sea");
    EXPECT_EQ(object.surfaces[0].colour, (std::array<int, 3>{0, 51, 102}));
    EXPECT_EQ(object.surfaces[1].name, "red");
    EXPECT_EQ(object.surfaces[1].colour, (std::array<int, 3>{255, 0, 0}));
    EXPECT_EQ(surfaces_of(object), (std::vector<int>{1, 2}));
}

/// A glTF file: the same triangle once with each of these materials.
std::string gltf(const std::vector<std::string> &materials) {
    std::string list;
    std::string triangles;
    for (std::size_t i = 0; i < materials.size(); ++i) {
        list += (i == 0 ? "" : ",") + materials[i];
        triangles +=
            (i == 0 ? "" : ",") + (R"({"attributes":{"POSITION":0},"material":)" + std::to_string(i) + "}");
    }
    return R"({"asset":{"version":"2.0"},"scene":0,"scenes":[{"nodes":[0]}],"nodes":[{"mesh":0}],"materials":[)" +
           list + R"(],"meshes":[{"primitives":[)" + triangles + R"(]}],
"accessors":[{"bufferView":0,"componentType":5126,"count":3,"type":"VEC3","min":[0,0,0],"max":[1,1,0]}],
"bufferViews":[{"buffer":0,"byteLength":36}],"buffers":[{"byteLength":36,"uri":
"data:application/octet-stream;base64,AAAAAAAAAAAAAAAAAACAPwAAAAAAAAAAAAAAAAAAgD8AAAAA"}]})";
}

TEST_F(Convert, MarksSurfacesThatAreMeantToBeSeenFromBothSides) {
    const ReadObject object = converted(
        files.write("a.gltf", gltf({R"({"name":"one"})", R"({"name":"both","doubleSided":true})"})));
    ASSERT_EQ(object.surfaces.size(), 2U);
    EXPECT_EQ(object.surfaces[0].flags & 256, 0);
    EXPECT_EQ(object.surfaces[1].flags & 256, 256);
    EXPECT_TRUE(was_printed("  1 surface meant to be seen from both sides (\"d\" in the viewer)\n"))
        << printed;
}

TEST_F(Convert, GivesSurfacesDifferentNamesAndMergesThoseThatAFileCannotNumber) {
    constexpr std::size_t most = 32767;
    const ReadObject object =
        converted(files.write("a.gltf", gltf(std::vector<std::string>(most + 2, R"({"name":"m"})"))));
    ASSERT_EQ(object.surfaces.size(), most);
    EXPECT_EQ(object.surfaces[0].name, "m");
    EXPECT_EQ(object.surfaces[1].name, "m 2");
    EXPECT_EQ(object.surfaces[most - 1].name, "m 32767");
    ASSERT_EQ(object.polygons.size(), most + 2);
    for (std::size_t i = 0; i < object.polygons.size(); ++i) {
        ASSERT_EQ(object.polygons[i].surface, static_cast<int>(std::min(i + 1, most)));
    }
    EXPECT_TRUE(was_printed("  2 surfaces merged with the last one that the file can hold\n")) << printed;
}

/// A Collada file: a triangle, and the nodes that place it.
std::string collada(const std::string &nodes, const std::string &library_nodes = "") {
    return R"(<?xml version="1.0"?>
<COLLADA xmlns="http://www.collada.org/2005/11/COLLADASchema" version="1.4.1">
<asset><up_axis>Y_UP</up_axis></asset>
<library_geometries><geometry id="g"><mesh>
<source id="p"><float_array id="pa" count="9">0 0 0 1 0 0 0 1 0</float_array><technique_common>
<accessor source="#pa" count="3" stride="3"><param name="X" type="float"/><param name="Y" type="float"/>
<param name="Z" type="float"/></accessor></technique_common></source>
<vertices id="v"><input semantic="POSITION" source="#p"/></vertices>
<triangles count="1"><input semantic="VERTEX" source="#v" offset="0"/><p>0 1 2</p></triangles>
</mesh></geometry></library_geometries>
<library_nodes>)" +
           library_nodes + R"(</library_nodes>
<library_visual_scenes><visual_scene id="s">)" +
           nodes + R"(</visual_scene></library_visual_scenes>
<scene><instance_visual_scene url="#s"/></scene></COLLADA>)";
}

TEST_F(Convert, PutsThePartsOfAModelInTheirPlaces) {
    const ReadObject object = converted(
        files.write("a.dae", collada("<node><translate>10 0 0</translate><node><scale>2 2 2</scale>"
                                     "<instance_geometry url=\"#g\"/></node></node>"
                                     "<node><scale>-1 1 1</scale><instance_geometry url=\"#g\"/></node>")));
    ASSERT_EQ(object.points.size(), 6U);
    expect_point(object.points[1], 12, 0, 0);
    expect_point(object.points[4], -1, 0, 0);
    // A mirrored part still shows its front.
    ASSERT_EQ(object.polygons.size(), 2U);
    EXPECT_DOUBLE_EQ(area_seen(object, object.polygons[0]), 2);
    EXPECT_DOUBLE_EQ(area_seen(object, object.polygons[1]), 0.5);
}

TEST_F(Convert, SurvivesAModelThatTakesForever) {
    // Each node places the next one twice.
    std::string nodes = "<node id=\"n40\"><instance_geometry url=\"#g\"/></node>";
    for (int i = 40; i > 0; --i) {
        const std::string twice = "<instance_node url=\"#n" + std::to_string(i) + "\"/>";
        nodes += "<node id=\"n" + std::to_string(i - 1) + "\">" + twice + twice + "</node>";
    }
    files.write("a.dae", collada("<node><instance_node url=\"#n0\"/></node>", nodes));
    files.write("b.obj", quad);
    const ToolRun run = convert({"a.dae", "b.obj", "--timeout", "1"});
    EXPECT_EQ(run.exit_code, 1);
    EXPECT_TRUE(run.errors == "zelvo-convert: a.dae: reading it takes longer than 1 second (--timeout)\n" ||
                run.errors ==
                    "zelvo-convert: a.dae: reading it takes more than 2048 MiB of memory (--memory)\n")
        << run.errors;
    EXPECT_EQ(names(), (Words{"a.dae", "b.lwo", "b.obj"}));
}

TEST_F(Convert, SurvivesAModelThatCrashesTheReader) {
    // So many nodes inside each other that no stack is large enough.
    constexpr int depth = 1'000'000;
    std::string nodes;
    for (int i = 0; i < depth; ++i) {
        nodes += "<node>";
    }
    nodes += "<instance_geometry url=\"#g\"/>";
    for (int i = 0; i < depth; ++i) {
        nodes += "</node>";
    }
    files.write("a.dae", collada(nodes));
    files.write("b.obj", quad);
    const ToolRun run = convert({"a.dae", "b.obj"});
    EXPECT_EQ(run.exit_code, 1);
    EXPECT_TRUE(run.errors.starts_with("zelvo-convert: a.dae: reading it ")) << run.errors;
    EXPECT_EQ(std::ranges::count(run.errors, '\n'), 1) << run.errors;
    EXPECT_EQ(names(), (Words{"a.dae", "b.lwo", "b.obj"}));
}

// The letter F, which is not its own mirror image in any direction, of polygons that face the viewer.
constexpr char letter_f[] = "v 0 0 0\nv 2 0 0\nv 2 10 0\nv 0 10 0\nf 1 2 3 4\n"
                            "v 2 8 0\nv 8 8 0\nv 8 10 0\nf 5 6 7 3\n"
                            "v 2 4 0\nv 6 4 0\nv 6 6 0\nv 2 6 0\nf 8 9 10 11\n";

/// Draws out.lwo as the viewer does and returns the picture as rows of blanks and hash signs, one per cell.
std::string drawn(const TemporaryFiles &files) {
    const ToolRun run =
        run_tool("zelvo-render",
                 {"out.lwo", "--envmap", std::string(ZELVO_DATA_FOLDER) + "/Zelvo_envmap.chunky", "--mode",
                  "lightsourced", "--size", "256x256", "--no-texts", "--chunky", "frames"},
                 {files.folder(), files.folder(), {}});
    EXPECT_EQ(run.exit_code, 0);
    const std::string frame = files.read("frames/00003.pgm");
    const std::string pixels = frame.substr(frame.size() - 256 * 256);
    std::string cells;
    // The letter is 8 x 10 units, and the object's radius of 110 is half of the diagonal.
    const double unit = 220 / std::hypot(8, 10);
    for (int row = 0; row < 5; ++row) {
        for (int column = 0; column < 4; ++column) {
            const double x = 128 + (column * 2 + 1 - 4) * unit;
            const double y = 128 + (row * 2 + 1 - 5) * unit;
            const auto at = static_cast<std::size_t>(y) * 256 + static_cast<std::size_t>(x);
            cells += pixels[at] != 0 ? '#' : ' ';
        }
        cells += '\n';
    }
    return cells;
}

TEST_F(Convert, MakesObjectsThatTheViewerShowsAsTheModelIs) {
    converted_obj(letter_f);
    EXPECT_EQ(drawn(files), "####\n"
                            "#   \n"
                            "### \n"
                            "#   \n"
                            "#   \n");
    converted_obj(letter_f, {"--flip"});
    EXPECT_EQ(drawn(files), "    \n    \n    \n    \n    \n");
}

/// An object as an OBJ file: the inverse of a conversion.
std::string as_obj(const ReadObject &object) {
    std::ostringstream text;
    text.precision(12);
    for (const Vec3 &point : object.points) {
        text << "v " << point.x << ' ' << point.y << ' ' << -point.z << '\n';
    }
    for (const ReadPolygon &polygon : object.polygons) {
        text << "f " << polygon.corners[0] + 1;
        for (std::size_t i = polygon.corners.size() - 1; i > 0; --i) {
            text << ' ' << polygon.corners[i] + 1;
        }
        text << '\n';
    }
    return text.str();
}

TEST_F(Convert, ReturnsEveryObjectThatWasExported) {
    int objects = 0;
    for (const auto &entry : std::filesystem::directory_iterator(ZELVO_DATA_FOLDER)) {
        if (entry.path().extension() != ".lwo") {
            continue;
        }
        ++objects;
        const auto frames_of = [&](const std::string &object, const std::string &folder) {
            const ToolRun run =
                run_tool("zelvo-render",
                         {object, "--envmap", std::string(ZELVO_DATA_FOLDER) + "/Zelvo_envmap.chunky",
                          "--mode", "lightsourced", "--spin=4", "--passes", "12", "--chunky", folder},
                         {files.folder(), files.folder(), {}});
            EXPECT_EQ(run.exit_code, 0);
            std::string frames;
            for (const std::string number : {"00002", "00003", "00007", "00012"}) {
                const std::string frame = files.read(folder + "/" + number + ".pgm");
                EXPECT_FALSE(frame.empty());
                frames += frame;
            }
            return frames;
        };
        std::ifstream file(entry.path(), std::ios::binary);
        const ReadObject original =
            parse_object({std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()});
        const ReadObject returned = converted_obj(as_obj(original));
        EXPECT_LE(returned.points.size(), original.points.size()) << entry.path();
        EXPECT_TRUE(frames_of(entry.path().string(), "original") == frames_of("out.lwo", "returned"))
            << entry.path();
    }
    EXPECT_EQ(objects, 6);
}

} // namespace
