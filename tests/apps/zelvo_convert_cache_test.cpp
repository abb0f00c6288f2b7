// SPDX-License-Identifier: MIT
// The cache of zelvo-convert, and the thumbnails of models in other formats.
#include "convert_test.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

namespace {

namespace fs = std::filesystem;

constexpr char cached_model[] = "mtllib a.mtl\nv 0 0 0\nv 1 0 0\nv 0 1 0\nusemtl m\nf 1 2 3\n";

class ConvertCache : public ConvertTest {
protected:
    void SetUp() override {
        setenv("XDG_CACHE_HOME", files.path("cache").c_str(), 1);
        files.write("a.obj", cached_model);
        files.write("a.mtl", "newmtl m\nKd 1 0 0\n");
    }
    void TearDown() override { unsetenv("XDG_CACHE_HOME"); }

    /// The path in the cache that is printed for a model.
    std::string cached_path(Words arguments) {
        arguments.emplace_back("--cached");
        const ToolRun run = convert(arguments);
        EXPECT_EQ(run.exit_code, 0);
        EXPECT_EQ(run.errors, "");
        EXPECT_TRUE(run.output.ends_with(".lwo\n")) << run.output;
        return run.output.substr(0, run.output.size() - 1);
    }

    /// Replaces an object in the cache, so that a new one can be recognised.
    static void mark(const std::string &path) { std::ofstream(path) << "mark"; }

    static bool is_marked(const std::string &path) {
        std::ifstream file(path);
        std::string text;
        return std::getline(file, text) && text == "mark";
    }
};

TEST_F(ConvertCache, KeepsAnObjectByItsModelsContent) {
    const std::string path = cached_path({"a.obj"});
    EXPECT_EQ(fs::path(path).filename(), "a.lwo");
    EXPECT_TRUE(path.starts_with(files.path("cache/zelvo/objects/"))) << path;
    mark(path);
    EXPECT_EQ(cached_path({"a.obj"}), path);
    EXPECT_TRUE(is_marked(path));
    // The same model elsewhere is the same; another way of making the object, or another model, is not.
    fs::create_directory(files.path("elsewhere"));
    files.write("elsewhere/a.obj", cached_model);
    EXPECT_EQ(cached_path({"elsewhere/a.obj"}), path);
    EXPECT_NE(cached_path({"a.obj", "--flip"}), path);
    files.write("a.obj", std::string(cached_model) + "\n");
    EXPECT_NE(cached_path({"a.obj"}), path);
}

TEST_F(ConvertCache, NoticesThatAnotherFileOfTheModelChanged) {
    const std::string path = cached_path({"a.obj"});
    mark(path);
    files.write("a.mtl", "newmtl m\nKd 0 0 1\n");
    EXPECT_EQ(cached_path({"a.obj"}), path);
    ASSERT_FALSE(is_marked(path));
    std::ifstream file(path, std::ios::binary);
    const ReadObject object =
        parse_object({std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()});
    EXPECT_EQ(object.surfaces.at(0).colour, (std::array<int, 3>{0, 0, 255}));
    mark(path);
    fs::remove(files.path("a.mtl"));
    cached_path({"a.obj"});
    EXPECT_FALSE(is_marked(path));
    mark(path);
    files.write("a.mtl", "newmtl m\nKd 0 1 0\n");
    cached_path({"a.obj"});
    EXPECT_FALSE(is_marked(path));
}

TEST_F(ConvertCache, DoesNotTakeAnOlderObjectForOneThatCouldNotBeSaved) {
    const std::string path = cached_path({"a.obj"});
    mark(path);
    files.write("a.mtl", "newmtl m\nKd 0 0 1\n");
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    // Enough for the list of the other files, but not for the object.
    const rlimit limited{120, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limited);
    EXPECT_EQ(convert({"a.obj", "--cached"}).exit_code, 1);
    setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_EQ(cached_path({"a.obj"}), path);
    EXPECT_FALSE(is_marked(path));
}

TEST_F(ConvertCache, CanBeDeletedAtAnyTime) {
    const std::string path = cached_path({"a.obj"});
    fs::remove(path);
    EXPECT_EQ(cached_path({"a.obj"}), path);
    EXPECT_TRUE(fs::exists(path));
    fs::remove(fs::path(path).parent_path() / "files");
    mark(path);
    cached_path({"a.obj"});
    EXPECT_FALSE(is_marked(path));
    fs::remove_all(files.path("cache"));
    EXPECT_EQ(cached_path({"a.obj"}), path);
    EXPECT_TRUE(fs::exists(path));
}

TEST_F(ConvertCache, DropsTheOldestObjectsWhenItIsFull) {
    using namespace std::chrono_literals;
    const fs::path objects = files.path("cache/zelvo/objects");
    const auto now = fs::file_time_type::clock::now();
    for (const auto &[name, age] : {std::pair{"old", 48h}, {"older", 72h}, {"recent", 1h}}) {
        fs::create_directories(objects / name);
        const fs::path object = objects / name / "x.lwo";
        std::ofstream(object) << "x";
        // Without blocks on the disk.
        fs::resize_file(object, std::uintmax_t{100} << 20);
        fs::last_write_time(object, now - age);
    }
    const std::string path = cached_path({"a.obj"});
    EXPECT_TRUE(fs::exists(path));
    EXPECT_TRUE(fs::exists(objects / "recent"));
    EXPECT_TRUE(fs::exists(objects / "old"));
    EXPECT_FALSE(fs::exists(objects / "older"));
}

TEST_F(ConvertCache, PrintsTheObjectItselfOnRequest) {
    const ToolRun first = convert({"--cached", "-o", "-", "a.obj"});
    EXPECT_EQ(parse_object(first.output).points.size(), 3U);
    EXPECT_TRUE(convert({"--cached", "-o", "-", "a.obj"}).output == first.output);
    EXPECT_TRUE(convert({"-o", "-", "a.obj"}).output == first.output);
    // A cache that cannot be written does not matter then, but is an error if its path is asked for.
    setenv("XDG_CACHE_HOME", files.write("taken", "a file").c_str(), 1);
    EXPECT_TRUE(convert({"--cached", "-o", "-", "a.obj"}).output == first.output);
    const ToolRun refused = convert({"--cached", "a.obj"});
    EXPECT_EQ(refused.exit_code, 1);
    EXPECT_EQ(refused.output, "");
    EXPECT_TRUE(refused.errors.starts_with("zelvo-convert: a.obj: cannot write ")) << refused.errors;
}

TEST_F(ConvertCache, IsWhereThumbnailsOfModelsComeFrom) {
    const ToolRun run =
        run_tool("zelvo-thumbnailer", {"a.obj", "a.png", "64"}, {files.folder(), files.folder(), {}});
    EXPECT_EQ(run.exit_code, 0);
    EXPECT_EQ(run.output + run.errors, "");
    EXPECT_GT(files.read("a.png").size(), 100U);
    const std::string path = cached_path({"a.obj", "--timeout", "9"});
    fs::copy(path, files.path("b.lwo"));
    run_tool("zelvo-thumbnailer", {"b.lwo", "b.png", "64"}, {files.folder(), files.folder(), {}});
    EXPECT_TRUE(files.read("a.png") == files.read("b.png"));
    // What the thumbnailer cannot use is refused as before.
    files.write("empty.obj", "v 0 0 0\n");
    const ToolRun refused =
        run_tool("zelvo-thumbnailer", {"empty.obj", "c.png", "64"}, {files.folder(), files.folder(), {}});
    EXPECT_EQ(refused.exit_code, 20);
    EXPECT_EQ(refused.errors, "zelvo-thumbnailer: empty.obj: This is not a(n) LW object\n");
}

} // namespace
