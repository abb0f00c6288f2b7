// SPDX-License-Identifier: MIT
// Tests of the requesters at start-up: for the object, the screen mode and the texture.
#include "raster/texture_map.h"
#include "settings/environment_map.h"
#include "support/viewer_test.h"

#include <filesystem>

namespace {

using Lines = std::vector<std::string>;

constexpr char object_requester[] = "AllocAslRequest(0, ASLFR_TitleText=\"Select a LightWave Object\")";
constexpr char texture_requester[] =
    "AllocAslRequest(0, ASLFR_DoPatterns=1, ASLFR_TitleText=\"Select Zelvo_envmap.chunky file\", "
    "ASLFR_InitialFile=\"Zelvo_envmap.chunky\")";

const offscreen::Answer cancelled{};

class ObjectRequester : public ViewerTest {
protected:
    /// A run that asks for its object and gets this answer.
    ProgramRun run_asked(const std::deque<offscreen::Answer> &answers) const {
        offscreen::Setup setup = later_start();
        setup.command_line = {};
        setup.answers = answers;
        return run_program(std::move(setup));
    }

    static std::string objects() { return test_file("golden/objects"); }
};

TEST_F(ObjectRequester, AppearsWithoutAnArgument) {
    const ProgramRun run = run_asked({chosen_file(objects(), "cube.lwo")});
    expect_normal_end(run);
    const std::ptrdiff_t place = call_place(run, "ReadArgs(FILE/A)");
    ASSERT_LT(place + 5, std::ssize(run.calls));
    EXPECT_EQ(Lines(run.calls.begin() + place, run.calls.begin() + place + 6),
              (Lines{"ReadArgs(FILE/A)", object_requester, "AslRequest()",
                     "AddPart(" + objects() + ", cube.lwo, 1024)", "FreeAslRequest()",
                     "open_file(" + objects() + "/cube.lwo, rb)"}));
}

TEST_F(ObjectRequester, AppearsWithTooManyArguments) {
    offscreen::Setup setup = later_start();
    setup.command_line = {objects() + "/cube.lwo", objects() + "/torus.lwo"};
    const ProgramRun run = run_program(std::move(setup));
    expect_failure(run, "No filename given\n");
    EXPECT_EQ(count_calls(run, object_requester), 1);
}

TEST_F(ObjectRequester, DoesNotAppearWithTheTemplatesKeyword) {
    for (const Lines &words :
         {Lines{"FILE=" + objects() + "/cube.lwo"}, Lines{"file", objects() + "/cube.lwo"}}) {
        offscreen::Setup setup = later_start();
        setup.command_line = words;
        const ProgramRun run = run_program(std::move(setup));
        expect_normal_end(run);
        EXPECT_EQ(count_calls(run, object_requester), 0);
        EXPECT_EQ(count_calls(run, "open_file(" + objects() + "/cube.lwo, rb)"), 1);
    }
}

TEST_F(ObjectRequester, AppearsAtOnceWhenThereIsNoCommandLine) {
    offscreen::Setup setup = later_start();
    setup.answers = {chosen_file(objects(), "torus.lwo")};
    RunOptions options;
    options.argument_count = 0;
    const ProgramRun run = run_program(std::move(setup), options);
    expect_normal_end(run);
    EXPECT_EQ(count_calls(run, "ReadArgs"), 0);
    EXPECT_EQ(count_calls(run, "FreeArgs"), 0);
    EXPECT_EQ(count_calls(run, "open_file(" + objects() + "/torus.lwo, rb)"), 1);
}

TEST_F(ObjectRequester, EndsTheProgramWhenCancelled) {
    const ProgramRun run = run_asked({cancelled});
    expect_failure(run, "No filename given\n");
    EXPECT_EQ(count_calls(run, "FreeAslRequest"), 1);
}

TEST_F(ObjectRequester, EndsTheProgramWhenNothingIsChosen) {
    expect_failure(run_asked({chosen_file("", "")}), "No filename given\n");
}

TEST_F(ObjectRequester, EndsTheProgramIfItCannotBeMade) {
    offscreen::Setup setup = later_start();
    setup.command_line = {};
    setup.refused = {"AllocAslRequest"};
    const ProgramRun run = run_program(std::move(setup));
    expect_failure(run, "No filename given\n");
    EXPECT_EQ(count_calls(run, "AslRequest"), 0);
    EXPECT_EQ(count_calls(run, "FreeAslRequest"), 0);
}

TEST_F(ObjectRequester, JoinsDrawerAndFileByASlashIfNeeded) {
    expect_normal_end(run_asked({chosen_file(objects() + "/", "cube.lwo")}));
    expect_normal_end(run_asked({chosen_file("", objects() + "/cube.lwo")}));
    std::filesystem::copy(objects() + "/cube.lwo", env.path("box.lwo"));
    const ProgramRun run = run_asked({chosen_file("ENV:", "box.lwo")});
    expect_normal_end(run);
    EXPECT_EQ(count_calls(run, "open_file(ENV:box.lwo, rb)"), 1);
}

TEST_F(ObjectRequester, MayNameAMissingFile) {
    expect_failure(run_asked({chosen_file(env.folder(), "missing.lwo")}), "File open error\n");
}

TEST_F(ObjectRequester, NeverNamesMoreThanItsBufferCanHold) {
    // A path of exactly 1023 characters fits with its terminator. With one more, only the drawer is used.
    const std::string drawer(1000, 'd');
    const ProgramRun fits = run_asked({chosen_file(drawer, std::string(22, 'f'))});
    expect_failure(fits, "File open error\n");
    EXPECT_EQ(count_calls(fits, "open_file(" + drawer + "/" + std::string(22, 'f') + ", rb)"), 1);
    const ProgramRun too_long = run_asked({chosen_file(drawer, std::string(23, 'f'))});
    expect_failure(too_long, "File open error\n");
    EXPECT_EQ(count_calls(too_long, "open_file(" + drawer + ", rb)"), 1);
    const ProgramRun endless = run_asked({chosen_file(std::string(5000, 'd'), "cube.lwo")});
    expect_failure(endless, "File open error\n");
    EXPECT_EQ(count_calls(endless, "open_file(" + std::string(1023, 'd') + ", rb)"), 1);
}

TEST_F(ObjectRequester, ComesBeforeTheOthers) {
    offscreen::Setup setup = first_start();
    setup.command_line = {};
    setup.stand_ins[default_envmap_filename] = env.path("missing");
    setup.answers = {chosen_file(objects(), "cube.lwo"), chosen_mode(0x29004, 100, 75),
                     chosen_file(test_file("golden"), "envmap.chunky")};
    const ProgramRun run = run_program(std::move(setup));
    expect_normal_end(run);
    EXPECT_TRUE(run.output.starts_with("display parameters: 0x00029004, 100, 75\nenvmap filename: " +
                                       test_file("golden/envmap.chunky") + "\nnumber of frames: 1\n"))
        << run.output;
}

class ScreenModeRequester : public ViewerTest {};

TEST_F(ScreenModeRequester, AppearsWithoutASettingsFile) {
    offscreen::Setup setup = first_start();
    setup.answers = {chosen_mode(0xFFFF0001, 64, 48)};
    RunOptions options;
    options.at_end = [] {
        note(std::to_string(viewer.ModeID) + " " + std::to_string(viewer.width) + " " +
             std::to_string(viewer.height));
    };
    const ProgramRun run = run_program(std::move(setup), options);
    expect_normal_end(run);
    EXPECT_TRUE(run.output.starts_with("display parameters: 0xffff0001, 64, 48\n")) << run.output;
    EXPECT_EQ(run.notes, Lines{"-65535 64 48"});
}

TEST_F(ScreenModeRequester, LeavesTheSettingsIfItCannotBeMade) {
    offscreen::Setup setup = first_start();
    setup.default_mode = {7, 64, 48};
    setup.refused = {"AllocAslRequest"};
    const ProgramRun run = run_program(std::move(setup));
    expect_normal_end(run);
    EXPECT_EQ(run.output, "number of frames: 1\n"
                          "all time: 0.015625  average frametime: 0.015625\n"
                          "average framerate: 64.000000 fps\n"
                          "changescreenbuffer done\n");
    EXPECT_EQ(count_calls(run, "OpenScreenTagList(SA_DisplayID=0, SA_Overscan=1, SA_Width=320, "
                               "SA_Height=256, "),
              1);
}

TEST_F(ScreenModeRequester, DoesNotAppearWithAnEmptySettingsFile) {
    env.write("Zelvo.vars", "");
    const ProgramRun run = run_program(first_start());
    expect_normal_end(run);
    EXPECT_EQ(count_calls(run, "AllocAslRequest"), 0);
    EXPECT_EQ(count_calls(run, "OpenScreenTagList(SA_DisplayID=0, SA_Overscan=1, SA_Width=320, "
                               "SA_Height=256, "),
              1);
}

class TextureRequester : public ViewerTest {
protected:
    void SetUp() override {
        texture.assign(65536, '\0');
        for (std::size_t i = 0; i < texture.size(); ++i) {
            texture[i] = static_cast<char>(i * 7 + i / 256);
        }
    }

    /// A run whose stored texture cannot be opened, with this answer to the requester.
    offscreen::Setup without_texture() const {
        offscreen::Setup setup = later_start();
        setup.stand_ins[default_envmap_filename] = files.path("missing");
        return setup;
    }

    ProgramRun run_asked(const std::deque<offscreen::Answer> &answers) const {
        offscreen::Setup setup = without_texture();
        setup.answers = answers;
        return run_program(std::move(setup));
    }

    TemporaryFiles files;
    std::string texture;
};

TEST_F(TextureRequester, AppearsWhenTheStoredNameCannotBeOpened) {
    files.write("steel", texture);
    const ProgramRun run = run_asked({chosen_file(files.folder(), "steel")});
    expect_normal_end(run);
    EXPECT_TRUE(run.output.starts_with("envmap filename: " + files.path("steel") + "\nnumber of frames: 1\n"))
        << run.output;
    const std::ptrdiff_t place = call_place(run, "open_file(Zelvo_envmap.chunky");
    ASSERT_LT(place + 4, std::ssize(run.calls));
    EXPECT_EQ(Lines(run.calls.begin() + place, run.calls.begin() + place + 5),
              (Lines{"open_file(Zelvo_envmap.chunky, rb)", texture_requester, "AslRequest()",
                     "FreeAslRequest()", "open_file(" + files.path("steel") + ", rb)"}));
}

TEST_F(TextureRequester, EndsTheProgramWhenCancelledWithoutTheInitialFile) {
    const ProgramRun run = run_asked({cancelled});
    expect_failure(run, "envmap filename: Zelvo_envmap.chunky\nenvmap file open error\n");
    EXPECT_EQ(count_calls(run, "open_file(Zelvo_envmap.chunky, rb)"), 2);
    EXPECT_EQ(count_calls(run, "OpenScreenTagList"), 0);
}

TEST_F(TextureRequester, AppearsOnlyOnce) {
    files.write("steel", texture);
    const ProgramRun run =
        run_asked({chosen_file(files.folder(), "gone"), chosen_file(files.folder(), "steel")});
    expect_failure(run, "envmap filename: " + files.path("gone") + "\nenvmap file open error\n");
    EXPECT_EQ(count_calls(run, "AllocAslRequest"), 1);
}

TEST_F(TextureRequester, UsesTheOldNameIfItCannotBeMade) {
    offscreen::Setup setup = without_texture();
    setup.refused = {"AllocAslRequest"};
    const ProgramRun run = run_program(std::move(setup));
    expect_failure(run, "envmap file open error\n");
    EXPECT_EQ(count_calls(run, "open_file(Zelvo_envmap.chunky, rb)"), 2);
}

TEST_F(TextureRequester, EndsTheProgramWithAnOpenDisplayClosed) {
    offscreen::Setup setup = first_start();
    setup.stand_ins[default_envmap_filename] = files.path("missing");
    expect_failure(run_program(std::move(setup)), std::string(default_display_line) +
                                                      "envmap filename: Zelvo_envmap.chunky\n" +
                                                      display_closed_line + "envmap file open error\n");
}

/// Notes how many bytes at the start of the texture have this value, and how many after them are zero.
void note_texture(const std::string &bytes) {
    const auto *texels = reinterpret_cast<const char *>(envmap.get());
    const std::string held(texels, texels + envmap_bytes);
    const std::size_t length = std::min<std::size_t>(bytes.size(), held.size());
    const bool starts = held.compare(0, length, bytes, 0, length) == 0;
    const bool ends = held.find_first_not_of('\0', length) == std::string::npos;
    note(std::string(starts ? "read" : "other") + (ends ? ", then zeros" : ", then others"));
}

TEST_F(TextureRequester, GivesAWholeTexture) {
    offscreen::Setup setup = without_texture();
    files.write("steel", texture);
    setup.answers = {chosen_file(files.folder(), "steel")};
    setup.on_frame = [this](const offscreen::Picture &) { note_texture(texture); };
    EXPECT_EQ(run_program(std::move(setup)).notes, Lines{"read, then zeros"});
}

TEST_F(TextureRequester, DoesNotAcceptAFolder) {
    offscreen::Setup setup = without_texture();
    setup.stand_ins[default_envmap_filename] = files.folder();
    const ProgramRun run = run_program(std::move(setup));
    expect_failure(run, "envmap filename: Zelvo_envmap.chunky\nenvmap file open error\n");
}

} // namespace
