// SPDX-License-Identifier: MIT
// Tests of the state's start values, its reset, and the message line.
#include "main_68k/viewer_state.h"
#include "raster/texture_map.h"
#include "support/model_builder.h"
#include "support/viewer_test.h"

#include <cstring>

namespace {

/// A state in which no field has its start value; negative where that makes sense.
ViewerState changed_state() {
    ViewerState state;
    state.gammas = {0.5, 2.0, 3.0};
    state.rotate = -1.5;
    state.obj_style = 5;
    state.clear_style = 3;
    state.fps = 0;
    state.dots = 1;
    state.dot_lum = 1;
    state.dot_lum_in_blur = 2;
    state.internal_c2p_enabled = 1;
    std::strcpy(state.envmap_filename.data(), "work:maps/steel");
    state.ModeID = 0x29004;
    state.width = 640;
    state.height = 480;
    state.lightsource_rotating = 1;
    state.flip = 1;
    state.doubleside = 1;
    state.tilt_x = -7;
    state.tilt_y = 9;
    state.spin_angle = 12.5;
    state.light_base = {-3.0F, 1.0F, 1.0F};
    state.light_source = {1.0F, 1.0F, -3.0F};
    state.light = {0.5F, 0.25F, 0.125F};
    std::strcpy(state.message_line.data(), "dots enabled");
    state.message_timer = 0.75;
    state.frames_drawn = 77;
    return state;
}

TEST(ViewerStateAtStart, HasTheDefaults) {
    const std::vector<std::string> expected{
        "red gamma=1",
        "green gamma=1",
        "blue gamma=1",
        "rotate=0",
        "obj_style=1",
        "clear_style=0",
        "fps=1",
        "dots=0",
        "dot_lum=25600",
        "dot_lum_in_blur=2560",
        "internal_c2p_enabled=0",
        "envmap_filename=Zelvo_envmap.chunky",
        "ModeID=0",
        "width=320",
        "height=256",
        "lightsource_rotating=0",
        "flip=0",
        "doubleside=0",
        "tilt_x=0",
        "tilt_y=0",
        "spin_angle=0",
        "light_base.x=3",
        "light_base.y=-1",
        "light_base.z=-1",
        "light_source.x=-1",
        "light_source.y=-1",
        "light_source.z=3",
        "light.x=-1",
        "light.y=-1",
        "light.z=3",
        "message_line=Zelvo",
        "message_timer=2",
        "frames_drawn=0",
    };
    reset_program_state();
    EXPECT_EQ(state_as_lines(viewer), expected);
    EXPECT_EQ(viewer.envmap_filename.size(), 1024U);
    EXPECT_EQ(envmap_bytes, 65536);
}

TEST(ViewerStateAtStart, IsWhatTheFirstPassFinds) {
    const TemporaryFiles env;
    offscreen::Setup setup = viewer_setup("triangle");
    setup.volumes["ENV"] = env.folder();
    setup.on_frame = [](const offscreen::Picture &) {
        for (const std::string &line : state_as_lines(viewer)) {
            note(line);
        }
    };
    EXPECT_EQ(run_program(std::move(setup)).notes, state_as_lines(ViewerState{}));
}

TEST(ResetToDefaults, ResetsTheElevenSettingsAndNothingElse) {
    reset_program_state();
    viewer = changed_state();
    reset_to_defaults();

    ViewerState expected = changed_state();
    expected.gammas = {1.0, 1.0, 1.0};
    expected.rotate = 0.0;
    expected.internal_c2p_enabled = 0;
    expected.fps = 1;
    expected.dot_lum = 25600;
    expected.dot_lum_in_blur = 2560;
    expected.obj_style = 1;
    expected.clear_style = 0;
    expected.dots = 0;
    EXPECT_EQ(state_as_lines(viewer), state_as_lines(expected));
}

TEST(ShowMessage, ReplacesTheLineAndRestartsItsTimer) {
    reset_program_state();
    viewer.message_timer = -3.0;
    show_message("a longer line than the next: %d", 12345);
    EXPECT_STREQ(viewer.message_line.data(), "a longer line than the next: 12345");
    EXPECT_EQ(viewer.message_timer, 2.0);

    viewer.message_timer = 0.5;
    show_message("%s=%1.1f", "rotate", 0.25);
    EXPECT_STREQ(viewer.message_line.data(), "rotate=0.2");
    EXPECT_EQ(viewer.message_timer, 2.0);
}

TEST(ShowMessage, CutsALineThatIsTooLong) {
    reset_program_state();
    const std::string endless(1000, 'z');
    show_message("%s", endless.c_str());
    EXPECT_EQ(std::string(viewer.message_line.data()), endless.substr(0, viewer.message_line.size() - 1));
}

} // namespace
