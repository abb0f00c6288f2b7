// SPDX-License-Identifier: MIT
// Tests of zelvo-render's input scripts.
#include "platform/shared/frame_sum.h"
#include "render_test.h"

#include <array>
#include <cstdio>

namespace {

class RenderScript : public RenderTest {
protected:
    /// Runs the cube with this script and settings folders, and returns the settings that it saves in its
    /// last pass.
    std::string saved_after(const std::string &lines, int passes = 3) const {
        std::filesystem::create_directories(work.path("env"));
        std::filesystem::remove(work.path("env/Zelvo.vars"));
        const ToolRun run = render_cube(joined({"--env", "env", "--passes", std::to_string(passes)},
                                               script(lines + std::to_string(passes) + " key s\n")));
        EXPECT_EQ(run.exit_code, 0) << run.errors << run.output;
        return work.read("env/Zelvo.vars");
    }

    static bool contains(const std::string &text, const std::string &line) {
        return text.find(line + "\n") != std::string::npos;
    }
};

TEST_F(RenderScript, RepeatsARecordedRunAndNoticesOtherFrames) {
    const std::string start = "object knot\nfile knot " + object("cube") + "\nfile Zelvo_envmap.chunky " +
                              test_file("golden/envmap.chunky") +
                              "\nenvarc rotate: 9\nenv gammas: 1 1 1\nenv rotate: 1\n1 key s\n";
    const ToolRun wrong = render(script(start + "passes 3\nframes 2 0x0000000000000000\n"));
    EXPECT_EQ(wrong.exit_code, 2);
    EXPECT_EQ(wrong.errors, "zelvo-render: the frames are not those of the recorded run\n");
    EXPECT_NE(wrong.output.find("number of frames: 3\n"), std::string::npos);

    ASSERT_EQ(render(joined({"--chunky", "frames"}, script(start + "passes 2\n"))).exit_code, 0);
    host::FrameSum sum;
    for (const char *name : {"frames/00001.pgm", "frames/00002.pgm"}) {
        const std::string pgm = work.read(name);
        const std::string pixels = pgm.substr(pgm.size() - 320 * 256);
        sum.add({reinterpret_cast<const std::uint8_t *>(pixels.data()), pixels.size()}, 320, 256);
    }
    std::array<char, 40> frames{};
    std::snprintf(frames.data(), frames.size(), "frames 2 0x%016llx\n",
                  static_cast<unsigned long long>(sum.value()));
    const ToolRun right = render(script(start + "passes 3\n" + frames.data()));
    EXPECT_EQ(right.exit_code, 0) << right.errors;
    // What the command line says instead is not compared.
    EXPECT_EQ(render(joined({"--passes", "1"}, script(start + "frames 9 0x0000000000000000\n"))).exit_code,
              0);
    // The settings are those of the script, or of the command line.
    std::filesystem::create_directory(work.path("env"));
    EXPECT_EQ(render(joined({"--env", "env"}, script(start + "passes 1\n"))).exit_code, 0);
    EXPECT_NE(work.read("env/Zelvo.vars").find("rotate: 0.000000\n"), std::string::npos);
    const ToolRun both = render(joined({"--spin"}, script(start)));
    EXPECT_EQ(both.exit_code, 2);
    EXPECT_NE(both.errors.find("excludes"), std::string::npos) << both.errors;
}

TEST_F(RenderScript, PressesKeysByCharacterOrCode) {
    EXPECT_TRUE(contains(saved_after("1 key b\n"), "clear style: 1"));
    EXPECT_TRUE(contains(saved_after("1 key 0x62\n"), "clear style: 1"));
    EXPECT_TRUE(contains(saved_after("1 key b\n2 key b\n3 key b\n"), "clear style: 3"));
    const ToolRun run = render_cube(joined({"--passes", "9"}, script("4 key 0x1B\n")));
    expect_cube_run(run, 4);
}

TEST_F(RenderScript, PressesRawKeysAndButtons) {
    EXPECT_TRUE(contains(saved_after("1 rawkey 0x4E\n1 rawkey 0x4E\n"), "rotate: 0.200000"));
    EXPECT_TRUE(contains(saved_after("1 rawkey 0x4c\n"), "dot lum: 26624"));
    EXPECT_TRUE(contains(saved_after("1 button right\n2 button right\n"), "obj style: 3"));
    expect_cube_run(render_cube(joined({"--passes", "9"}, script("3 button left\n"))), 3);
}

TEST_F(RenderScript, MovesTheMouseInTheGivenPass) {
    const auto frames_of = [this](const std::string &lines) {
        std::filesystem::remove_all(work.path("frames"));
        const ToolRun run = render_cube(joined({"--passes", "5", "--chunky", "frames"}, script(lines)));
        expect_cube_run(run, 5);
        Words frames;
        for (int pass = 1; pass <= 5; ++pass) {
            frames.push_back(work.read("frames/0000" + std::to_string(pass) + ".pgm"));
        }
        return frames;
    };
    const Words still = frames_of("");
    EXPECT_EQ(still[1], still[4]);
    // Moved in pass 2, drawn in pass 3, shown in pass 4.
    const Words moved = frames_of("2 move -20 35\n");
    EXPECT_EQ(moved[2], still[2]);
    EXPECT_NE(moved[3], still[3]);
    EXPECT_EQ(moved[4], moved[3]);
    EXPECT_EQ(frames_of("2 move -20 0\n2 move 0 35\n"), moved);
    EXPECT_EQ(frames_of("2 move -32768 32767\n2 move 32748 -32732\n"), moved);
}

TEST_F(RenderScript, KeepsTheOrderWithinAPassAndSortsPasses) {
    EXPECT_TRUE(contains(saved_after("2 key R\n1 key b\n"), "clear style: 0"));
    EXPECT_TRUE(contains(saved_after("1 key R\n1 key b\n"), "clear style: 1"));
    EXPECT_TRUE(contains(saved_after("1 key b\n1 key R\n"), "clear style: 0"));
    // Esc comes after the other events of the last pass.
    EXPECT_TRUE(contains(saved_after("1 key b\n", 1), "clear style: 1"));
}

TEST_F(RenderScript, SkipsCommentsBlanksAndEmptyLines) {
    EXPECT_TRUE(contains(saved_after("# 1 key p\n\n   \n  # 1 key d\n\t1   key\tb  \n"), "clear style: 1"));
    EXPECT_TRUE(contains(saved_after("1 key b\r\n\r\n2 key b\r\n"), "clear style: 2"));
    EXPECT_TRUE(contains(saved_after("1 key #\n1 key \"\n1 key b\n"), "clear style: 1"));
}

TEST_F(RenderScript, AnswersTheScreenModeRequesters) {
    const ToolRun run = render_cube(joined({"--passes", "3"}, script("answer mode 0x29004 64 48\n"
                                                                     "1 key m\n"
                                                                     "answer cancel\n"
                                                                     "2 key m\n"
                                                                     "answer mode 7 80 60\n")));
    EXPECT_EQ(run.exit_code, 0);
    EXPECT_EQ(run.output, "display parameters: 0x00029004, 64, 48\n"
                          "changescreenbuffer done\n"
                          "display parameters: 0x00000000, 100, 75\n"
                          "changescreenbuffer done\n"
                          "display parameters: 0x00000007, 80, 60\n"
                          "number of frames: 3\n"
                          "all time: 0.046875  average frametime: 0.015625\n"
                          "average framerate: 64.000000 fps\n"
                          "changescreenbuffer done\n");
}

TEST_F(RenderScript, AnswersFileRequesters) {
    std::filesystem::create_directory(work.path("my maps"));
    work.write("my maps/steel", std::string(65536, 's'));
    work.write("plain", std::string(65536, 'p'));
    const ToolRun run = render_cube(joined({"--passes", "4"}, script("1 key t\n"
                                                                     "answer mode 0 100 75\n"
                                                                     "answer file \"my maps\" steel\n"
                                                                     "2 key t\n"
                                                                     "answer file \"\" plain\n"
                                                                     "3 key t\n"
                                                                     "answer cancel\n")));
    EXPECT_EQ(run.exit_code, 0) << run.errors;
    EXPECT_TRUE(run.output.starts_with("display parameters: 0x00000000, 100, 75\n"
                                       "envmap filename: my maps/steel\n"
                                       "envmap filename: plain\n"
                                       "envmap filename: Zelvo_envmap.chunky\n"
                                       "number of frames: 4\n"))
        << run.output;
}

TEST_F(RenderScript, EndsTheProgramByChoosingAMissingFile) {
    const ToolRun run =
        render_cube(joined({"--passes", "4", "--chunky", "frames"}, script("2 key t\n"
                                                                           "answer mode 0 100 75\n"
                                                                           "answer file a b\n")));
    EXPECT_EQ(run.exit_code, 20);
    EXPECT_EQ(run.output, "display parameters: 0x00000000, 100, 75\n"
                          "envmap filename: a/b\n"
                          "changescreenbuffer done\n"
                          "envmap file open error\n");
    EXPECT_EQ(names_in(work.path("frames")), (std::set<std::string>{"00001.pgm", "00002.pgm"}));
}

TEST_F(RenderScript, IsRefusedWithItsLineBeforeAnythingRuns) {
    // The InputScript tests have more malformed lines.
    for (const std::string line : {"1 button middle", "answer mode 0 wide 256"}) {
        const ToolRun run = render_cube(
            joined({"--chunky", "frames", "--gif", "a.gif", "--png", "p.png"},
                   script("# what follows is fine\n1 key b\n\n" + line + "\n1 key also wrong\n")));
        expect_misuse(run, line);
        EXPECT_EQ(run.output, "") << line;
        EXPECT_NE(run.errors.find("script.txt:4: "), std::string::npos) << line << ": " << run.errors;
        EXPECT_EQ(names_in(work.folder()), std::set<std::string>{"script.txt"}) << line;
    }
}

TEST_F(RenderScript, CannotBeAFolder) {
    std::filesystem::create_directory(work.path("folder"));
    const ToolRun run = render_cube({"--input", "folder"});
    expect_misuse(run, "a folder");
    EXPECT_EQ(run.output, "");
}

TEST_F(RenderScript, IsRefusedForALastLineWithoutALineEnd) {
    const ToolRun run = render_cube(script("1 key b\n1 keys b"));
    expect_misuse(run, "no line end");
    EXPECT_NE(run.errors.find("script.txt:2: "), std::string::npos) << run.errors;
}

TEST_F(RenderScript, MustExist) {
    const ToolRun missing = render_cube({"--input", "missing.txt", "--gif", "a.gif"});
    expect_misuse(missing, "missing");
    EXPECT_NE(missing.errors.find("missing.txt"), std::string::npos) << missing.errors;
    EXPECT_EQ(missing.output, "");
}

} // namespace
