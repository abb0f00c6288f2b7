// SPDX-License-Identifier: MIT
// What zelvo-convert refuses: each time with one line on standard error and exit code 1, and without an
// output.
#include "convert_test.h"
#include "support/model_builder.h"

#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

namespace {

constexpr char one_triangle[] = "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n";

class ConvertRefuses : public ConvertTest {
protected:
    /// Checks that this one input is refused for this reason, and that no file appears.
    void expect_refusal(const std::string &input, const std::string &reason, const Words &options = {}) {
        const Words before = names();
        Words arguments{input};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const ToolRun run = convert(arguments);
        EXPECT_EQ(run.exit_code, 1) << input;
        EXPECT_EQ(run.output, "") << input;
        EXPECT_TRUE(run.errors.starts_with("zelvo-convert: ")) << run.errors;
        EXPECT_NE(run.errors.find(reason), std::string::npos) << run.errors;
        EXPECT_EQ(std::ranges::count(run.errors, '\n'), 1) << run.errors;
        EXPECT_EQ(names(), before) << input;
    }
};

TEST_F(ConvertRefuses, WhatIsNoFileWithAModel) {
    expect_refusal("none.obj", "none.obj: No such file or directory");
    expect_refusal(files.folder(), ": Is a directory");
    expect_refusal("/dev/zero", "/dev/zero: not a regular file");
    ASSERT_EQ(mkfifo(files.path("pipe.obj").c_str(), 0600), 0);
    expect_refusal("pipe.obj", "pipe.obj: not a regular file");
    files.write("empty.obj", "");
    expect_refusal("empty.obj", "empty.obj: it is empty");
    files.write("a.unknown", "something");
    expect_refusal("a.unknown", "a.unknown: cannot be read: ");
    files.write("garbage.fbx", std::string(1000, '\x5A'));
    expect_refusal("garbage.fbx", "garbage.fbx: cannot be read: ");
    files.write("bad\nname.obj", "");
    expect_refusal("bad\nname.obj", "bad?name.obj: it is empty");
}

TEST_F(ConvertRefuses, ModelsWithoutPolygons) {
    files.write("points.ply", "ply\nformat ascii 1.0\nelement vertex 2\nproperty float x\nproperty float y\n"
                              "property float z\nend_header\n0 0 0\n1 1 1\n");
    expect_refusal("points.ply", "points.ply: it has only points and lines, no polygons");
    files.write("lines.obj", "v 0 0 0\nv 1 0 0\nl 1 2\n");
    expect_refusal("lines.obj", "lines.obj: it has only points and lines, no polygons");
    files.write("flat.obj", "v 0 0 0\nv 1 0 0\nv 2 0 0\nf 1 2 3\n");
    expect_refusal("flat.obj", "flat.obj: none of its polygons has an area");
}

TEST_F(ConvertRefuses, ToReplaceAnInput) {
    files.write("a.obj", one_triangle);
    expect_refusal("a.obj", "a.obj: its object would replace an input (", {"-o", "./a.obj"});
    EXPECT_EQ(files.read("a.obj"), one_triangle);
    // The object of the first input would have the name of the second.
    files.write("a.lwo", "not read yet");
    const ToolRun run = convert({"a.obj", "./a.lwo"});
    EXPECT_EQ(run.exit_code, 1);
    EXPECT_EQ(run.output, "");
    EXPECT_TRUE(run.errors.starts_with("zelvo-convert: a.obj: its object would replace an input ("))
        << run.errors;
    EXPECT_NE(run.errors.find("\nzelvo-convert: ./a.lwo: its object would replace an input ("),
              std::string::npos)
        << run.errors;
    EXPECT_EQ(files.read("a.lwo"), "not read yet");
}

TEST_F(ConvertRefuses, OutputsThatCannotBeWritten) {
    files.write("a.obj", one_triangle);
    expect_refusal("a.obj", "a.obj: cannot write a.obj/b.lwo: Not a directory", {"-o", "a.obj/b.lwo"});
    expect_refusal("a.obj", "cannot write /dev/full: ", {"-o", "/dev/full"});
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit limited{100, before.rlim_max};
    files.write("old.lwo", "old");
    setrlimit(RLIMIT_FSIZE, &limited);
    expect_refusal("a.obj", "a.obj: cannot write out.lwo: File too large", {"-o", "out.lwo"});
    expect_refusal("a.obj", "a.obj: cannot write old.lwo: File too large", {"-o", "old.lwo"});
    setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_EQ(files.read("old.lwo"), "old");
}

TEST_F(ConvertRefuses, NothingElseBecauseOfOneBadInput) {
    files.write("a.obj", one_triangle);
    files.write("b.obj", "");
    files.write("c.obj", one_triangle);
    const ToolRun run = convert({"a.obj", "b.obj", "c.obj", "-d", "made/here"});
    EXPECT_EQ(run.exit_code, 1);
    EXPECT_EQ(run.errors, "zelvo-convert: b.obj: it is empty\n");
    EXPECT_EQ(parse_object(files.read("made/here/a.lwo")).polygons.size(), 1U);
    EXPECT_EQ(files.read("made/here/c.lwo"), files.read("made/here/a.lwo"));
    EXPECT_FALSE(std::filesystem::exists(files.path("made/here/b.lwo")));
}

TEST_F(ConvertRefuses, TwoInputsForOneOutput) {
    files.write("a.obj", one_triangle);
    files.write("a.OBJ", "v 0 0 0\nv 1 0 0\nv 0 1 0\nv 1 1 0\nf 1 2 4 3\n");
    ToolRun run = convert({"a.obj", "a.OBJ"});
    EXPECT_EQ(run.exit_code, 1);
    EXPECT_EQ(run.errors, "zelvo-convert: a.OBJ: another input becomes a.lwo\n");
    EXPECT_EQ(parse_object(files.read("a.lwo")).points.size(), 3U);
    run = convert({"a.OBJ", "./a.obj"});
    EXPECT_EQ(run.errors, "zelvo-convert: ./a.obj: another input becomes ./a.lwo\n");
    EXPECT_EQ(parse_object(files.read("a.lwo")).points.size(), 4U);
}

TEST_F(ConvertRefuses, AWrongCommandLine) {
    files.write("a.obj", one_triangle);
    for (const Words &arguments :
         {Words{}, Words{"a.obj", "--up", "X"}, Words{"a.obj", "-o", "b.lwo", "-d", "c"},
          Words{"a.obj", "--unknown"}, Words{"a.obj", "a.obj", "-o", "b.lwo"},
          Words{"a.obj", "--points", "65536"}, Words{"a.obj", "--points", "2"},
          Words{"a.obj", "--polygons", "0"}, Words{"a.obj", "a.obj", "--view"},
          Words{"a.obj", "--info", "--view"}, Words{"a.obj", "--view", "-o", "-"},
          Words{"a.obj", "--cached", "-o", "b.lwo"}, Words{"a.obj", "--cached", "-d", "c"}}) {
        const ToolRun run = convert(arguments);
        EXPECT_EQ(run.exit_code, 2) << testing::PrintToString(arguments);
        EXPECT_EQ(run.output, "");
        EXPECT_NE(run.errors, "");
    }
    EXPECT_EQ(names(), (Words{"a.obj"}));
}

using ConvertDescribes = ConvertTest;

TEST_F(ConvertDescribes, WhatAModelWouldBecome) {
    files.write("a.obj", "v 0 0 0\nv 1 0 0\nv 0 2.5 -3\nf 1 2 3\n");
    const ToolRun run = convert({"--info", "a.obj"});
    EXPECT_EQ(run.exit_code, 0);
    EXPECT_EQ(run.output, "a.obj: 3 points, 1 polygon, 1 surface (Wavefront Object Importer)\n"
                          "  x from 0 to 1, y from 0 to 2.5, z from 0 to 3\n"
                          "  surface \"DefaultMaterial\": 1 polygon\n");
    EXPECT_EQ(names(), (Words{"a.obj"}));
}

TEST_F(ConvertDescribes, ObjectsAsTheViewerTakesThem) {
    const std::vector<Vec3> points{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    const std::string rest = chunk("SRFS", std::string("Wood\0\0Tin\0", 10)) +
                             claiming("POLS", 100, word_data({3, 0, 1, 2, 1, 3, 0, 1, 9, 1, 1, 0, 1}));
    files.write("a.lwo", form("LWOB", rest));
    files.write("b.lwo", form("LWOB", chunk("PNTS", point_data(points)) + rest));
    const ToolRun refused = convert({"--info", "a.lwo"});
    EXPECT_EQ(refused.exit_code, 1);
    EXPECT_EQ(refused.errors, "zelvo-convert: a.lwo: the viewer refuses it: nincs polygon az objektben!\n");
    EXPECT_EQ(refused.output, "  chunk SRFS: 10 bytes\n"
                              "  chunk POLS: 100 bytes, of which the file has 26\n"
                              "  surface \"Wood\"\n"
                              "  surface \"Tin\"\n");
    const ToolRun cut = convert({"--info", "b.lwo"});
    EXPECT_EQ(cut.exit_code, 0);
    EXPECT_EQ(cut.errors, "");
    EXPECT_TRUE(cut.output.starts_with("b.lwo: 3 points, ")) << cut.output;
    for (const std::string said :
         {": the viewer takes it\n", "  x from 0 to 1, y from 0 to 1, z from 0 to 0\n",
          "  37 words of polygons past the end of the file, all zero\n",
          "  1 polygon not drawn: a point is missing\n"}) {
        EXPECT_NE(cut.output.find(said), std::string::npos) << said << cut.output;
    }
}

} // namespace
