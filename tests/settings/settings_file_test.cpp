// SPDX-License-Identifier: MIT
// Tests of writing and reading the settings file.
#include "settings/settings_file.h"

#include "display/frame_buffers.h"
#include "platform/offscreen/host.h"
#include "support/model_builder.h"
#include "support/open_descriptors.h"
#include "support/program_run.h"
#include "support/settings_text.h"
#include "support/temporary_files.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstring>
#include <limits>

namespace {

const std::string default_file = settings_text();

/// A file in which no item has its default.
const std::string other_file = settings_text({{"gammas", "0.500000 1.750000 2.900000"},
                                              {"rotate", "-3.200000"},
                                              {"obj style", "4"},
                                              {"clear style", "3"},
                                              {"fps", "0"},
                                              {"dots", "1"},
                                              {"dot lum", "131072"},
                                              {"dot lum in blur", "32768"},
                                              {"internal c2p enabled", "1"},
                                              {"envmap filename", "Work:textures/gold.chunky"},
                                              {"ModeID", "167936"},
                                              {"width", "640"},
                                              {"height", "480"}});

class SettingsFile : public testing::Test {
protected:
    void SetUp() override {
        reset_program_state();
        offscreen::Setup setup;
        setup.volumes = {{"ENV", files.folder()}};
        offscreen::set_up(setup);
    }

    /// Later tests fork this process to run the program, which begins with this state.
    void TearDown() override { reset_program_state(); }

    int load(const std::string &text) {
        files.write("Zelvo.vars", text);
        return load_vars(session_settings);
    }

    /// The settings as the file would have them.
    std::string saved() {
        save_vars(session_settings);
        return files.read("Zelvo.vars");
    }

    static std::string with_lines(std::size_t first_count, const std::string &last_of) {
        std::size_t end = 0;
        for (std::size_t i = 0; i < first_count; ++i) {
            end = other_file.find('\n', end) + 1;
        }
        std::size_t start = 0;
        for (std::size_t i = 0; i < first_count; ++i) {
            start = last_of.find('\n', start) + 1;
        }
        return other_file.substr(0, end) + last_of.substr(start);
    }

    /// `other_file` with one text in it replaced.
    static std::string other_file_with(const std::string &text, const std::string &replacement) {
        std::string result = other_file;
        result.replace(result.find(text), text.size(), replacement);
        return result;
    }

    TemporaryFiles files;
};

} // namespace

TEST_F(SettingsFile, FreshStartWritesTheDefaults) {
    EXPECT_EQ(saved(), default_file);
}

TEST_F(SettingsFile, LastByteIsAnAsteriskWithoutALineFeed) {
    const std::string text = saved();
    EXPECT_EQ(text.back(), '*');
    EXPECT_EQ(text.size() - text.rfind('\n') - 1, 36U);
}

TEST_F(SettingsFile, SavingReplacesALongerFile) {
    files.write("Zelvo.vars", std::string(5000, 'x'));
    EXPECT_EQ(saved(), default_file);
}

TEST_F(SettingsFile, LoadingTakesEveryItem) {
    EXPECT_EQ(load(other_file), 1);
    EXPECT_EQ(viewer.gammas.red, 0.5);
    EXPECT_EQ(viewer.gammas.green, 1.75);
    EXPECT_EQ(viewer.gammas.blue, 2.9);
    EXPECT_EQ(viewer.rotate, -3.2);
    EXPECT_EQ(viewer.obj_style, 4);
    EXPECT_EQ(viewer.clear_style, 3);
    EXPECT_EQ(viewer.fps, 0);
    EXPECT_EQ(viewer.dots, 1);
    EXPECT_EQ(viewer.dot_lum, 131072);
    EXPECT_EQ(viewer.dot_lum_in_blur, 32768);
    EXPECT_EQ(viewer.internal_c2p_enabled, 1);
    EXPECT_STREQ(viewer.envmap_filename.data(), "Work:textures/gold.chunky");
    EXPECT_EQ(viewer.ModeID, 167936);
    EXPECT_EQ(viewer.width, 640);
    EXPECT_EQ(viewer.height, 480);
}

TEST_F(SettingsFile, SavingAndLoadingRoundTripsEveryItem) {
    load(other_file);
    EXPECT_EQ(saved(), other_file);
    viewer = ViewerState{};
    EXPECT_EQ(load_vars(session_settings), 1);
    EXPECT_EQ(saved(), other_file);
}

TEST_F(SettingsFile, NumbersAreRoundedToSixDecimals) {
    viewer.gammas.red = 0.12345678;
    viewer.rotate = -1.0 / 3.0;
    EXPECT_EQ(saved().substr(0, 53), "gammas: 0.123457 1.000000 1.000000\nrotate: -0.333333\n");
    load_vars(session_settings);
    EXPECT_EQ(viewer.gammas.red, 0.123457);
    EXPECT_EQ(viewer.rotate, -0.333333);
}

TEST_F(SettingsFile, LoadingChangesNothingElse) {
    viewer.flip = 1;
    viewer.doubleside = 1;
    viewer.lightsource_rotating = 1;
    viewer.tilt_x = 5;
    viewer.spin_angle = 2.5;
    viewer.message_timer = 1.25;
    load(other_file);
    EXPECT_EQ(viewer.flip, 1);
    EXPECT_EQ(viewer.doubleside, 1);
    EXPECT_EQ(viewer.lightsource_rotating, 1);
    EXPECT_EQ(viewer.tilt_x, 5);
    EXPECT_EQ(viewer.spin_angle, 2.5);
    EXPECT_EQ(viewer.message_timer, 1.25);
    EXPECT_STREQ(viewer.message_line.data(), "Zelvo");
}

TEST_F(SettingsFile, MissingFileGivesZeroAndChangesNothing) {
    EXPECT_EQ(load_vars(session_settings), 0);
    EXPECT_EQ(saved(), default_file);
}

TEST_F(SettingsFile, FolderOfTheFilesNameGivesZero) {
    std::filesystem::create_directory(files.path("Zelvo.vars"));
    EXPECT_EQ(load_vars(session_settings), 0);
}

TEST_F(SettingsFile, EmptyFileGivesOneAndChangesNothing) {
    EXPECT_EQ(load(""), 1);
    EXPECT_EQ(saved(), default_file);
}

TEST_F(SettingsFile, FileThatCannotBeCreatedIsIgnored) {
    EXPECT_EQ(save_vars("ENV:no/such/folder/Zelvo.vars"), 0);
    EXPECT_EQ(save_vars("ENV:"), 0);
    EXPECT_TRUE(std::filesystem::is_empty(files.folder()));
}

TEST_F(SettingsFile, PermanentSettingsAreASeparateFile) {
    const TemporaryFiles permanent;
    offscreen::Setup setup;
    setup.volumes = {{"ENV", files.folder()}, {"ENVARC", permanent.folder()}};
    offscreen::set_up(setup);
    save_vars(permanent_settings);
    EXPECT_EQ(permanent.read("Zelvo.vars"), default_file);
    EXPECT_EQ(files.read("Zelvo.vars"), "");
}

TEST_F(SettingsFile, ItemsBeforeTheEndOfTheFileAreLoaded) {
    load("gammas: 0.500000 1.750000 2.900000\nrotate: -3.200000\nobj style: 4\nclear style: 3\nfps");
    EXPECT_EQ(saved(), with_lines(4, default_file));
}

TEST_F(SettingsFile, NumbersBeforeTheFirstInvalidOneAreLoaded) {
    load("gammas: 0.5 one 2.0\nrotate: 3.0\n");
    EXPECT_EQ(viewer.gammas.red, 0.5);
    EXPECT_EQ(viewer.gammas.green, 1.0);
    EXPECT_EQ(viewer.gammas.blue, 1.0);
    EXPECT_EQ(viewer.rotate, 0.0);
}

TEST_F(SettingsFile, MisspeltThirdLabelLeavesItsItemAndAllThatFollow) {
    EXPECT_EQ(load(other_file_with("obj style", "obj stile")), 1);
    EXPECT_EQ(saved(), with_lines(2, default_file));
}

TEST_F(SettingsFile, MisspeltFirstLabelLeavesEverything) {
    EXPECT_EQ(load(other_file_with("gammas", "Gammas")), 1);
    EXPECT_EQ(saved(), default_file);
}

TEST_F(SettingsFile, LabelWithoutItsBlankStillMatches) {
    EXPECT_EQ(load(other_file_with("obj style: 4", "objstyle:4")), 1);
    EXPECT_EQ(saved(), other_file);
}

TEST_F(SettingsFile, BlanksMatchAnyWhiteSpace) {
    EXPECT_EQ(load(other_file_with("fps: 0\ndots: 1", "fps:\t \n  0dots:\n\n1")), 1);
    EXPECT_EQ(saved(), other_file);
}

TEST_F(SettingsFile, WhiteSpaceBeforeTheFirstLabelDoesNotMatch) {
    EXPECT_EQ(load(" " + other_file), 1);
    EXPECT_EQ(saved(), default_file);
}

TEST_F(SettingsFile, MatchingRecoversAfterAMissingLine) {
    EXPECT_EQ(load(other_file_with("obj style: 4\n", "")), 1);
    viewer.obj_style = 4;
    EXPECT_EQ(saved(), other_file) << "only the missing item kept its value";
}

TEST_F(SettingsFile, MatchingFailsIfTheNextLabelBeginsLikeTheMissingOne) {
    // "dots" consumes the "dot" of "dot lum" before it fails, and no label begins with the blank after it.
    EXPECT_EQ(load(other_file_with("dots: 1\n", "")), 1);
    EXPECT_EQ(saved(), with_lines(5, default_file));
}

TEST_F(SettingsFile, NameIsCutAtItsFirstBlankAndTheRestEndsTheMatching) {
    EXPECT_EQ(load(other_file_with("gold.chunky", "old gold.chunky")), 1);
    EXPECT_STREQ(viewer.envmap_filename.data(), "Work:textures/old");
    EXPECT_EQ(viewer.ModeID, 0);
    EXPECT_EQ(viewer.width, 320);
    EXPECT_EQ(viewer.height, 256);
    EXPECT_EQ(viewer.internal_c2p_enabled, 1);
}

TEST_F(SettingsFile, NameOf1023BytesIsLoadedWhole) {
    const std::string name(1023, 'n');
    EXPECT_EQ(load(other_file_with("Work:textures/gold.chunky", name)), 1);
    EXPECT_EQ(viewer.envmap_filename.data(), name);
    EXPECT_EQ(viewer.height, 480);
    EXPECT_EQ(saved(), other_file_with("Work:textures/gold.chunky", name));
}

TEST_F(SettingsFile, LongerNameIsCutAndTheRestEndsTheMatching) {
    EXPECT_EQ(load(other_file_with("Work:textures/gold.chunky", std::string(5000, 'n'))), 1);
    EXPECT_EQ(viewer.envmap_filename.data(), std::string(1023, 'n'));
    EXPECT_EQ(viewer.ModeID, 0);
    EXPECT_EQ(viewer.height, 256);
}

TEST_F(SettingsFile, ModeIDWithItsTopBitSetIsANegativeNumber) {
    viewer.ModeID = std::numeric_limits<std::int32_t>::min() + 0x8A;
    EXPECT_NE(saved().find("\nModeID: -2147483510\n"), std::string::npos);
    viewer.ModeID = 0;
    load_vars(session_settings);
    EXPECT_EQ(static_cast<std::uint32_t>(viewer.ModeID), 0x8000008AU);
}

TEST_F(SettingsFile, ValuesAreNotRangeChecked) {
    EXPECT_EQ(load("gammas: -1.0 0.0 99.5\nrotate: 1000\nobj style: 99\nclear style: -4\nfps: 2\ndots: -1\n"
                   "dot lum: -7\ndot lum in blur: 99999999\ninternal c2p enabled: 5\nenvmap filename: x\n"
                   "ModeID: -1\nwidth: 0\nheight: -5\n"),
              1);
    EXPECT_EQ(saved(),
              "gammas: -1.000000 0.000000 99.500000\nrotate: 1000.000000\nobj style: 99\nclear style: -4\n"
              "fps: 2\ndots: -1\ndot lum: -7\ndot lum in blur: 99999999\ninternal c2p enabled: 5\n"
              "envmap filename: x\nModeID: -1\nwidth: 0\nheight: -5\n"
              "*** Please don't edit this file! ***");
}

TEST_F(SettingsFile, SpinMayBeInfiniteHugeOrNotANumber) {
    const std::string rest = "obj style: 5\n";
    load("gammas: 1 1 1\nrotate: nan\n" + rest);
    EXPECT_TRUE(std::isnan(viewer.rotate));
    EXPECT_EQ(viewer.obj_style, 5);
    EXPECT_NE(saved().find("\nrotate: nan\nobj style: 5\n"), std::string::npos);
    load("gammas: 1 1 1\nrotate: -inf\n" + rest);
    EXPECT_EQ(viewer.rotate, -std::numeric_limits<double>::infinity());
    EXPECT_NE(saved().find("\nrotate: -inf\nobj style: 5\n"), std::string::npos);
    load("gammas: 1 1 1\nrotate: 1e308\n" + rest);
    EXPECT_EQ(viewer.rotate, 1e308);
    const std::string file = saved();
    const std::size_t digits =
        file.find("\nobj style") - file.find("rotate: ") - std::strlen("rotate: .000000");
    EXPECT_EQ(digits, 309U);
    viewer.rotate = 0.0;
    load_vars(session_settings);
    EXPECT_EQ(viewer.rotate, 1e308);
}

TEST_F(SettingsFile, IsClosedAfterLoadingAndSaving) {
    const int before = open_descriptors();
    load(other_file);
    EXPECT_EQ(open_descriptors(), before);
    save_vars(session_settings);
    EXPECT_EQ(open_descriptors(), before);
}

TEST_F(SettingsFile, SavingReturnsTheResultOfClosingTheFile) {
    EXPECT_EQ(save_vars(session_settings), 0);
    // The stream holds the text until it is closed. Writing to this device then fails.
    offscreen::Setup setup;
    setup.volumes = {{"ENV", files.folder()}};
    setup.stand_ins = {{session_settings, "/dev/full"}};
    offscreen::set_up(setup);
    EXPECT_EQ(save_vars(session_settings), EOF);
}

TEST_F(SettingsFile, LoadingDoesNotResizeTheOpenDisplay) {
    set_frame(100, 75);
    load(other_file);
    EXPECT_EQ(viewer.width, 640);
    EXPECT_EQ(frame_width, 100);
    EXPECT_EQ(frame_height, 75);
}

TEST_F(SettingsFile, SizeLoadedByKeyChangesTheStateButNotTheScreenOrItsFrames) {
    files.write("Zelvo.vars", other_file);
    offscreen::Setup setup = viewer_setup("cube", 4);
    setup.volumes = {{"ENVARC", files.folder()}};
    setup.events = {key(2, 'W')};
    setup.on_frame = [](const offscreen::Picture &frame) {
        note("frame " + std::to_string(frame.width) + " x " + std::to_string(frame.height));
    };
    setup.on_picture = [](const offscreen::Picture &picture) {
        note("picture " + std::to_string(picture.width) + " x " + std::to_string(picture.height));
    };
    RunOptions options;
    options.at_end = [] {
        note("state " + std::to_string(viewer.width) + " x " + std::to_string(viewer.height));
    };
    const ProgramRun run = run_program(setup, options);
    EXPECT_EQ(run.exit_code, 0);
    EXPECT_EQ(run.notes,
              (std::vector<std::string>{"frame 320 x 256", "picture 320 x 256", "frame 320 x 256",
                                        "picture 320 x 256", "frame 320 x 256", "picture 320 x 256",
                                        "frame 320 x 256", "picture 320 x 256", "state 640 x 480"}));
}
