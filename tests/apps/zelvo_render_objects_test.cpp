// SPDX-License-Identifier: MIT
// Tests of several objects in one call of zelvo-render. Each has its own run, and its name in the outputs'
// names.
#include "picture_reading.h"
#include "render_test.h"

namespace {

class RenderObjects : public RenderTest {
protected:
    ToolRun render_objects(const Words &objects, const Words &arguments) const {
        return render(joined(
            objects, joined({"--envmap", test_file("golden/envmap.chunky"), "--size", "100x75"}, arguments)));
    }
};

TEST_F(RenderObjects, AreEachDrawnInARun) {
    const Words view{"--passes", "3", "--mode", "phong", "--gamma", "2,1,1"};
    const auto outputs = [](const std::string &name) {
        return Words{"--chunky",    name,      "--png",         name + "-%d.png", "--gif",
                     name + ".gif", "--sheet", name + "-s.png", "--y4m",          name + ".y4m"};
    };
    const ToolRun both = render_objects({object("cube"), object("torus")}, joined(view, outputs("all-%s")));
    std::string output;
    for (const std::string name : {"cube", "torus"}) {
        const ToolRun alone = render_objects({object(name)}, joined(view, outputs("one-" + name)));
        EXPECT_EQ(alone.exit_code, 0);
        output += alone.output;
        for (const char *file : {"/00001.pgm", "/00003.pgm", "-1.png", "-3.png", ".gif", "-s.png", ".y4m"}) {
            EXPECT_NE(work.read("one-" + name + file), "") << name << file;
            EXPECT_TRUE(work.read("all-" + name + file) == work.read("one-" + name + file)) << name << file;
        }
    }
    EXPECT_EQ(both.exit_code, 0);
    EXPECT_EQ(both.output, output);
    EXPECT_EQ(both.errors, "");
    EXPECT_FALSE(work.read("all-cube-3.png") == work.read("all-torus-3.png"));
    EXPECT_EQ(names_in(work.folder()).size(), 2U * 2U * 7U);
}

TEST_F(RenderObjects, NameOutputsWithoutFolderAndSuffix) {
    const std::vector<std::pair<std::string, std::string>> objects{
        {"plain", "plain"}, {"deep/two.parts.lwo", "two.parts"}, {"100%d.lwo", "100%d"}, {"%s.LWO", "%s"}};
    std::filesystem::create_directory(work.path("deep"));
    Words files;
    std::set<std::string> pictures{"deep"};
    for (const auto &[file, name] : objects) {
        std::filesystem::copy(object("cube"), work.path(file));
        files.push_back(file);
        pictures.insert({std::filesystem::path(file).begin()->string(), name + "-1%-" + name + ".png",
                         "g%%s-" + name + ".gif"});
    }
    const ToolRun run = render_objects(files, {"--png", "%s-%d%%-%s.png", "--gif", "g%%s-%s.gif"});
    EXPECT_EQ(run.exit_code, 0) << run.errors;
    EXPECT_EQ(names_in(work.folder()), pictures);
    // With a single object the outputs may also have its name, but need not.
    EXPECT_EQ(render_objects({"plain"}, {"--png", "one-%s.png", "--gif", "one.gif"}).exit_code, 0);
    pictures.insert({"one-plain.png", "one.gif"});
    EXPECT_EQ(names_in(work.folder()), pictures);
}

TEST_F(RenderObjects, AreAllDrawnEvenIfOneFails) {
    work.write("bad.lwo", "no object");
    const Words three{object("cube"), "bad.lwo", object("torus")};
    const ToolRun run = render_objects(three, {"--png", "%s.png"});
    EXPECT_EQ(run.exit_code, 20);
    EXPECT_EQ(names_in(work.folder()), (std::set<std::string>{"bad.lwo", "cube.png", "torus.png"}));
    // The first failure counts: here an output that cannot be written.
    std::filesystem::create_directory(work.path("cube.gif"));
    EXPECT_EQ(render_objects(three, {"--gif", "%s.gif"}).exit_code, 2);
    EXPECT_EQ(names_in(work.folder()),
              (std::set<std::string>{"bad.lwo", "cube.gif", "cube.png", "torus.gif", "torus.png"}));
}

TEST_F(RenderObjects, NeedDifferentNames) {
    const Words two{object("cube"), object("torus")};
    for (const auto &[option, name] : std::vector<std::pair<std::string, std::string>>{{"--chunky", "frames"},
                                                                                       {"--png", "a.png"},
                                                                                       {"--gif", "a%%s.gif"},
                                                                                       {"--sheet", "a%.png"},
                                                                                       {"--y4m", "-"}}) {
        const ToolRun run = render_objects(two, {option, name});
        EXPECT_EQ(run.exit_code, 2);
        EXPECT_EQ(run.output, "");
        EXPECT_EQ(run.errors, option + ": needs %s for the object's name: " + name +
                                  "\nRun with --help for more information.\n");
    }
    std::filesystem::create_directory(work.path("a"));
    std::filesystem::copy(object("torus"), work.path("a/cube.lwo"));
    const ToolRun same = render_objects({object("cube"), "a/cube.lwo"}, {"--png", "%s.png"});
    EXPECT_EQ(same.exit_code, 2);
    EXPECT_EQ(same.errors, "OBJECT: two have the name cube\nRun with --help for more information.\n");
    EXPECT_EQ(names_in(work.folder()), std::set<std::string>{"a"});
    // Without an output, equal names are allowed.
    EXPECT_EQ(render_objects({object("cube"), "a/cube.lwo"}, {}).exit_code, 0);
}

TEST_F(RenderObjects, DoNotIncludeTheKeyword) {
    const ToolRun run = render_objects({"FILE", object("cube")}, {"--png", "%s.png"});
    expect_cube_run(run, 1);
    EXPECT_EQ(names_in(work.folder()), std::set<std::string>{"cube.png"});
    expect_cube_run(render_objects({"file=" + object("cube")}, {"--gif", "%s.gif"}), 1);
    EXPECT_EQ(names_in(work.folder()), (std::set<std::string>{"cube.gif", "cube.png"}));
}

TEST_F(RenderObjects, EndWhenOneIsInterrupted) {
    for (const int signal : {SIGINT, SIGTERM}) {
        std::filesystem::remove_all(work.path("cube"));
        ToolPlace place{work.folder(), temporary.folder(), {}};
        place.meanwhile = [this, signal](pid_t process) {
            for (int tries = 0; tries < 60000 && !std::filesystem::exists(work.path("cube/00003.pgm"));
                 ++tries) {
                usleep(1000);
            }
            kill(process, signal);
        };
        const ToolRun run = run_tool("zelvo-render",
                                     {object("cube"), object("torus"), "--envmap",
                                      test_file("golden/envmap.chunky"), "--size", "100x75", "--passes",
                                      "20000000", "--chunky", "%s", "--gif", "%s.gif", "--every", "1000000"},
                                     place);
        EXPECT_EQ(run.exit_code, 128 + signal);
        EXPECT_TRUE(run.output.ends_with(" fps\nchangescreenbuffer done\n")) << run.output;
        EXPECT_EQ(names_in(work.folder()), (std::set<std::string>{"cube", "cube.gif"}));
        EXPECT_EQ(read_gif(work.path("cube.gif")).pictures.size(), 1U);
    }
}

} // namespace
