// SPDX-License-Identifier: MIT
// Tests of what each key and mouse event does to the state, and of its message.
#include "platform/intuition.h"
#include "support/viewer_test.h"

#include <cstdint>
#include <functional>
#include <limits>
#include <ostream>

namespace {

using Change = std::function<void(ViewerState &)>;
using Events = std::deque<offscreen::Event>;

constexpr UWORD cursor_up = 0x4C;
constexpr UWORD cursor_down = 0x4D;
constexpr UWORD cursor_right = 0x4E;
constexpr UWORD cursor_left = 0x4F;

/// The events arrive in the second of three passes: the first pass shows the start text, and the third the
/// message.
constexpr int event_pass = 2;
constexpr int all_passes = 3;
constexpr double pass_time = 4.0 / 256.0;

constexpr int escape = 27;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();

/// One line of the command tables.
struct Command {
    const char *name;
    /// Changes the program's start state in the first pass.
    Change start;
    Events events;
    /// What the events change.
    Change effect;
    /// The message; empty for none.
    std::string message;
    /// How often the events load the palette.
    int palette_loads = 0;
};

std::ostream &operator<<(std::ostream &stream, const Command &command) {
    return stream << command.name;
}

Events times(int count, const offscreen::Event &event) {
    return Events(static_cast<std::size_t>(count), event);
}

Events keys(const std::string &characters) {
    Events events;
    for (const char character : characters) {
        events.push_back(key(event_pass, character));
    }
    return events;
}

Events cursor(UWORD code, int count = 1) {
    return times(count, raw_key(event_pass, code));
}

Events right_presses(int count) {
    return times(count, right_button(event_pass));
}

/// Sets a field of the state.
template <typename T>
Change set(T ViewerState::*field, T value) {
    return [field, value](ViewerState &state) { state.*field = value; };
}

Change set(double Gammas::*gamma, double value) {
    return [gamma, value](ViewerState &state) { state.gammas.*gamma = value; };
}

Change both(const Change &one, const Change &other) {
    return [one, other](ViewerState &state) {
        one(state);
        other(state);
    };
}

void nothing(ViewerState &) {}

void negate_lights(ViewerState &state) {
    for (Vec3 *light : {&state.light_base, &state.light_source, &state.light}) {
        *light = {-light->x, -light->y, -light->z};
    }
}

/// The expected state at the end of the run, by the rules of the frame loop.
ViewerState expected_state(const Command &command) {
    ViewerState state;
    command.start(state);
    for (int pass = 1; pass <= all_passes; ++pass) {
        // The first pass has no earlier frame whose time could be subtracted.
        state.message_timer -= pass == 1 ? 0.0 : pass_time;
        if (pass == event_pass) {
            command.effect(state);
            if (!command.message.empty()) {
                std::snprintf(state.message_line.data(), state.message_line.size(), "%s",
                              command.message.c_str());
                state.message_timer = 2.0;
            }
        }
        state.spin_angle += state.rotate;
        ++state.frames_drawn;
    }
    return state;
}

class Commands : public ViewerTest, public testing::WithParamInterface<Command> {};

TEST_P(Commands, ChangeOnlyWhatTheyShould) {
    const Command &command = GetParam();
    offscreen::Setup setup = first_start(all_passes);
    setup.events = command.events;
    // Not before start-up, because start-up turns the light by the mouse once.
    setup.on_frame = [&command](const offscreen::Picture &frame) {
        if (frame.pass == 1) {
            command.start(viewer);
        }
    };
    RunOptions options;
    options.at_end = [] {
        for (const std::string &line : state_as_lines(viewer)) {
            note(line);
        }
    };
    const ProgramRun run = run_program(std::move(setup), options);

    expect_normal_end(run);
    EXPECT_EQ(run.notes, state_as_lines(expected_state(command)));
    std::vector<std::string> messages = texts_drawn(run);
    std::erase_if(messages, [](const std::string &text) { return text.starts_with("fps:"); });
    const std::string third = command.message.empty() ? "Zelvo" : command.message;
    EXPECT_EQ(messages, (std::vector<std::string>{"Zelvo", "Zelvo", third}));
    // Opening the display loads the palette once.
    EXPECT_EQ(count_calls(run, "LoadRGB32"), 1 + command.palette_loads);
}

std::string name_of(const testing::TestParamInfo<Command> &test) {
    return test.param.name;
}

const std::vector<Command> mouse_commands{
    {"MovementAddsToTheTilt",
     nothing,
     {mouse_move(event_pass, 5, -7), mouse_move(event_pass, 100, 3)},
     [](ViewerState &state) {
         state.tilt_x = 105;
         state.tilt_y = -4;
     },
     ""},
    {"MovementCountsOnFromWhatItWas",
     both(set(&ViewerState::tilt_x, -10), set(&ViewerState::tilt_y, 20)),
     {mouse_move(event_pass, -32768, 32767)},
     [](ViewerState &state) {
         state.tilt_x = -32778;
         state.tilt_y = 32787;
     },
     ""},
    {"MovementWrapsAtTheEndOfTheNumbers",
     both(set(&ViewerState::tilt_x, std::numeric_limits<std::int32_t>::max()),
          set(&ViewerState::tilt_y, std::numeric_limits<std::int32_t>::min())),
     {mouse_move(event_pass, 1, -1)},
     [](ViewerState &state) {
         state.tilt_x = std::numeric_limits<std::int32_t>::min();
         state.tilt_y = std::numeric_limits<std::int32_t>::max();
     },
     ""},
    {"RightButtonLeavesTheEffectForTheEnvmap", set(&ViewerState::obj_style, 0), right_presses(1),
     set(&ViewerState::obj_style, 1), "mode: envmap"},
    {"RightButtonGoesToTheTexturemap", nothing, right_presses(1), set(&ViewerState::obj_style, 2),
     "mode: texturemap"},
    {"RightButtonGoesToFlatFaces", set(&ViewerState::obj_style, 2), right_presses(1),
     set(&ViewerState::obj_style, 3), "mode: lightsourced"},
    {"RightButtonGoesToInterpolatedFaces", set(&ViewerState::obj_style, 3), right_presses(1),
     set(&ViewerState::obj_style, 4), "mode: fake (gouraud) phong"},
    {"RightButtonGoesToDepthShading", set(&ViewerState::obj_style, 4), right_presses(1),
     set(&ViewerState::obj_style, 5), "mode: Z-light"},
    {"RightButtonGoesToTheDots", set(&ViewerState::obj_style, 5), right_presses(1),
     set(&ViewerState::obj_style, 6), "mode: dots"},
    {"RightButtonPassesTheEffectOver", set(&ViewerState::obj_style, 6), right_presses(1),
     set(&ViewerState::obj_style, 1), "mode: envmap"},
    {"ThreeRightPressesFromDepthShadingEndAtTheTexturemap", set(&ViewerState::obj_style, 5), right_presses(3),
     set(&ViewerState::obj_style, 2), "mode: texturemap"},
    {"RightButtonStepsFromBelowTheEffectToTheEffect", set(&ViewerState::obj_style, -1), right_presses(1),
     set(&ViewerState::obj_style, 0), "mode: effekt bazmeg :)"},
    {"RightButtonStepsWithoutANameBelowTheEffect", set(&ViewerState::obj_style, -7), right_presses(2),
     set(&ViewerState::obj_style, -5), ""},
    {"RightButtonTakesAnUnknownModeForTheLast", set(&ViewerState::obj_style, 40), right_presses(1),
     set(&ViewerState::obj_style, 1), "mode: envmap"},
    {"RightButtonAfterTheEffectKeyGivesTheEnvmap",
     nothing,
     {key(event_pass, 'e'), right_button(event_pass)},
     set(&ViewerState::obj_style, 1),
     "mode: envmap"},
};

const std::vector<Command> cursor_commands{
    {"UpBrightensTheDots", nothing, cursor(cursor_up), set(&ViewerState::dot_lum, 26624), "dotlum=0.812500"},
    {"DownDarkensTheDots", nothing, cursor(cursor_down), set(&ViewerState::dot_lum, 24576),
     "dotlum=0.750000"},
    {"UpStopsAtTheBrightestDots", nothing, cursor(cursor_up, 200), set(&ViewerState::dot_lum, 131072),
     "dotlum=4.000000"},
    {"UpIsCutAtTheBrightestDots", set(&ViewerState::dot_lum, 131000), cursor(cursor_up),
     set(&ViewerState::dot_lum, 131072), "dotlum=4.000000"},
    {"DownStopsAtNoDots", nothing, cursor(cursor_down, 200), set(&ViewerState::dot_lum, 0),
     "dotlum=0.000000"},
    {"DownLeavesNoDotsAlone", set(&ViewerState::dot_lum, 0), cursor(cursor_down), nothing, "dotlum=0.000000"},
    {"DownIsCutAtNoDots", set(&ViewerState::dot_lum, 1000), cursor(cursor_down),
     set(&ViewerState::dot_lum, 0), "dotlum=0.000000"},
    {"DownFromBeyondTheLimitOnlySteps", set(&ViewerState::dot_lum, 200000), cursor(cursor_down),
     set(&ViewerState::dot_lum, 198976), "dotlum=6.072266"},
    {"UpFromBelowTheLimitOnlySteps", set(&ViewerState::dot_lum, -5000), cursor(cursor_up),
     set(&ViewerState::dot_lum, -3976), "dotlum=-0.121338"},
    {"UpFromTheLargestNumberIsCut", set(&ViewerState::dot_lum, std::numeric_limits<std::int32_t>::max()),
     cursor(cursor_up), set(&ViewerState::dot_lum, 131072), "dotlum=4.000000"},
    {"DownFromTheSmallestNumberIsCut", set(&ViewerState::dot_lum, std::numeric_limits<std::int32_t>::min()),
     cursor(cursor_down), set(&ViewerState::dot_lum, 0), "dotlum=0.000000"},
    {"UpInBlurBrightensTheBlurredDots", set(&ViewerState::clear_style, 1), cursor(cursor_up),
     set(&ViewerState::dot_lum_in_blur, 2816), "dotlum=0.085938"},
    {"DownInBlurDarkensTheBlurredDots", set(&ViewerState::clear_style, 3), cursor(cursor_down),
     set(&ViewerState::dot_lum_in_blur, 2304), "dotlum=0.070312"},
    {"UpInBlurStopsAtTheBrightestBlurredDots", set(&ViewerState::clear_style, 2), cursor(cursor_up, 200),
     set(&ViewerState::dot_lum_in_blur, 32768), "dotlum=1.000000"},
    {"DownInBlurStopsAtNoDots", set(&ViewerState::clear_style, 2), cursor(cursor_down, 200),
     set(&ViewerState::dot_lum_in_blur, 0), "dotlum=0.000000"},
    {"UpWithANegativeStyleBrightensTheBlurredDots", set(&ViewerState::clear_style, -1), cursor(cursor_up),
     set(&ViewerState::dot_lum_in_blur, 2816), "dotlum=0.085938"},
    {"DownWithANegativeStyleDarkensTheBlurredDots", set(&ViewerState::clear_style, -4), cursor(cursor_down),
     set(&ViewerState::dot_lum_in_blur, 2304), "dotlum=0.070312"},
    {"RightLeavesASpinThatIsNotANumber", set(&ViewerState::rotate, not_a_number), cursor(cursor_right),
     nothing, "rotate=nan"},
    {"LeftLeavesASpinThatIsNotANumber", set(&ViewerState::rotate, not_a_number), cursor(cursor_left), nothing,
     "rotate=nan"},
    {"RightCutsAnInfiniteSpin", set(&ViewerState::rotate, infinity), cursor(cursor_right),
     set(&ViewerState::rotate, 4.0), "rotate=4.0"},
    {"LeftLeavesAnInfiniteSpin", set(&ViewerState::rotate, infinity), cursor(cursor_left), nothing,
     "rotate=inf"},
    {"LeftCutsASpinInfinitelyBackwards", set(&ViewerState::rotate, -infinity), cursor(cursor_left),
     set(&ViewerState::rotate, -4.0), "rotate=-4.0"},
    {"RightCutsAHugeSpin", set(&ViewerState::rotate, 1e308), cursor(cursor_right),
     set(&ViewerState::rotate, 4.0), "rotate=4.0"},
    {"LeftLeavesAHugeSpinWithAMessageThatIsCut", set(&ViewerState::rotate, 1e308), cursor(cursor_left),
     nothing, ("rotate=" + std::to_string(1e308)).substr(0, 127)},
    {"RightSpinsFaster", nothing, cursor(cursor_right), set(&ViewerState::rotate, 0.1), "rotate=0.1"},
    {"LeftSpinsBackwards", nothing, cursor(cursor_left), set(&ViewerState::rotate, -0.1), "rotate=-0.1"},
    {"RightIsCutAtTheFastestSpin", set(&ViewerState::rotate, 3.95), cursor(cursor_right),
     set(&ViewerState::rotate, 4.0), "rotate=4.0"},
    {"LeftIsCutAtTheFastestSpinBackwards", set(&ViewerState::rotate, -3.95), cursor(cursor_left),
     set(&ViewerState::rotate, -4.0), "rotate=-4.0"},
    {"RightStopsAtTheFastestSpin", nothing, cursor(cursor_right, 60), set(&ViewerState::rotate, 4.0),
     "rotate=4.0"},
    {"LeftStopsAtTheFastestSpinBackwards", nothing, cursor(cursor_left, 60), set(&ViewerState::rotate, -4.0),
     "rotate=-4.0"},
    {"LeftFromBeyondTheFastestSpinOnlySteps", set(&ViewerState::rotate, 9.0), cursor(cursor_left),
     set(&ViewerState::rotate, 9.0 - 0.1), "rotate=8.9"},
    {"RightFromBeyondTheFastestSpinBackwardsOnlySteps", set(&ViewerState::rotate, -9.0), cursor(cursor_right),
     set(&ViewerState::rotate, -9.0 + 0.1), "rotate=-8.9"},
};

const std::vector<Command> gamma_commands{
    {"OneLowersRed", nothing, keys("1"), set(&Gammas::red, 1.0 - 0.1),
     "R-gamma:0.90 G-gamma:1.00 B-gamma:1.00", 1},
    {"TwoLowersGreen", nothing, keys("2"), set(&Gammas::green, 1.0 - 0.1),
     "R-gamma:1.00 G-gamma:0.90 B-gamma:1.00", 1},
    {"ThreeLowersBlue", nothing, keys("3"), set(&Gammas::blue, 1.0 - 0.1),
     "R-gamma:1.00 G-gamma:1.00 B-gamma:0.90", 1},
    {"FourRaisesRed", nothing, keys("4"), set(&Gammas::red, 1.0 + 0.1),
     "R-gamma:1.10 G-gamma:1.00 B-gamma:1.00", 1},
    {"FiveRaisesGreen", nothing, keys("5"), set(&Gammas::green, 1.0 + 0.1),
     "R-gamma:1.00 G-gamma:1.10 B-gamma:1.00", 1},
    {"SixRaisesBlue", nothing, keys("6"), set(&Gammas::blue, 1.0 + 0.1),
     "R-gamma:1.00 G-gamma:1.00 B-gamma:1.10", 1},
    {"RaisingIsWholeUpToThree", set(&Gammas::red, 2.85), keys("4"), set(&Gammas::red, 2.85 + 0.1),
     "R-gamma:2.95 G-gamma:1.00 B-gamma:1.00", 1},
    {"LoweringIsWholeDownToTheSmallestGamma", set(&Gammas::red, 0.15), keys("1"),
     set(&Gammas::red, 0.15 - 0.1), "R-gamma:0.05 G-gamma:1.00 B-gamma:1.00", 1},
    {"RaisingIsCutAtThree", set(&Gammas::red, 2.95), keys("4"), set(&Gammas::red, 3.0),
     "R-gamma:3.00 G-gamma:1.00 B-gamma:1.00", 1},
    {"LoweringIsCutAtTheSmallestGamma", set(&Gammas::red, 0.05), keys("1"), set(&Gammas::red, 0.02),
     "R-gamma:0.02 G-gamma:1.00 B-gamma:1.00", 1},
    {"LoweringATenthNeverGivesZero", set(&Gammas::green, 0.1), keys("2"), set(&Gammas::green, 0.02),
     "R-gamma:1.00 G-gamma:0.02 B-gamma:1.00", 1},
    {"RaisingGreenIsCutAtThree", set(&Gammas::green, 2.95), keys("5"), set(&Gammas::green, 3.0),
     "R-gamma:1.00 G-gamma:3.00 B-gamma:1.00", 1},
    {"LoweringBlueIsCutAtTheSmallestGamma", set(&Gammas::blue, 0.05), keys("3"), set(&Gammas::blue, 0.02),
     "R-gamma:1.00 G-gamma:1.00 B-gamma:0.02", 1},
    {"RaisingBlueIsCutAtThree", set(&Gammas::blue, 2.95), keys("6"), set(&Gammas::blue, 3.0),
     "R-gamma:1.00 G-gamma:1.00 B-gamma:3.00", 1},
    {"StepsKeepTheirBinaryRounding", nothing, keys("444"), set(&Gammas::red, 1.0 + 0.1 + 0.1 + 0.1),
     "R-gamma:1.30 G-gamma:1.00 B-gamma:1.00", 3},
    {"ZeroResetsAllThree",
     [](ViewerState &state) {
         state.gammas = {0.02, 2.5, 3.0};
     },
     keys("0"),
     [](ViewerState &state) {
         state.gammas = {1.0, 1.0, 1.0};
     },
     "R-gamma:1.00 G-gamma:1.00 B-gamma:1.00", 1},
};

const std::vector<Command> toggle_commands{
    {"ConversionOn", nothing, keys("c"), set(&ViewerState::internal_c2p_enabled, 1), "internal c2p enabled"},
    {"ConversionOff", set(&ViewerState::internal_c2p_enabled, 1), keys("c"),
     set(&ViewerState::internal_c2p_enabled, 0), "system c2p enabled"},
    {"ConversionOffFromAnyOtherValue", set(&ViewerState::internal_c2p_enabled, 2), keys("c"),
     set(&ViewerState::internal_c2p_enabled, 0), "system c2p enabled"},
    {"DoublesideOn", nothing, keys("d"), set(&ViewerState::doubleside, 1), "doubleside on"},
    {"DoublesideOff", set(&ViewerState::doubleside, 1), keys("d"), set(&ViewerState::doubleside, 0),
     "doubleside off"},
    {"DoublesideOffFromAnyOtherValue", set(&ViewerState::doubleside, -1), keys("d"),
     set(&ViewerState::doubleside, 0), "doubleside off"},
    {"CounterOff", nothing, keys("f"), set(&ViewerState::fps, 0), "fps-counter disabled"},
    {"CounterOn", set(&ViewerState::fps, 0), keys("f"), set(&ViewerState::fps, 1), "fps-counter enabled"},
    {"CounterOffFromAnyOtherValue", set(&ViewerState::fps, 2), keys("f"), set(&ViewerState::fps, 0),
     "fps-counter disabled"},
    {"FlipOnNegatesTheLights", nothing, keys("i"), both(set(&ViewerState::flip, 1), negate_lights),
     "polygons flipped"},
    {"FlipOffNegatesTheLights", set(&ViewerState::flip, 1), keys("i"),
     both(set(&ViewerState::flip, 0), negate_lights), "polygons flipped back"},
    {"FlipTwiceRestoresTheLights",
     [](ViewerState &state) {
         state.light_base = {0.1F, -0.2F, 0.7F};
         state.light = {1.0F / 3.0F, 2.5F, -1e-30F};
     },
     keys("ii"), nothing, "polygons flipped back"},
    {"LightRotationOn", nothing, keys("l"), set(&ViewerState::lightsource_rotating, 1),
     "lightsource rotating mode on"},
    {"LightRotationOff", set(&ViewerState::lightsource_rotating, 1), keys("l"),
     set(&ViewerState::lightsource_rotating, 0), "lightsource rotating mode off"},
    {"LightRotationOffFromAnyOtherValue", set(&ViewerState::lightsource_rotating, 5), keys("l"),
     set(&ViewerState::lightsource_rotating, 0), "lightsource rotating mode off"},
    {"DotsOn", nothing, keys("p"), set(&ViewerState::dots, 1), "dots enabled"},
    {"DotsOff", set(&ViewerState::dots, 1), keys("p"), set(&ViewerState::dots, 0), "dots disabled"},
    {"DotsOffFromAnyOtherValue", set(&ViewerState::dots, 2), keys("p"), set(&ViewerState::dots, 0),
     "dots disabled"},
};

const std::vector<Command> other_commands{
    {"BlurGoesToOne", nothing, keys("b"), set(&ViewerState::clear_style, 1), "blurmode: 1"},
    {"BlurGoesToTwo", nothing, keys("bb"), set(&ViewerState::clear_style, 2), "blurmode: 2"},
    {"BlurGoesToThree", nothing, keys("bbb"), set(&ViewerState::clear_style, 3), "blurmode: 3"},
    {"BlurStartsAgain", nothing, keys("bbbb"), set(&ViewerState::clear_style, 0), "blurmode: 0"},
    {"BlurStepsFromBelowTheFirst", set(&ViewerState::clear_style, -3), keys("b"),
     set(&ViewerState::clear_style, -2), "blurmode: -2"},
    {"BlurTakesAnUnknownStyleForTheLast", set(&ViewerState::clear_style, 12), keys("b"),
     set(&ViewerState::clear_style, 0), "blurmode: 0"},
    {"EffectKeyChoosesTheEffect", nothing, keys("e"), set(&ViewerState::obj_style, 0),
     "hmm... little effect :)"},
    {"StopKeyStopsTheSpinAndCountsAnew", set(&ViewerState::rotate, 2.5), keys("r"),
     both(set(&ViewerState::rotate, 0.0), set(&ViewerState::frames_drawn, 0)), "rotate off"},
    {"ResetKeyLeavesTheRunTimeTogglesAlone",
     [](ViewerState &state) {
         state.flip = 1;
         state.doubleside = 1;
         state.lightsource_rotating = 1;
         state.tilt_x = 4;
         state.gammas = {0.5, 2.0, 3.0};
         state.obj_style = 6;
         state.clear_style = 2;
         state.fps = 0;
         state.dots = 1;
         state.dot_lum = 5;
         state.dot_lum_in_blur = 6;
         state.internal_c2p_enabled = 1;
         state.rotate = 0.5;
     },
     keys("R"),
     [](ViewerState &state) {
         const ViewerState defaults;
         state.gammas = defaults.gammas;
         state.obj_style = 1;
         state.clear_style = 0;
         state.fps = 1;
         state.dots = 0;
         state.dot_lum = 25600;
         state.dot_lum_in_blur = 2560;
         state.internal_c2p_enabled = 0;
         state.rotate = 0.0;
     },
     "resetting variables to default", 1},
    {"SaveKeyTellsWhere", nothing, keys("s"), nothing, "saving vars to ENV:Zelvo.vars"},
    {"SaveForGoodKeyTellsWhere", nothing, keys("S"), nothing, "saving vars to ENVARC:Zelvo.vars"},
    {"TextureKeyTellsOfTheTextureEvenWhenCancelled", nothing, keys("t"), nothing, "new texture loaded"},
    {"LoadKeyWithoutAFileOnlyRebuildsThePalette", nothing, keys("w"), nothing,
     "loading vars from ENV:Zelvo.vars", 1},
    {"LoadForGoodKeyWithoutAFileOnlyRebuildsThePalette", nothing, keys("W"), nothing,
     "loading vars from ENVARC:Zelvo.vars", 1},
    {"ModeKeyOpensTheDisplayAgain", nothing, keys("m"), nothing, "R-gamma:1.00 G-gamma:1.00 B-gamma:1.00", 1},
    {"TheLastOfSeveralMessagesStays", nothing, keys("pdb1l"),
     [](ViewerState &state) {
         state.dots = 1;
         state.doubleside = 1;
         state.clear_style = 1;
         state.gammas.red = 1.0 - 0.1;
         state.lightsource_rotating = 1;
     },
     "lightsource rotating mode on", 1},
    {"LaterEventsSeeWhatEarlierOnesDid",
     nothing,
     {raw_key(event_pass, cursor_up), key(event_pass, 'b'), raw_key(event_pass, cursor_up)},
     [](ViewerState &state) {
         state.dot_lum = 26624;
         state.clear_style = 1;
         state.dot_lum_in_blur = 2816;
     },
     "dotlum=0.085938"},
};

INSTANTIATE_TEST_SUITE_P(OfTheMouse, Commands, testing::ValuesIn(mouse_commands), name_of);
INSTANTIATE_TEST_SUITE_P(OfTheCursorKeys, Commands, testing::ValuesIn(cursor_commands), name_of);
INSTANTIATE_TEST_SUITE_P(OfTheGammaKeys, Commands, testing::ValuesIn(gamma_commands), name_of);
INSTANTIATE_TEST_SUITE_P(OfTheToggles, Commands, testing::ValuesIn(toggle_commands), name_of);
INSTANTIATE_TEST_SUITE_P(OfTheOtherKeys, Commands, testing::ValuesIn(other_commands), name_of);

offscreen::Event event_of(ULONG event_class, int code) {
    offscreen::Event event;
    event.pass = event_pass;
    event.message.Class = event_class;
    event.message.Code = static_cast<UWORD>(code);
    return event;
}

/// All codes of an event class except these.
Events all_but(ULONG event_class, const std::vector<int> &codes, int end = 256) {
    Events events;
    for (int code = 0; code < end; ++code) {
        if (std::find(codes.begin(), codes.end(), code) == codes.end()) {
            events.push_back(event_of(event_class, code));
        }
    }
    return events;
}

std::vector<int> commanding_characters() {
    std::vector<int> codes{escape};
    for (const char character : std::string("qx0123456bcdefilmprRsStwW")) {
        codes.push_back(character);
    }
    return codes;
}

const std::vector<Command> ignored_events{
    {"AllOtherCharacters", nothing, all_but(IDCMP_VANILLAKEY, commanding_characters()), nothing, ""},
    {"AllOtherRawKeys", nothing,
     all_but(IDCMP_RAWKEY, {cursor_up, cursor_down, cursor_right, cursor_left}, 1024), nothing, ""},
    {"AllOtherButtonsAndAllReleases", nothing, all_but(IDCMP_MOUSEBUTTONS, {0x68, 0x69}, 1024), nothing, ""},
    {"EventsOfAnUnknownKind",
     nothing,
     {event_of(0x00000200, 'q'), event_of(0x00100000, 27), event_of(0, 0x68)},
     nothing,
     ""},
};
INSTANTIATE_TEST_SUITE_P(Ignored, Commands, testing::ValuesIn(ignored_events), name_of);

} // namespace
