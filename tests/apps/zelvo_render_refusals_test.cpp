// SPDX-License-Identifier: MIT
// Tests of what zelvo-render refuses: bad options, and outputs that it cannot write.
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
        {"--png", "frame-%i.png"},
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

TEST_F(RenderRefuses, ViewsThatNoKeyCanSet) {
    const std::string modes =
        "--mode: not one of effect, envmap, texturemap, lightsourced, phong, z-light, dots, 0 to 6: ";
    const std::string spins = "--spin: not from -4 to 4: ";
    const std::string tilts = "--tilt: not X,Y with two numbers from -32768 to 32767: ";
    const std::string styles = "--clear: not one of clear, fade, blur, rise, 0 to 3: ";
    const std::string gammas = "--gamma: not R,G,B with three numbers from 0.02 to 3: ";
    const std::vector<std::pair<Words, std::string>> misuses{
        {{"--mode", "7"}, modes + "7"},
        {{"--mode", "-1"}, modes + "-1"},
        {{"--mode", "01"}, modes + "01"},
        {{"--mode", "phongs"}, modes + "phongs"},
        {{"--mode", "Dots"}, modes + "Dots"},
        {{"--mode"}, "--mode: 1 required NAME missing"},
        {{"--spin=4.0000001"}, spins + "4.0000001"},
        {{"--spin=-4.0000001"}, spins + "-4.0000001"},
        {{"--spin=nan"}, spins + "nan"},
        {{"--spin=1,1"}, spins + "1,1"},
        {{"--spin=fast"}, spins + "fast"},
        {{"--tilt", "32768,0"}, tilts + "32768,0"},
        {{"--tilt", "-32769,0"}, tilts + "-32769,0"},
        {{"--tilt", "0,32768"}, tilts + "0,32768"},
        {{"--tilt", "0,-32769"}, tilts + "0,-32769"},
        {{"--tilt", "1"}, tilts + "1"},
        {{"--tilt", "1,"}, tilts + "1,"},
        {{"--tilt", ",1"}, tilts + ",1"},
        {{"--tilt", "1,2,"}, tilts + "1,2,"},
        {{"--tilt", "1,2,3"}, tilts + "1,2,3"},
        {{"--tilt", "1;2"}, tilts + "1;2"},
        {{"--tilt", "1.5,2"}, tilts + "1.5,2"},
        {{"--clear", "4"}, styles + "4"},
        {{"--clear", "-1"}, styles + "-1"},
        {{"--clear", "smear"}, styles + "smear"},
        {{"--clear", "fade", "--clear", "blur"}, "--clear: At Most 1 required but received 2"},
        {{"--gamma", "0.0199999,1,1"}, gammas + "0.0199999,1,1"},
        {{"--gamma", "1,3.0000001,1"}, gammas + "1,3.0000001,1"},
        {{"--gamma", "1,1,0"}, gammas + "1,1,0"},
        {{"--gamma", "1,1,nan"}, gammas + "1,1,nan"},
        {{"--gamma", "1,1"}, gammas + "1,1"},
        {{"--gamma", "1,1,1,1"}, gammas + "1,1,1,1"},
        {{"--gamma", "2"}, gammas + "2"},
        {{"--turntable", "0"}, "--turntable: Value 0 not in range 1 to 1000000"},
        {{"--turntable", "1000001"}, "--turntable: Value 1000001 not in range 1 to 1000000"},
        {{"--turntable", "8", "--mode", "effect"}, "--turntable: the effect changes with every turn"},
        {{"--turntable", "8", "--spin"}, "--spin excludes --turntable"},
        {{"--turntable", "8", "--passes", "9"}, "--passes excludes --turntable"},
        {{"--turntable", "8", "--from", "9"}, "--from excludes --turntable"},
        {{"--turntable", "8", "--every", "2"}, "--every excludes --turntable"},
        {{"--turntable", "8", "--png", "a.png"}, "--png: needs one number such as %05d for the pass: a.png"},
        {{"--background", "white", "--png", "a.png"}, "--background: white not in {black,transparent}"},
        {{"--background", "transparent"}, "--background transparent requires --png"},
        {{"--env", ".", "--mode", "0"}, "--env excludes --mode"},
        {{"--env", ".", "--spin"}, "--env excludes --spin"},
        {{"--env", ".", "--clear", "0"}, "--env excludes --clear"},
        {{"--env", ".", "--dots"}, "--env excludes --dots"},
        {{"--env", ".", "--gamma", "1,1,1"}, "--env excludes --gamma"},
        {{"--env", ".", "--turntable", "8"}, "--env excludes --turntable"},
    };
    for (const auto &[misuse, errors] : misuses) {
        const ToolRun run = render_cube(joined({"--chunky", "frames", "--gif", "a.gif"}, misuse));
        EXPECT_EQ(run.exit_code, 2) << errors;
        EXPECT_EQ(run.errors, errors + "\nRun with --help for more information.\n");
        EXPECT_EQ(run.output, "") << errors;
        EXPECT_EQ(names_in(work.folder()), std::set<std::string>{}) << errors;
    }
    // A settings folder may be combined with every option that is not a setting.
    expect_cube_run(render_cube({"--env", ".", "--tilt", "1,1", "--no-texts", "--background", "transparent",
                                 "--png", "a.png"}),
                    3);
}

TEST_F(RenderRefuses, ToWriteIntoAMissingFolder) {
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

TEST_F(RenderRefuses, OutputsWithoutLosingWhatTheProgramPrinted) {
    EXPECT_EQ(render_cube({"--png", "none/frame.png"}).output, "display parameters: 0x00000000, 100, 75\n");
}

TEST_F(RenderRefuses, ToPutFramesIntoAFile) {
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
    // The temporary file is a link to a device on which every write fails.
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
    // Files that were complete before the disk was full remain.
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

TEST_F(RenderRefuses, ToRunWithoutATemporaryFolder) {
    const ToolPlace nowhere{work.folder(), work.path("none"), {}};
    const ToolRun run = run_tool("zelvo-render", cube_arguments({"--gif", "a.gif"}), nowhere);
    expect_misuse(run, "no temporary folder");
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(names_in(work.folder()), std::set<std::string>{});
    // It needs none if both volumes are given.
    expect_cube_run(run_tool("zelvo-render", cube_arguments({"--env", ".", "--envarc", "."}), nowhere), 1);
}

TEST_F(RenderRefuses, NoRunBecauseASettingsFolderIsMissing) {
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
