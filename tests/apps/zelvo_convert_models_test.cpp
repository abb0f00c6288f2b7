// SPDX-License-Identifier: MIT
// Every model of assimp's own tests that assimp can read becomes an object. What is expected of it is found
// in another way: here assimp itself puts the parts in their places.
#include "convert_test.h"
#include "core/sanitized.h"
#include "shared/child_process.h"

#include <array>
#include <assimp/Importer.hpp>
#include <assimp/postprocess.h>
#include <assimp/scene.h>
#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <set>

namespace {

namespace fs = std::filesystem;

/// The smallest and the largest coordinates.
struct ModelBox {
    std::array<float, 3> low{INFINITY, INFINITY, INFINITY};
    std::array<float, 3> high{-INFINITY, -INFINITY, -INFINITY};

    void include(float x, float y, float z) {
        const std::array<float, 3> point{x, y, z};
        for (std::size_t i = 0; i < 3; ++i) {
            low[i] = std::min(low[i], point[i]);
            high[i] = std::max(high[i], point[i]);
        }
    }
};

/// What assimp finds in a file. Sent between processes as bytes.
struct Expected {
    std::size_t polygons;
    bool has_bones;
    /// The bounds in the axes of an object file: of a model with y up, and of one with z up.
    ModelBox box;
    ModelBox z_up_box;
};

/// Counts the scene's polygons, and finds the bounds of their points.
Expected sum_of(const aiScene &scene) {
    Expected sum{};
    for (unsigned i = 0; i < scene.mNumMeshes; ++i) {
        const aiMesh &mesh = *scene.mMeshes[i];
        sum.has_bones = sum.has_bones || mesh.HasBones();
        for (unsigned j = 0; j < mesh.mNumFaces; ++j) {
            const aiFace &face = mesh.mFaces[j];
            if (face.mNumIndices < 3) {
                continue;
            }
            ++sum.polygons;
            for (unsigned k = 0; k < face.mNumIndices; ++k) {
                const aiVector3D &point = mesh.mVertices[face.mIndices[k]];
                sum.box.include(point.x, point.y, -point.z);
                sum.z_up_box.include(point.x, point.z, point.y);
            }
        }
    }
    return sum;
}

/// Nothing if assimp cannot read the file, or crashes.
std::optional<Expected> expected_of(const std::string &path) {
    std::optional<Expected> expected;
    run_in_child(
        {std::size_t{2} << 30, 60.0, 300.0},
        [&] {
            // The next step removes the bones.
            Assimp::Importer importer;
            const aiScene *scene = importer.ReadFile(path, 0);
            if (scene == nullptr) {
                return;
            }
            const bool has_bones = sum_of(*scene).has_bones;
            scene = importer.ApplyPostProcessing(aiProcess_PreTransformVertices);
            if (scene == nullptr) {
                return;
            }
            Expected sum = sum_of(*scene);
            sum.has_bones = has_bones;
            send_to_parent('e', {reinterpret_cast<const char *>(&sum), sizeof sum});
        },
        [&](char, std::string &&bytes) {
            expected.emplace();
            std::memcpy(&*expected, bytes.data(), sizeof *expected);
        });
    return expected;
}

bool is_model(const fs::directory_entry &entry) {
    static const std::set<std::string> others{".png", ".jpg", ".jpeg", ".tga",      ".bmp", ".gif", ".pcx",
                                              ".dds", ".txt", ".md",   ".material", ".mtl", ".bin"};
    return entry.is_regular_file() && !others.contains(entry.path().extension().string());
}

std::vector<std::string> folders() {
    std::vector<std::string> names;
    for (const auto &entry : fs::directory_iterator(ZELVO_TEST_MODELS)) {
        if (entry.is_directory()) {
            names.push_back(entry.path().filename().string());
        }
    }
    std::ranges::sort(names);
    return names;
}

ModelBox box_of_object(const ReadObject &object) {
    ModelBox box;
    for (const Vec3 &point : object.points) {
        box.include(point.x, point.y, point.z);
    }
    return box;
}

bool is_near(const ModelBox &one, const ModelBox &other) {
    float size = 0;
    for (std::size_t i = 0; i < 3; ++i) {
        size = std::max({size, std::abs(one.low[i]), std::abs(one.high[i])});
    }
    for (std::size_t i = 0; i < 3; ++i) {
        if (!(std::abs(one.low[i] - other.low[i]) <= 1e-4F * size) ||
            !(std::abs(one.high[i] - other.high[i]) <= 1e-4F * size)) {
            return false;
        }
    }
    return true;
}

/// Whether a model of this folder has the bounds that assimp finds, with the axis up that its format has.
bool is_expected(const ModelBox &box, const Expected &expected, const std::string &folder) {
    static const std::set<std::string> folders_with_z_up{"3MF", "AMF", "COB", "DXF", "SMD", "STL"};
    // Files of these name their axis, or are of several formats.
    static const std::set<std::string> folders_with_both{"FBX", "invalid"};
    const bool has_z_up = folders_with_z_up.contains(folder);
    const bool has_both = folders_with_both.contains(folder);
    return ((has_both || !has_z_up) && is_near(box, expected.box)) ||
           ((has_both || has_z_up) && is_near(box, expected.z_up_box));
}

class Models : public ConvertTest, public testing::WithParamInterface<std::string> {
protected:
    /// Compares what became of a model with what assimp says about it.
    void expect_object(const std::string &path, const ToolRun &run, const std::optional<Expected> &expected) {
        const auto was_said = [&](const char *text) {
            return (run.output + run.errors).find(text) != std::string::npos;
        };
        if (run.exit_code != 0) {
            EXPECT_EQ(run.exit_code, 1) << path;
            EXPECT_EQ(std::ranges::count(run.errors, '\n'), 1) << run.errors;
            EXPECT_TRUE(!expected || expected->polygons == 0 || was_said("none of its polygons has an area"))
                << run.errors;
            return;
        }
        const ReadObject object = parse_object(files.read("out.lwo"));
        EXPECT_FALSE(object.polygons.empty()) << path;
        EXPECT_LE(object.points.size(), 65535U) << path;
        if (!expected || was_said("reduced") || was_said("form LWOB")) {
            return;
        }
        if (!was_said("left out") && !was_said("cut into")) {
            EXPECT_EQ(object.polygons.size(), expected->polygons) << path;
            if (!expected->has_bones) {
                EXPECT_TRUE(is_expected(box_of_object(object), *expected, GetParam())) << path;
            }
        }
    }
};

TEST_P(Models, BecomeObjectsThatTheViewerTakes) {
    if (is_sanitized && GetParam() == "invalid") {
        GTEST_SKIP() << "these files claim gigabytes, and a sanitized process cannot be limited";
    }
    Words paths;
    for (const auto &entry :
         fs::recursive_directory_iterator(std::string(ZELVO_TEST_MODELS) + "/" + GetParam())) {
        if (is_model(entry)) {
            paths.push_back(entry.path().string());
        }
    }
    std::ranges::sort(paths);
    if (is_sanitized) {
        // Processes of a sanitized build start slowly.
        paths.resize(std::min<std::size_t>(paths.size(), 2));
    }
    Words objects;
    for (const std::string &path : paths) {
        const ToolRun run = convert({path, "-o", "out.lwo"});
        expect_object(path, run, expected_of(path));
        if (run.exit_code == 0) {
            objects.push_back(std::to_string(objects.size()) + ".lwo");
            fs::rename(files.path("out.lwo"), files.path(objects.back()));
        }
    }
    if (!objects.empty()) {
        objects.insert(objects.end(),
                       {"--size", "100x75", "--envmap", ZELVO_DATA_FOLDER "/Zelvo_envmap.chunky"});
        EXPECT_EQ(run_tool("zelvo-render", objects, {files.folder(), files.folder(), {}}).exit_code, 0);
    }
}

using ConvertFbx = ConvertTest;

TEST_F(ConvertFbx, HasTheAxisUpThatTheFileNames) {
    std::ifstream file(ZELVO_TEST_MODELS "/FBX/box_orphant_embedded_texture.fbx", std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    const ModelBox y_up = box_of_object(converted(files.write("y.fbx", text)));
    const std::string up_axis = "\"UpAxis\", \"int\", \"Integer\", \"\",";
    const std::size_t at = text.find(up_axis + "1");
    ASSERT_NE(at, std::string::npos);
    text[at + up_axis.size()] = '2';
    const ModelBox z_up = box_of_object(converted(files.write("z.fbx", text)));
    // What was up is now away from the viewer.
    EXPECT_EQ(y_up.low[1], z_up.low[2]);
    EXPECT_EQ(y_up.high[1], z_up.high[2]);
    EXPECT_EQ(y_up.low[2], -z_up.high[1]);
}

using ConvertUpright = ConvertTest;

TEST_F(ConvertUpright, PutsModelsOnTheirFeet) {
    // The dwarf and the chalice rest on the ground, and are taller than they are wide.
    for (const std::string model : {"COB/dwarf.cob", "SMD/holy_grailref.smd"}) {
        const ModelBox box = box_of_object(converted(ZELVO_TEST_MODELS "/" + model));
        const float height = box.high[1] - box.low[1];
        EXPECT_GT(height, box.high[0] - box.low[0]) << model;
        EXPECT_GT(height, box.high[2] - box.low[2]) << model;
        EXPECT_NEAR(box.low[1], 0, height / 100) << model;
    }
}

INSTANTIATE_TEST_SUITE_P(OfAssimp, Models, testing::ValuesIn(folders()), [](const auto &test) {
    std::string name = test.param;
    std::erase_if(name, [](char c) { return std::isalnum(static_cast<unsigned char>(c)) == 0; });
    return name;
});

} // namespace
