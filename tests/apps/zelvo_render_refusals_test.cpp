// SPDX-License-Identifier: MIT
// What zelvo-render refuses: bad options and places where it cannot write.
#include "picture_reading.h"
#include "render_test.h"

namespace {

class RenderRefuses : public RenderTest {};

TEST_F(RenderRefuses, OptionsThatMakeNoSense) {
    const std::vector<Words> misuses{
        {"--unknown"},
        {"--size", "320"},
        {"--size", "320x"},
        {"--size", "x256"},
        {"--size", "320x256x8"},
        {"--size", "wide"},
        {"--size", "320 x 256"},
        {"--size", "99999999999x1"},
        {"--size"},
        {"--mode-id", "first"},
        {"--mode-id", "4294967296"},
        {"--mode-id", "-2147483649"},
        {"--passes", "0"},
        {"--passes", "-3"},
        {"--passes", "many"},
        {"--passes", "1.5"},
        {"--passes", "99999999999"},
        {"--passes"},
        {"--from", "0"},
        {"--from", "last"},
        {"--every", "0"},
        {"--every", "-1"},
        {"--columns", "0"},
        {"--clock", "sun"},
        {"--tick", "-0.001"},
        {"--tick", "65536"},
        {"--tick", "soon"},
        {"--tick", "nan"},
        {"--png", "frame.png", "--passes", "2"},
        {"--png", "frame.png", "--passes", "3", "--every", "2"},
        {"--png", "frame.png", "--passes", "3", "--from", "2"},
        {"--png", "frame-%s.png"},
        {"--png", "frame-%.png"},
        {"--png", "frame-%d%.png"},
        {"--png", "frame-%d-%d.png"},
        {"--png", "frame-%n.png"},
        {"--png", "frame-%5.5d.png"},
    };
    for (const Words &misuse : misuses) {
        const ToolRun run = render_cube(joined({"--chunky", "frames", "--gif", "a.gif"}, misuse));
        std::string words;
        for (const std::string &word : misuse) {
            words += word + " ";
        }
        expect_misuse(run, words);
        EXPECT_EQ(run.output, "") << words;
        EXPECT_EQ(names_in(work.folder()), std::set<std::string>{}) << words;
    }
}

TEST_F(RenderRefuses, ToWriteIntoAFolderThatIsNotThere) {
    const std::vector<Words> outputs{
        {"--png", "none/frame-%d.png"},
        {"--gif", "none/a.gif"},
        {"--sheet", "none/sheet.png"},
    };
    for (const Words &output : outputs) {
        const ToolRun run = render_cube(joined({"--passes", "3"}, output));
        expect_misuse(run, output[0]);
        EXPECT_TRUE(run.errors.starts_with("zelvo-render: cannot write none/")) << run.errors;
        EXPECT_TRUE(run.errors.ends_with(": No such file or directory\n")) << run.errors;
        EXPECT_EQ(names_in(work.folder()), std::set<std::string>{}) << output[0];
    }
}

TEST_F(RenderRefuses, ToLoseWhatTheProgramHadPrintedBefore) {
    EXPECT_EQ(render_cube({"--png", "none/frame.png"}).output, "display parameters: 0x00000000, 100, 75\n");
}

TEST_F(RenderRefuses, ToPutFramesWhereAFileIs) {
    work.write("taken", "a file");
    for (const char *folder : {"taken", "taken/below"}) {
        const ToolRun run = render_cube({"--chunky", folder});
        expect_misuse(run, folder);
        EXPECT_EQ(run.output, "");
    }
    EXPECT_EQ(work.read("taken"), "a file");
}

TEST_F(RenderRefuses, ToReplaceAFolder) {
    std::filesystem::create_directory(work.path("taken"));
    for (const char *option : {"--png", "--gif", "--sheet"}) {
        const ToolRun run = render_cube({option, "taken"});
        expect_misuse(run, option);
        EXPECT_EQ(names_in(work.folder()), std::set<std::string>{"taken"}) << option;
    }
}

TEST_F(RenderRefuses, ToLeaveAHalfWrittenFileOnAFullDisk) {
    // The file beside the final one is a way to a device on which every write fails.
    const std::vector<std::pair<Words, std::string>> outputs{
        {{"--chunky", "frames"}, "frames/00002.pgm"},
        {{"--png", "frame-%d.png"}, "frame-2.png"},
        {{"--gif", "a.gif"}, "a.gif"},
        {{"--sheet", "sheet.png"}, "sheet.png"},
    };
    for (const auto &[option, name] : outputs) {
        std::filesystem::create_directories(work.path("frames"));
        std::filesystem::create_symlink("/dev/full", work.path(name + ".part"));
        const ToolRun run = render_cube(joined({"--passes", "3"}, option));
        expect_misuse(run, name);
        EXPECT_TRUE(run.errors.starts_with("zelvo-render: cannot write ")) << run.errors;
        EXPECT_TRUE(option[0] == "--gif" || run.errors.find(name) != std::string::npos) << run.errors;
        EXPECT_TRUE(option[0] == "--gif" || run.errors.find("No space left on device") != std::string::npos)
            << run.errors;
        EXPECT_FALSE(std::filesystem::exists(work.path(name))) << name;
        EXPECT_FALSE(std::filesystem::is_symlink(work.path(name + ".part"))) << name;
    }
    // What was complete before the disk was full stays.
    EXPECT_EQ(names_in(work.path("frames")), std::set<std::string>{"00001.pgm"});
    EXPECT_EQ(read_png(work.path("frame-1.png")).width, 100);
}

TEST_F(RenderRefuses, ToLeaveOneOutputUnfinishedBecauseOfAnother) {
    const ToolRun run = render_cube({"--passes", "3", "--gif", "a.gif", "--png", "none/frame-%d.png"});
    expect_misuse(run, "an animation beside pictures");
    EXPECT_EQ(names_in(work.folder()), std::set<std::string>{});
    const ToolRun at_the_end =
        render_cube({"--passes", "3", "--sheet", "none/s.png", "--png", "frame-%d.png"});
    expect_misuse(at_the_end, "a sheet beside pictures");
    EXPECT_EQ(names_in(work.folder()), (std::set<std::string>{"frame-1.png", "frame-2.png", "frame-3.png"}));
}

TEST_F(RenderRefuses, ToKeepAnAnimationOrASheetWithoutPictures) {
    expect_cube_run(render_cube({"--passes", "3", "--from", "4", "--gif", "a.gif", "--sheet", "s.png"}), 3);
    EXPECT_EQ(names_in(work.folder()), std::set<std::string>{});
}

TEST_F(RenderRefuses, ToRunWithoutAPlaceForTemporaryFolders) {
    const ToolPlace nowhere{work.folder(), work.path("none"), {}};
    const ToolRun run = run_tool("zelvo-render", cube_arguments({"--gif", "a.gif"}), nowhere);
    expect_misuse(run, "no temporary folder");
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(names_in(work.folder()), std::set<std::string>{});
    // With both volumes given it needs none.
    expect_cube_run(run_tool("zelvo-render", cube_arguments({"--env", ".", "--envarc", "."}), nowhere), 1);
}

TEST_F(RenderRefuses, NothingOnlyBecauseASettingsFolderIsMissing) {
    ToolRun run = render_cube(
        joined({"--env", "none", "--envarc", "none", "--passes", "2"}, script("1 key S\n1 key w\n")));
    const std::string reason = " was not saved: No such file or directory (none/Zelvo.vars)\n";
    EXPECT_EQ(run.errors, "zelvo: ENV:Zelvo.vars" + reason + "zelvo: ENVARC:Zelvo.vars" + reason);
    run.errors.clear();
    expect_cube_run(run, 2);
    EXPECT_EQ(names_in(work.folder()), std::set<std::string>{"script.txt"});
}

TEST_F(RenderRefuses, NoRunThatTheProgramEndsEarly) {
    const ToolRun run = render_cube(joined({"--passes", "9", "--gif", "a.gif", "--sheet", "s.png"},
                                           script("3 key t\nanswer mode 0 100 75\nanswer file none none\n")));
    EXPECT_EQ(run.exit_code, 20);
    EXPECT_EQ(read_gif(work.path("a.gif")).pictures.size(), 3U);
    EXPECT_EQ(names_in(work.folder()), (std::set<std::string>{"a.gif", "s.png", "script.txt"}));
}

} // namespace
