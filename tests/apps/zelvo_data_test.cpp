// SPDX-License-Identifier: MIT
// Tests that the generator reproduces data/ byte for byte, and that the data is valid.
#include "support/program_run.h"
#include "support/tool_run.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <set>

namespace {

std::string whole_file(const std::filesystem::path &path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// The files of data/ that the generator makes: objects and a texture.
std::set<std::string> made_files(const std::string &folder) {
    std::set<std::string> names;
    for (const auto &entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() == ".lwo" || entry.path().extension() == ".chunky") {
            names.insert(entry.path().filename().string());
        }
    }
    return names;
}

/// A parsed object file.
struct ObjectFile {
    std::string type;
    std::size_t form_size = 0;
    std::multiset<std::string> chunks;
    std::size_t points = 0;
    std::multiset<std::size_t> polygon_sizes;
    bool is_sound = true;
};

std::size_t number_at(const std::string &bytes, std::size_t at, std::size_t width) {
    std::size_t number = 0;
    for (std::size_t i = 0; i < width; ++i) {
        number = number << 8 | static_cast<unsigned char>(bytes.at(at + i));
    }
    return number;
}

void read_polygons(const std::string &data, ObjectFile &object) {
    for (std::size_t at = 0; at < data.size();) {
        const std::size_t vertices = number_at(data, at, 2);
        for (std::size_t i = 1; i <= vertices; ++i) {
            object.is_sound = object.is_sound && number_at(data, at + 2 * i, 2) < object.points;
        }
        object.polygon_sizes.insert(vertices);
        at += 2 * (vertices + 2);
    }
}

ObjectFile read_object_file(const std::string &bytes) {
    ObjectFile object;
    object.type = bytes.substr(0, 4) + " " + bytes.substr(8, 4);
    object.form_size = number_at(bytes, 4, 4);
    for (std::size_t at = 12; at + 8 <= bytes.size();) {
        const std::string name = bytes.substr(at, 4);
        const std::size_t size = number_at(bytes, at + 4, 4);
        object.chunks.insert(name);
        if (name == "PNTS") {
            object.points = size / 12;
        } else if (name == "POLS") {
            read_polygons(bytes.substr(at + 8, size), object);
        }
        at += 8 + size;
    }
    return object;
}

class ZelvoData : public testing::Test {
protected:
    ToolRun make(const std::vector<std::string> &arguments) const {
        return run_tool("zelvo-data", arguments, {files.folder(), files.folder(), {}});
    }

    TemporaryFiles files;
};

TEST_F(ZelvoData, ReproducesEveryFileByteForByte) {
    const ToolRun run = make({"made/here"});
    EXPECT_EQ(run.exit_code, 0);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.errors, "");
    const std::set<std::string> names = made_files(ZELVO_DATA_FOLDER);
    EXPECT_GE(names.size(), 5U);
    EXPECT_EQ(made_files(files.path("made/here")), names);
    for (const std::string &name : names) {
        const std::string kept = whole_file(std::filesystem::path(ZELVO_DATA_FOLDER) / name);
        EXPECT_FALSE(kept.empty()) << name;
        EXPECT_TRUE(whole_file(files.path("made/here/" + name)) == kept) << name;
    }
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(files.path("made/here")), {}),
              std::ssize(names));
}

TEST_F(ZelvoData, ReplacesOlderFiles) {
    ASSERT_EQ(make({"."}).exit_code, 0);
    const std::string knot = files.read("torus_knot.lwo");
    files.write("torus_knot.lwo", "old");
    ASSERT_EQ(make({"."}).exit_code, 0);
    EXPECT_TRUE(files.read("torus_knot.lwo") == knot);
}

TEST_F(ZelvoData, NeedsExactlyOneFolder) {
    for (const std::vector<std::string> &arguments :
         {std::vector<std::string>{}, std::vector<std::string>{"one", "two"}}) {
        const ToolRun run = make(arguments);
        EXPECT_EQ(run.exit_code, 2);
        EXPECT_EQ(run.output, "");
        EXPECT_EQ(run.errors, "usage: zelvo-data OUTPUT_FOLDER\n");
    }
    EXPECT_TRUE(std::filesystem::is_empty(files.folder()));
}

TEST_F(ZelvoData, LeavesNothingHalfWrittenIfItCannotWrite) {
    files.write("taken", "a file");
    EXPECT_EQ(make({"taken"}).exit_code, 2);
    EXPECT_EQ(files.read("taken"), "a file");
    // A folder in the way of the first file.
    std::filesystem::create_directories(files.path("made/torus_knot.lwo"));
    const ToolRun run = make({"made"});
    EXPECT_EQ(run.exit_code, 2);
    EXPECT_NE(run.errors.find("torus_knot.lwo"), std::string::npos) << run.errors;
    EXPECT_FALSE(std::filesystem::exists(files.path("made/torus_knot.lwo.part")));
}

TEST_F(ZelvoData, LeavesNothingHalfWrittenOnAFullDisk) {
    std::filesystem::create_directories(files.path("made"));
    // The temporary file is a link to a device on which every write fails.
    std::filesystem::create_symlink("/dev/full", files.path("made/cut_gem.lwo.part"));
    const ToolRun run = make({"made"});
    EXPECT_EQ(run.exit_code, 2);
    EXPECT_EQ(run.errors.substr(0, run.errors.find('\n')), "zelvo-data: cannot write made/cut_gem.lwo");
    EXPECT_FALSE(std::filesystem::is_symlink(files.path("made/cut_gem.lwo.part")));
    EXPECT_EQ(made_files(files.path("made")), std::set<std::string>{"torus_knot.lwo"});
}

TEST(DataFolder, HasValidObjectsOfManyKinds) {
    std::size_t most_polygons = 0;
    std::set<std::size_t> vertex_counts;
    std::size_t objects = 0;
    bool has_surfaces = false;
    for (const std::string &name : made_files(ZELVO_DATA_FOLDER)) {
        if (!name.ends_with(".lwo")) {
            continue;
        }
        ++objects;
        const std::string bytes = whole_file(std::filesystem::path(ZELVO_DATA_FOLDER) / name);
        const ObjectFile object = read_object_file(bytes);
        EXPECT_EQ(object.type, "FORM LWOB") << name;
        EXPECT_EQ(object.form_size, bytes.size() - 8) << name;
        EXPECT_EQ(object.chunks.count("PNTS"), 1U) << name;
        EXPECT_EQ(object.chunks.count("POLS"), 1U) << name;
        EXPECT_TRUE(object.is_sound) << name;
        EXPECT_GT(object.points, 3U) << name;
        most_polygons = std::max(most_polygons, object.polygon_sizes.size());
        vertex_counts.insert(object.polygon_sizes.begin(), object.polygon_sizes.end());
        has_surfaces = has_surfaces || (object.chunks.contains("SRFS") && object.chunks.contains("SURF"));
    }
    EXPECT_GE(objects, 4U);
    EXPECT_GE(most_polygons, 3000U);
    EXPECT_EQ(vertex_counts, (std::set<std::size_t>{3, 4, 5, 6, 7, 8}));
    EXPECT_TRUE(has_surfaces);
}

TEST(DataFolder, HasATextureOfTheRightSize) {
    const std::string texture = whole_file(std::filesystem::path(ZELVO_DATA_FOLDER) / "Zelvo_envmap.chunky");
    EXPECT_EQ(texture.size(), 65536U);
    // Polished metal has dark and bright places.
    const auto [darkest, brightest] =
        std::minmax_element(texture.begin(), texture.end(), [](char one, char other) {
            return static_cast<unsigned char>(one) < static_cast<unsigned char>(other);
        });
    EXPECT_LT(static_cast<unsigned char>(*darkest), 64);
    EXPECT_GT(static_cast<unsigned char>(*brightest), 192);
}

} // namespace
