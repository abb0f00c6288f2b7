// SPDX-License-Identifier: MIT
// Tests of the keys that save and load settings, choose a texture and change the screen mode.
#include "raster/texture_map.h"
#include "settings/environment_map.h"
#include "support/viewer_test.h"

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <filesystem>

namespace {

using Lines = std::vector<std::string>;

/// The output of a run after its display lines: the statistics of these passes, and the close.
std::string ordinary_end(int passes) {
    std::array<char, 200> text{};
    std::snprintf(text.data(), text.size(),
                  "number of frames: %d\nall time: %f  average frametime: 0.015625\n"
                  "average framerate: 64.000000 fps\n",
                  passes, passes / 64.0);
    return text.data() + std::string(display_closed_line);
}

void note_state() {
    for (const std::string &line : state_as_lines(viewer)) {
        note(line);
    }
}

/// All settings away from their defaults.
const std::map<std::string, std::string> other_settings{
    {"gammas", "0.500000 2.000000 3.000000"},
    {"rotate", "-1.250000"},
    {"obj style", "5"},
    {"clear style", "2"},
    {"fps", "0"},
    {"dots", "1"},
    {"dot lum", "1024"},
    {"dot lum in blur", "512"},
    {"internal c2p enabled", "1"},
    {"envmap filename", "work:maps/steel"},
    {"ModeID", "-2147479552"},
    {"width", "640"},
    {"height", "480"},
};

/// Sets the same values in the state.
void make_other(ViewerState &state) {
    state.gammas = {0.5, 2.0, 3.0};
    state.rotate = -1.25;
    state.obj_style = 5;
    state.clear_style = 2;
    state.fps = 0;
    state.dots = 1;
    state.dot_lum = 1024;
    state.dot_lum_in_blur = 512;
    state.internal_c2p_enabled = 1;
    std::strcpy(state.envmap_filename.data(), "work:maps/steel");
    state.ModeID = -2147479552;
    state.width = 640;
    state.height = 480;
}

class SettingsKeys : public ViewerTest {
protected:
    bool has_env_file() const { return std::filesystem::exists(env.path("Zelvo.vars")); }
    bool has_envarc_file() const { return std::filesystem::exists(envarc.path("Zelvo.vars")); }
};

TEST_F(SettingsKeys, SaveTheDefaultsForTheSession) {
    offscreen::Setup setup = first_start();
    setup.events = {key(1, 's')};
    const ProgramRun run = run_program(std::move(setup));
    expect_normal_end(run);
    EXPECT_EQ(env.read("Zelvo.vars"), settings_text());
    EXPECT_FALSE(has_envarc_file());
    EXPECT_EQ(count_calls(run, "open_file(ENV:Zelvo.vars, w)"), 1);
}

TEST_F(SettingsKeys, SaveForTheSessionAndThenForGood) {
    offscreen::Setup setup = first_start();
    setup.events = {key(1, 'S')};
    const ProgramRun run = run_program(std::move(setup));
    expect_normal_end(run);
    EXPECT_EQ(env.read("Zelvo.vars"), settings_text());
    EXPECT_EQ(envarc.read("Zelvo.vars"), settings_text());
    EXPECT_LT(call_place(run, "open_file(ENV:Zelvo.vars, w)"),
              call_place(run, "open_file(ENVARC:Zelvo.vars, w)"));
}

TEST_F(SettingsKeys, SaveInTheOnlyWritablePlace) {
    for (const std::string missing : {"ENV", "ENVARC"}) {
        const TemporaryFiles folder;
        offscreen::Setup setup = first_start(2);
        setup.volumes = {{"ENV", folder.folder()}, {"ENVARC", folder.folder()}};
        setup.volumes[missing] = folder.path("no such folder");
        setup.events = {key(1, 'S')};
        const ProgramRun run = run_program(std::move(setup));
        expect_normal_end(run, "zelvo: " + missing +
                                   ":Zelvo.vars was not saved: No such file or directory (" +
                                   folder.path("no such folder/Zelvo.vars") + ")\n");
        EXPECT_EQ(folder.read("Zelvo.vars"), settings_text()) << "without " << missing;
        EXPECT_EQ(count_calls(run, "open_file(ENV:Zelvo.vars, w)"), 1);
        EXPECT_EQ(count_calls(run, "open_file(ENVARC:Zelvo.vars, w)"), 1);
        EXPECT_EQ(count_calls(run, "Text(\"saving vars to ENVARC:Zelvo.vars\")"), 1);
    }
}

TEST_F(SettingsKeys, LoadAnInfiniteOrNaNSpin) {
    for (const char *rotate : {"nan", "inf", "-inf", "1e308"}) {
        env.write("Zelvo.vars", settings_text({{"rotate", rotate}}));
        offscreen::Setup setup = first_start(8);
        for (int pass = 1; pass < 8; ++pass) {
            setup.events.push_back(right_button(pass));
        }
        setup.events.push_back(key(8, 's'));
        expect_normal_end(run_program(std::move(setup)));
        // The frames spin with this value, and it is saved as it was loaded.
        const std::string saved = env.read("Zelvo.vars");
        const double value = std::strtod(saved.c_str() + saved.find("rotate: ") + 8, nullptr);
        const double expected = std::strtod(rotate, nullptr);
        EXPECT_TRUE(value == expected || (std::isnan(value) && std::isnan(expected))) << rotate;
    }
}

TEST_F(SettingsKeys, SaveWhatEarlierKeysOfTheSamePassChanged) {
    offscreen::Setup setup = first_start();
    setup.answers = {chosen_mode(0x80001000, 100, 75)};
    setup.events = {key(1, '4'),      key(1, 'b'), key(1, 'f'), key(1, 'e'),
                    raw_key(1, 0x4E), key(1, 's'), key(1, 'b')};
    expect_normal_end(run_program(std::move(setup)));
    EXPECT_EQ(env.read("Zelvo.vars"), settings_text({{"gammas", "1.100000 1.000000 1.000000"},
                                                     {"rotate", "0.100000"},
                                                     {"obj style", "0"},
                                                     {"clear style", "1"},
                                                     {"fps", "0"},
                                                     {"ModeID", "-2147479552"},
                                                     {"width", "100"},
                                                     {"height", "75"}}));
}

TEST_F(SettingsKeys, ShowTheirMessageWhenNothingCanBeSaved) {
    offscreen::Setup setup = first_start(3);
    setup.volumes["ENV"] = env.path("no such folder");
    setup.volumes["ENVARC"] = env.path("no such folder");
    setup.events = {key(1, 's'), key(2, 'S')};
    const ProgramRun run = run_program(std::move(setup));
    const std::string reason =
        " was not saved: No such file or directory (" + env.path("no such folder/Zelvo.vars") + ")\n";
    expect_normal_end(run, "zelvo: ENV:Zelvo.vars" + reason + "zelvo: ENV:Zelvo.vars" + reason +
                               "zelvo: ENVARC:Zelvo.vars" + reason);
    EXPECT_TRUE(std::filesystem::is_empty(env.folder()));
    const Lines texts = texts_drawn(run);
    EXPECT_EQ(texts.at(2), "saving vars to ENV:Zelvo.vars");
    EXPECT_EQ(texts.at(4), "saving vars to ENVARC:Zelvo.vars");
    EXPECT_EQ(run.output, default_display_line + ordinary_end(3));
}

TEST_F(SettingsKeys, LoadEverySettingFromEitherPlace) {
    for (const char character : std::string("wW")) {
        offscreen::Setup setup = later_start(2);
        setup.events = {key(2, character)};
        const TemporaryFiles &place = character == 'w' ? env : envarc;
        setup.on_frame = [&place](const offscreen::Picture &) {
            place.write("Zelvo.vars", settings_text(other_settings));
        };
        RunOptions options;
        options.at_end = note_state;
        const ProgramRun run = run_program(std::move(setup), options);
        expect_normal_end(run);

        ViewerState expected;
        make_other(expected);
        std::strcpy(expected.message_line.data(), character == 'w' ? "loading vars from ENV:Zelvo.vars"
                                                                   : "loading vars from ENVARC:Zelvo.vars");
        expected.spin_angle = -1.25;
        expected.frames_drawn = 2;
        EXPECT_EQ(run.notes, state_as_lines(expected));
        EXPECT_EQ(count_calls(run, "LoadRGB32"), 2);
        EXPECT_EQ(count_calls(run, "OpenScreenTagList"), 1);
    }
}

TEST_F(SettingsKeys, LoadThePaletteOfTheLoadedGammas) {
    offscreen::Setup setup = first_start(2);
    envarc.write("Zelvo.vars", settings_text({{"gammas", "2.000000 0.500000 3.000000"}}));
    setup.events = {key(1, 'W')};
    setup.on_picture = [](const offscreen::Picture &picture) {
        const host::Colour &colour = picture.palette[128];
        note(std::to_string(colour[0]) + " " + std::to_string(colour[1]) + " " + std::to_string(colour[2]));
    };
    EXPECT_EQ(run_program(std::move(setup)).notes, (Lines{"128 128 128", "180 64 202"}));
}

TEST_F(SettingsKeys, LeaveTheOpenDisplayAloneWhenTheyLoadAnotherSize) {
    offscreen::Setup setup = first_start(3);
    envarc.write("Zelvo.vars", settings_text({{"width", "64"}, {"height", "2000"}}));
    setup.events = {key(1, 'W')};
    RunOptions options;
    options.at_end = [] { note(std::to_string(viewer.width) + "x" + std::to_string(viewer.height)); };
    const ProgramRun run = run_program(std::move(setup), options);
    expect_normal_end(run);
    EXPECT_EQ(run.notes, Lines{"64x2000"});
    EXPECT_EQ(count_calls(run, "WriteChunkyPixels(0, 0, 319, 255, 320)"), 3);
    EXPECT_EQ(count_calls(run, "Move(1, 246)"), 3);
    EXPECT_EQ(count_calls(run, "OpenScreenTagList"), 1);
    EXPECT_EQ(run.output, default_display_line + ordinary_end(3));
}

TEST_F(SettingsKeys, LoadEvenAnImpossibleSizeWithoutHarm) {
    for (const char *side : {"0", "-5", "2147483647", "-2147483648"}) {
        offscreen::Setup setup = first_start(3);
        envarc.write("Zelvo.vars",
                     settings_text({{"width", side}, {"height", side}, {"dots", "1"}, {"clear style", "3"}}));
        setup.events = {key(1, 'W')};
        const ProgramRun run = run_program(std::move(setup));
        expect_normal_end(run);
        EXPECT_EQ(count_calls(run, "WriteChunkyPixels(0, 0, 319, 255, 320)"), 3) << side;
    }
}

TEST_F(SettingsKeys, LoadTheSizeOfTheNextDisplay) {
    // The mode key's requester would replace the size, so it is refused.
    offscreen::Setup setup = first_start(3);
    envarc.write("Zelvo.vars", settings_text({{"ModeID", "9"}, {"width", "64"}, {"height", "48"}}));
    setup.events = {key(1, 'W'), key(2, 'm')};
    setup.refused = {"AllocAslRequest"};
    const ProgramRun run = run_program(std::move(setup));
    expect_normal_end(run);
    EXPECT_EQ(count_calls(run, "WriteChunkyPixels(0, 0, 319, 255, 320)"), 2);
    EXPECT_EQ(count_calls(run, "OpenScreenTagList(SA_DisplayID=9, SA_Overscan=1, SA_Width=64, "
                               "SA_Height=48, "),
              1);
    EXPECT_EQ(count_calls(run, "WriteChunkyPixels(0, 0, 63, 47, 64)"), 1);
    EXPECT_EQ(run.output, display_closed_line + ordinary_end(3));
}

TEST_F(SettingsKeys, ResetNeitherTheDisplayNorTheTexture) {
    env.write("steel", std::string(65536, 's'));
    offscreen::Setup setup = later_start(
        1, {{"ModeID", "77"}, {"width", "64"}, {"height", "48"}, {"envmap filename", "ENV:steel"}});
    setup.events = {key(1, 'R')};
    RunOptions options;
    options.at_end = [] {
        note(std::to_string(viewer.ModeID) + " " + std::to_string(viewer.width) + "x" +
             std::to_string(viewer.height) + " " + viewer.envmap_filename.data());
    };
    const ProgramRun run = run_program(std::move(setup), options);
    expect_normal_end(run);
    EXPECT_EQ(run.notes, Lines{"77 64x48 ENV:steel"});
}

class TextureKey : public ViewerTest {
protected:
    void SetUp() override { files.write("start", std::string(65536, 'a')); }

    /// A run with the texture key in its first pass. The second pass notes the texture as runs of equal
    /// bytes.
    offscreen::Setup key_run(const std::deque<offscreen::Answer> &answers) const {
        offscreen::Setup setup = later_start(2);
        setup.stand_ins[default_envmap_filename] = files.path("start");
        setup.answers = answers;
        setup.events = {key(1, 't')};
        setup.on_frame = [](const offscreen::Picture &frame) {
            if (frame.pass == 2) {
                note_texture();
            }
        };
        return setup;
    }

    static void note_texture() {
        for (int i = 0, start = 0; i < envmap_bytes; ++i) {
            if (i + 1 == envmap_bytes || envmap[i + 1] != envmap[i]) {
                note(std::to_string(i + 1 - start) + " " + static_cast<char>(envmap[i]));
                start = i + 1;
            }
        }
    }

    TemporaryFiles files;
};

TEST_F(TextureKey, ReadsTheChosenFileAndPrintsItsName) {
    files.write("steel", std::string(65536, 's'));
    const ProgramRun run = run_program(key_run({chosen_file(files.folder(), "steel")}));
    expect_normal_end(run);
    EXPECT_EQ(run.notes, Lines{"65536 s"});
    EXPECT_EQ(run.output, "envmap filename: " + files.path("steel") + "\n" + ordinary_end(2));
    EXPECT_EQ(count_calls(run, "AllocAslRequest(0, ASLFR_DoPatterns=1, "
                               "ASLFR_TitleText=\"Select Zelvo_envmap.chunky file\", "
                               "ASLFR_InitialFile=\"Zelvo_envmap.chunky\")"),
              1);
}

TEST_F(TextureKey, UsesTheInitialFileWhenCancelled) {
    // The stored name has changed by then, so this proves that the initial file is read.
    env.write("steel", std::string(65536, 's'));
    offscreen::Setup setup = key_run({offscreen::Answer{}});
    env.write("Zelvo.vars", settings_text({{"envmap filename", "ENV:steel"}}));
    const ProgramRun run = run_program(std::move(setup));
    expect_normal_end(run);
    EXPECT_EQ(run.notes, Lines{"65536 a"});
    EXPECT_EQ(run.output, "envmap filename: Zelvo_envmap.chunky\n" + ordinary_end(2));
}

TEST_F(TextureKey, StartsFromTheInitialFileEveryTime) {
    files.write("steel", std::string(65536, 's'));
    offscreen::Setup setup = key_run({chosen_file(files.folder(), "steel"), offscreen::Answer{}});
    setup.events = {key(1, 't'), key(1, 't')};
    const ProgramRun run = run_program(std::move(setup));
    expect_normal_end(run);
    EXPECT_EQ(run.notes, Lines{"65536 a"});
    EXPECT_EQ(run.output, "envmap filename: " + files.path("steel") +
                              "\nenvmap filename: Zelvo_envmap.chunky\n" + ordinary_end(2));
}

TEST_F(TextureKey, ReadsTheStoredFileWhenThereIsNoRequester) {
    files.write("steel", std::string(65536, 's'));
    offscreen::Setup setup = key_run({});
    setup.refused = {"AllocAslRequest"};
    // Settings loaded by key name another texture, which is read next time.
    envarc.write("Zelvo.vars", settings_text({{"envmap filename", files.path("steel")}}));
    setup.events = {key(1, 'W'), key(1, 't')};
    const ProgramRun run = run_program(std::move(setup));
    expect_normal_end(run);
    EXPECT_EQ(run.notes, Lines{"65536 s"});
    EXPECT_EQ(run.output, ordinary_end(2));
}

TEST_F(TextureKey, IsTheOnlyOneThatReadsTheTextureAgain) {
    files.write("steel", std::string(65536, 's'));
    offscreen::Setup setup = key_run({});
    envarc.write("Zelvo.vars", settings_text({{"envmap filename", files.path("steel")}}));
    setup.events = {key(1, 'W'), key(1, 'm'), key(1, 'R')};
    const ProgramRun run = run_program(std::move(setup));
    expect_normal_end(run);
    EXPECT_EQ(run.notes, Lines{"65536 a"});
}

TEST_F(TextureKey, EndsTheProgramWhenTheFileIsMissing) {
    const ProgramRun run = run_program(key_run({chosen_file(files.folder(), "gone")}));
    EXPECT_EQ(run.exit_code, 20);
    EXPECT_EQ(run.output, "envmap filename: " + files.path("gone") + "\n" + display_closed_line +
                              "envmap file open error\n");
    EXPECT_EQ(run.errors, "");
}

class ModeKey : public ViewerTest {};

TEST_F(ModeKey, TreatsACancelledRequesterAsConfirmed) {
    // The settings have one size, and the requester initially holds another.
    offscreen::Setup setup = later_start(2, {{"ModeID", "3"}, {"width", "64"}, {"height", "48"}});
    setup.default_mode = {0x29004, 100, 75};
    setup.answers = {offscreen::Answer{}};
    setup.events = {key(1, 'm')};
    RunOptions options;
    options.at_end = [] {
        note(std::to_string(viewer.ModeID) + " " + std::to_string(viewer.width) + "x" +
             std::to_string(viewer.height));
    };
    const ProgramRun run = run_program(std::move(setup), options);
    expect_normal_end(run);
    EXPECT_EQ(run.notes, Lines{"167940 100x75"});
    EXPECT_EQ(run.output, std::string(display_closed_line) + "display parameters: 0x00029004, 100, 75\n" +
                              ordinary_end(2));
    EXPECT_EQ(count_calls(run, "WriteChunkyPixels(0, 0, 63, 47, 64)"), 1);
    EXPECT_EQ(count_calls(run, "WriteChunkyPixels(0, 0, 99, 74, 100)"), 1);
}

TEST_F(ModeKey, ReplacesASizeThatWasLoadedByKey) {
    offscreen::Setup setup = later_start(2);
    envarc.write("Zelvo.vars", settings_text({{"width", "64"}, {"height", "48"}}));
    setup.answers = {chosen_mode(1, 80, 60)};
    setup.events = {key(1, 'W'), key(1, 'm')};
    const ProgramRun run = run_program(std::move(setup));
    expect_normal_end(run);
    EXPECT_EQ(count_calls(run, "WriteChunkyPixels(0, 0, 79, 59, 80)"), 1);
}

TEST_F(ModeKey, EndsTheProgramWhenTheNewDisplayDoesNotOpen) {
    offscreen::Setup setup = later_start(2);
    setup.answers = {chosen_mode(1, 80, 0)};
    setup.events = {key(1, 'm')};
    expect_failure(run_program(std::move(setup)), std::string(display_closed_line) +
                                                      "display parameters: 0x00000001, 80, 0\n" +
                                                      "Couldn't open screen\n");
}

} // namespace
