// SPDX-License-Identifier: MIT
// Tests of zelvo-render as a user runs it: the program's output and exit code, its volumes, clock and end.
#include "picture_reading.h"
#include "render_test.h"
#include "support/golden_cases.h"
#include "support/viewer_test.h"

#include <chrono>
#include <fstream>
#include <iterator>

namespace {

class ZelvoRender : public RenderTest {};

TEST_F(ZelvoRender, PrintsOnlyWhatTheProgramPrints) {
    expect_cube_run(render_cube(), 1);
    EXPECT_EQ(names_in(work.folder()), std::set<std::string>{});
}

TEST_F(ZelvoRender, PrintsTheSameForAnyOutputs) {
    expect_cube_run(render_cube({"--passes", "3", "--chunky", "frames", "--png", "p-%d.png", "--gif", "a.gif",
                                 "--sheet", "s.png"}),
                    3);
}

TEST_F(ZelvoRender, EndsAfterItsPasses) {
    for (const int passes : {1, 2, 40}) {
        expect_cube_run(render_cube({"--passes", std::to_string(passes)}), passes);
    }
}

TEST_F(ZelvoRender, AnswersTheScreenModeRequesterByItsOptions) {
    const ToolRun run = render({object("cube"), "--envmap", test_file("golden/envmap.chunky"), "--size",
                                "333x217", "--mode-id", "4294901761"});
    EXPECT_EQ(run.exit_code, 0);
    EXPECT_TRUE(run.output.starts_with("display parameters: 0xffff0001, 333, 217\n")) << run.output;
    const ToolRun negative = render_cube({"--mode-id", "-65535"});
    EXPECT_TRUE(negative.output.starts_with("display parameters: 0xffff0001, 100, 75\n")) << negative.output;
}

TEST_F(ZelvoRender, OpensADisplayOf320x256WithoutASize) {
    const ToolRun run = render({object("cube"), "--envmap", test_file("golden/envmap.chunky")});
    EXPECT_EQ(run.exit_code, 0);
    EXPECT_TRUE(run.output.starts_with("display parameters: 0x00000000, 320, 256\n")) << run.output;
}

TEST_F(ZelvoRender, LetsTheProgramRefuseAnImpossibleSize) {
    const ToolRun none = render({object("cube"), "--size", "0x256"});
    EXPECT_EQ(none.exit_code, 20);
    EXPECT_EQ(none.output, "display parameters: 0x00000000, 0, 256\nCouldn't open screen\n");
    const ToolRun negative = render({object("cube"), "--size=-100x75"});
    EXPECT_EQ(negative.exit_code, 20);
    EXPECT_EQ(negative.output,
              "display parameters: 0x00000000, -100, 75\nCouldn't allocate *chunkybuf1 memory\n");
}

TEST_F(ZelvoRender, TakesTheTextureOfTheCurrentDirectoryElseTheInstalledOne) {
    const std::string installed = std::string(ZELVO_DATA_FOLDER) + "/Zelvo_envmap.chunky";
    const auto frame = [&](const Words &more) {
        const Words arguments{object("torus"), "--size", "100x75", "--passes", "2", "--chunky", "frames"};
        EXPECT_EQ(render(joined(arguments, more)).exit_code, 0);
        return work.read("frames/00002.pgm");
    };
    const std::string with_installed = frame({});
    EXPECT_EQ(with_installed, frame({"--envmap", installed}));
    std::filesystem::copy(test_file("golden/envmap.chunky"), work.path("Zelvo_envmap.chunky"));
    const std::string with_local = frame({});
    EXPECT_EQ(with_local, frame({"--envmap", test_file("golden/envmap.chunky")}));
    EXPECT_NE(with_local, with_installed);
}

TEST_F(ZelvoRender, UsesTheTextureThatItIsGiven) {
    work.write("white", std::string(65536, '\xFF'));
    expect_cube_run(render({object("cube"), "--envmap", "white", "--size", "100x75", "--passes", "2",
                            "--chunky", "frames"}),
                    2);
    const IndexedPicture frame = read_pgm(work.read("frames/00002.pgm"));
    std::set<int> levels(frame.pixels.begin(), frame.pixels.end());
    EXPECT_EQ(levels, (std::set<int>{0, 255}));
}

TEST_F(ZelvoRender, ReadsAndWritesSettingsInItsFolders) {
    for (const char *folder : {"env", "envarc"}) {
        std::filesystem::create_directory(work.path(folder));
    }
    const Words folders{"--env", "env", "--envarc", "envarc", "--passes", "4"};
    expect_cube_run(render_cube(joined(folders, script("1 key p\n1 key s\n2 key d\n2 key b\n2 key S\n"))), 4);
    const std::map<std::string, std::string> saved{
        {"dots", "1"}, {"clear style", "1"}, {"width", "100"}, {"height", "75"}};
    EXPECT_EQ(work.read("env/Zelvo.vars"), settings_text(saved));
    EXPECT_EQ(work.read("envarc/Zelvo.vars"), settings_text(saved));

    // The next run loads the saved settings: there is no requester, and it saves the same values.
    const ToolRun later = render_cube(joined(folders, script("1 key b\n1 key s\n")));
    EXPECT_EQ(later.exit_code, 0);
    EXPECT_TRUE(later.output.starts_with("number of frames: 4\n")) << later.output;
    std::map<std::string, std::string> saved_later = saved;
    saved_later["clear style"] = "2";
    EXPECT_EQ(work.read("env/Zelvo.vars"), settings_text(saved_later));
    EXPECT_EQ(work.read("envarc/Zelvo.vars"), settings_text(saved));

    // Each key loads the settings of its own file.
    work.write("env/Zelvo.vars", settings_text({{"clear style", "1"}, {"width", "64"}, {"height", "48"}}));
    work.write("envarc/Zelvo.vars", settings_text({{"clear style", "3"}, {"fps", "0"}}));
    render_cube(joined(folders, script("1 key W\n2 key s\n")));
    EXPECT_EQ(work.read("env/Zelvo.vars"), settings_text({{"clear style", "3"}, {"fps", "0"}}));
    work.write("env/Zelvo.vars", settings_text({{"dots", "1"}}));
    render_cube(joined(folders, script("1 key p\n2 key w\n3 key S\n")));
    EXPECT_EQ(work.read("envarc/Zelvo.vars"), settings_text({{"dots", "1"}}));
}

TEST_F(ZelvoRender, RemovesItsTemporarySettingsFolder) {
    expect_cube_run(render_cube(joined({"--passes", "2"}, script("1 key s\n1 key S\n"))), 2);
    EXPECT_EQ(names_in(work.folder()), std::set<std::string>{"script.txt"});
    // The next run asks for the screen mode again, so nothing was kept.
    expect_cube_run(render_cube(), 1);
}

TEST_F(ZelvoRender, AdvancesItsClockByTheTick) {
    const ToolRun run = render_cube({"--passes", "3", "--tick", "0.25"});
    EXPECT_EQ(run.output, "display parameters: 0x00000000, 100, 75\n"
                          "number of frames: 3\n"
                          "all time: 3.000000  average frametime: 1.000000\n"
                          "average framerate: 1.000000 fps\n"
                          "changescreenbuffer done\n");
    const ToolRun standing = render_cube({"--tick", "0"});
    EXPECT_EQ(standing.output, "display parameters: 0x00000000, 100, 75\n"
                               "number of frames: 1\n"
                               "all time: 0.000000  average frametime: 0.000000\n"
                               "average framerate: inf fps\n"
                               "changescreenbuffer done\n");
    expect_cube_run(render_cube({"--clock", "fixed"}), 1);
    // A tenth of a second is 6553.6 units of the clock, rounded to a whole number, four times per pass.
    const ToolRun tenth = render_cube({"--tick", "0.1"});
    EXPECT_NE(tenth.output.find("all time: 0.400024 "), std::string::npos) << tenth.output;
}

TEST_F(ZelvoRender, MeasuresRealTimeOnRequest) {
    const auto start = std::chrono::steady_clock::now();
    const ToolRun run = render_cube({"--passes", "3", "--clock", "real"});
    const std::chrono::duration<double> whole_run = std::chrono::steady_clock::now() - start;
    EXPECT_EQ(run.exit_code, 0);
    double all_time = -1;
    double average = -1;
    ASSERT_EQ(std::sscanf(run.output.c_str(),
                          "display parameters: 0x00000000, 100, 75\nnumber of frames: 3\n"
                          "all time: %lf  average frametime: %lf\naverage framerate: ",
                          &all_time, &average),
              2)
        << run.output;
    EXPECT_GE(all_time, 0.0);
    EXPECT_LT(all_time, whole_run.count());
    EXPECT_NEAR(average, all_time / 3.0, 1e-6);
    // The time is not a multiple of the fixed clock's, although three passes read the clock twelve times.
    EXPECT_NE(run.output, cube_output(3));
}

TEST_F(ZelvoRender, EndsAsTheProgramDoesOnAFileThatIsNoObject) {
    const std::string sound = [] {
        std::ifstream file(object("cube"), std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }();
    std::string later_form = sound;
    later_form.replace(8, 4, "LWO2");
    work.write("later", later_form);
    work.write("byte", "F");
    work.write("empty", "");
    std::filesystem::create_directory(work.path("folder"));
    const std::string no_object = "display parameters: 0x00000000, 100, 75\nchangescreenbuffer done\n"
                                  "This is not a(n) LW object\n";
    const std::vector<std::pair<std::string, std::string>> cases{
        {"missing", "File open error\n"},
        {"folder", "File open error\n"},
        {"later", no_object},
        {"byte", no_object},
        {"empty", no_object},
    };
    for (const auto &[name, output] : cases) {
        const ToolRun run = render({name, "--size", "100x75", "--gif", "a.gif", "--png", "p-%d.png"});
        EXPECT_EQ(run.exit_code, 20) << name;
        EXPECT_EQ(run.output, output) << name;
        EXPECT_EQ(run.errors, "") << name;
    }
    EXPECT_EQ(names_in(work.folder()), (std::set<std::string>{"byte", "empty", "folder", "later"}));
}

TEST_F(ZelvoRender, LetsTheProgramAskForItsObject) {
    const ToolRun cancelled = render({"--size", "100x75"});
    EXPECT_EQ(cancelled.exit_code, 20);
    EXPECT_EQ(cancelled.output, "No filename given\n");
    const ToolRun answered =
        render(joined({"--size", "100x75", "--envmap", test_file("golden/envmap.chunky")},
                      script("answer file " + test_file("golden/objects") + " cube.lwo\n")));
    expect_cube_run(answered, 1);
}

TEST_F(ZelvoRender, PrintsHelpAndVersion) {
    const ToolRun help = render({"--help"});
    EXPECT_EQ(help.exit_code, 0);
    for (const char *option :
         {"OBJECT",  "--envmap", "--size",    "--mode-id",   "--env",      "--envarc",    "--passes",
          "--input", "--chunky", "--png",     "--gif",       "--from",     "--every",     "--clock",
          "--tick",  "--sheet",  "--columns", "--y4m",       "--mode",     "--spin",      "--tilt",
          "--clear", "--dots",   "--gamma",   "--turntable", "--no-texts", "--background"}) {
        EXPECT_NE(help.output.find(option), std::string::npos) << option;
    }
    const ToolRun version = render({"--version"});
    EXPECT_EQ(version.exit_code, 0);
    EXPECT_EQ(version.output, "zelvo-render 0.67 OS4 (23-Feb-2005)\n");
}

TEST_F(ZelvoRender, ContainsTheVersionTag) {
    std::ifstream file(std::string(ZELVO_BIN_FOLDER) + "/zelvo-render", std::ios::binary);
    const std::string program{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    EXPECT_NE(program.find("$VER: Zelvo 0.67 OS4 (23-Feb-2005)"), std::string::npos);
}

TEST_F(ZelvoRender, ReproducesGoldenFramesFromItsCommandLine) {
    int compared = 0;
    for (const GoldenCase &golden : golden_cases()) {
        if (golden.size() != "100x75") {
            continue;
        }
        const ToolRun run =
            render({object(golden.object), "--envmap", test_file("golden/envmap.chunky"), "--size", "100x75",
                    "--passes", std::to_string(golden.passes), "--input",
                    test_file("golden/scripts/" + golden.script + ".txt"), "--chunky", golden.name()});
        expect_cube_run(run, golden.passes);
        const std::vector<std::string> expected = expected_frames(golden);
        EXPECT_EQ(names_in(work.path(golden.name())).size(), expected.size());
        for (std::size_t pass = 1; pass <= expected.size(); ++pass) {
            std::array<char, 16> file{};
            std::snprintf(file.data(), file.size(), "/%05zu.pgm", pass);
            EXPECT_TRUE(work.read(golden.name() + file.data()) == expected[pass - 1])
                << golden.name() << file.data();
        }
        ++compared;
    }
    EXPECT_EQ(compared, 3);
}

TEST_F(ZelvoRender, FinishesItsFilesWhenItIsInterrupted) {
    for (const int signal : {SIGINT, SIGTERM}) {
        std::filesystem::remove_all(work.path("frames"));
        ToolPlace place{work.folder(), temporary.folder(), {}};
        const std::string early_frame = work.path("frames/00003.pgm");
        place.meanwhile = [&early_frame, signal](pid_t process) {
            for (int tries = 0; tries < 60000 && !std::filesystem::exists(early_frame); ++tries) {
                usleep(1000);
            }
            kill(process, signal);
        };
        const ToolRun run = run_tool("zelvo-render",
                                     cube_arguments({"--passes", "20000000", "--chunky", "frames", "--gif",
                                                     "a.gif", "--every", "1000000"}),
                                     place);
        EXPECT_EQ(run.exit_code, 0);
        EXPECT_TRUE(run.output.ends_with(" fps\nchangescreenbuffer done\n")) << run.output;
        EXPECT_EQ(read_gif(work.path("a.gif")).pictures.size(), 1U);
    }
}

} // namespace
