// SPDX-License-Identifier: MIT
// Tests of the options that choose a view. Each draws the same as a settings file or an input script.
#include "picture_reading.h"
#include "render_test.h"
#include "support/viewer_test.h"

#include <algorithm>
#include <cmath>

namespace {

using Settings = std::map<std::string, std::string>;

class RenderView : public RenderTest {
protected:
    /// Everything that a run of the cube with these arguments shows: its frames, and its pictures with
    /// palette and texts.
    std::vector<std::string> shown(const Words &arguments) const {
        const TemporaryFiles pictures;
        const Words outputs{"--chunky", pictures.folder(), "--png", pictures.path("%d.png")};
        const ToolRun run = render_cube(joined(outputs, arguments));
        EXPECT_EQ(run.exit_code, 0) << run.errors;
        EXPECT_EQ(run.errors, "");
        std::vector<std::string> files;
        for (const std::string &name : names_in(pictures.folder())) {
            files.push_back(name + pictures.read(name));
        }
        return files;
    }

    /// Writes these settings into a folder and returns the option that uses it for ENV:.
    static Words with_settings(const TemporaryFiles &env, Settings settings) {
        settings.insert({{"width", "100"}, {"height", "75"}});
        env.write("Zelvo.vars", settings_text(settings));
        return {"--env", env.folder()};
    }

    /// The same for a run that loads these settings.
    std::vector<std::string> shown_by_settings(const Settings &settings, const Words &arguments) const {
        const TemporaryFiles env;
        return shown(joined(with_settings(env, settings), arguments));
    }

    /// The frame of one pass of the cube.
    std::vector<std::uint8_t> frame(const Words &arguments, int pass) const {
        const TemporaryFiles frames;
        const ToolRun run =
            render_cube(joined({"--passes", std::to_string(pass), "--chunky", frames.folder()}, arguments));
        EXPECT_EQ(run.exit_code, 0) << run.errors;
        std::array<char, 16> name{};
        std::snprintf(name.data(), name.size(), "%05d.pgm", pass);
        return read_pgm(frames.read(name.data())).pixels;
    }
};

TEST_F(RenderView, IsTheSameAsWithASettingsFile) {
    const std::vector<std::pair<Words, Settings>> views{
        {{"--mode", "effect"}, {{"obj style", "0"}}},
        {{"--mode", "envmap"}, {{"obj style", "1"}}},
        {{"--mode", "texturemap"}, {{"obj style", "2"}}},
        {{"--mode", "lightsourced"}, {{"obj style", "3"}}},
        {{"--mode", "phong"}, {{"obj style", "4"}}},
        {{"--mode", "z-light"}, {{"obj style", "5"}}},
        {{"--mode", "dots"}, {{"obj style", "6"}}},
        {{"--mode", "0"}, {{"obj style", "0"}}},
        {{"--mode", "5"}, {{"obj style", "5"}}},
        {{"--mode", "6"}, {{"obj style", "6"}}},
        {{"--spin"}, {{"rotate", "2.0"}}},
        {{"--spin=0.3"}, {{"rotate", "0.3"}}},
        {{"--spin=4"}, {{"rotate", "4.0"}}},
        {{"--spin=-4"}, {{"rotate", "-4.0"}}},
        {{"--spin", "--clear", "clear"}, {{"rotate", "2.0"}}},
        {{"--spin", "--clear", "fade"}, {{"rotate", "2.0"}, {"clear style", "1"}}},
        {{"--spin", "--clear", "blur"}, {{"rotate", "2.0"}, {"clear style", "2"}}},
        {{"--spin", "--clear", "rise"}, {{"rotate", "2.0"}, {"clear style", "3"}}},
        {{"--spin", "--clear", "0"}, {{"rotate", "2.0"}}},
        {{"--spin", "--clear", "3"}, {{"rotate", "2.0"}, {"clear style", "3"}}},
        {{"--dots"}, {{"dots", "1"}}},
        {{"--gamma", "0.02,3,1.5"}, {{"gammas", "0.02 3.0 1.5"}}},
        {{"--gamma", "3,0.02,0.123456789"}, {{"gammas", "3.0 0.02 0.123456789"}}},
        {{"--mode", "phong", "--spin=1.1", "--clear", "blur", "--dots", "--gamma", "2,1,0.5"},
         {{"obj style", "4"}, {"rotate", "1.1"}, {"clear style", "2"}, {"dots", "1"}, {"gammas", "2 1 0.5"}}},
    };
    const Words passes{"--passes", "7"};
    std::set<std::vector<std::string>> different;
    for (const auto &[options, settings] : views) {
        const std::vector<std::string> view = shown(joined(passes, options));
        EXPECT_EQ(view.size(), 14U);
        EXPECT_TRUE(view == shown_by_settings(settings, passes)) << options[0] << " " << options.back();
        different.insert(view);
    }
    // Four of the views equal another one under a second name, and one is the default view.
    EXPECT_EQ(different.size(), views.size() - 6);
    EXPECT_TRUE(different.contains(shown(passes)));
}

TEST_F(RenderView, IsTheSameAsWithAMovementInTheFirstPass) {
    const Words passes{"--passes", "4", "--spin"};
    for (const auto &[tilt, move] : std::vector<std::pair<std::string, std::string>>{
             {"40,0", "1 move 40 0\n"},
             {"-40,25", "1 move -40 25\n"},
             {"32767,-32768", "1 move 32767 -32768\n"},
             {"-32768,32767", "1 move -32768 32767\n"},
         }) {
        EXPECT_TRUE(shown(joined(passes, {"--tilt", tilt})) == shown(joined(passes, script(move)))) << tilt;
    }
    // An input script adds its own events.
    EXPECT_TRUE(shown(joined({"--passes", "5", "--tilt", "40,9"}, script("1 key p\n2 button right\n"))) ==
                shown(joined({"--passes", "5"}, script("1 move 40 9\n1 key p\n2 button right\n"))));
    EXPECT_FALSE(shown(joined(passes, {"--tilt", "40,9"})) == shown(joined(passes, {"--tilt", "9,40"})));
}

TEST_F(RenderView, IsShownByTheFirstPassThatHasIt) {
    const Words third{"--passes", "3", "--from", "3"};
    for (const Words &view : std::vector<Words>{{"--mode", "phong"},
                                                {"--spin"},
                                                {"--tilt", "40,20"},
                                                {"--clear", "fade"},
                                                {"--dots"},
                                                {"--gamma", "2,2,2"},
                                                {"--no-texts"},
                                                {"--background", "transparent"}}) {
        const std::vector<std::string> files = shown(view);
        EXPECT_EQ(files.size(), 4U) << view[0];
        EXPECT_TRUE(files == shown(joined(third, view))) << view[0];
    }
    // Explicit numbers of passes are obeyed.
    EXPECT_EQ(shown({"--dots", "--passes", "2"}).size(), 4U);
    EXPECT_EQ(shown({"--dots", "--from", "1"}).size(), 2U);
    EXPECT_EQ(shown({}).size(), 2U);
}

TEST_F(RenderView, TurnsOnceWithoutASeam) {
    const Settings turning{{"rotate", "261.79938779914943"}, {"obj style", "4"}};
    const Words view{"--mode", "phong", "--tilt", "10,50"};
    const Words tilt = script("1 move 10 50\n");
    // Frames and pictures of passes 3 to 8; the frames of passes 1 and 2 come before them.
    const std::vector<std::string> turn = shown(joined(view, {"--turntable", "6"}));
    EXPECT_TRUE(turn == shown_by_settings(turning, joined(tilt, {"--passes", "8", "--from", "3"})));
    EXPECT_EQ(turn.size(), 8U + 6U);

    const TemporaryFiles env;
    const Words more = joined(tilt, with_settings(env, turning));
    std::set<std::vector<std::uint8_t>> different;
    for (int pass = 3; pass < 9; ++pass) {
        EXPECT_TRUE(frame(more, pass) == frame(more, pass + 6)) << pass;
        different.insert(frame(more, pass));
    }
    EXPECT_EQ(different.size(), 6U);
}

TEST_F(RenderView, HasTrailsFromTheFirstPictureOn) {
    const Words fading{"--clear", "fade", "--no-texts"};
    const ToolRun run =
        render_cube(joined(fading, {"--turntable", "32", "--chunky", "turn", "--gif", "a.gif"}));
    expect_cube_run(run, 66 + 32);
    const AnimationFile animation = read_gif(work.path("a.gif"));
    ASSERT_EQ(animation.pictures.size(), 32U);
    EXPECT_TRUE(animation.pictures[0].picture.pixels == read_pgm(work.read("turn/00067.pgm")).pixels);
    EXPECT_TRUE(animation.pictures[31].picture.pixels == read_pgm(work.read("turn/00098.pgm")).pixels);
    // The next turn would begin with the same picture.
    const TemporaryFiles env;
    const Words more = with_settings(env, {{"rotate", "49.087385212340515"}, {"clear style", "1"}});
    EXPECT_TRUE(frame(more, 67) == animation.pictures[0].picture.pixels);
    EXPECT_TRUE(frame(more, 99) == animation.pictures[0].picture.pixels);
    // As many turns come before the first picture as a trail needs.
    for (const auto &[pictures, passes] :
         std::vector<std::pair<int, int>>{{1, 67}, {63, 191}, {64, 130}, {65, 132}}) {
        expect_cube_run(render_cube(joined(fading, {"--turntable", std::to_string(pictures)})), passes);
    }
    expect_cube_run(render_cube({"--turntable", "1"}), 3);
    expect_cube_run(render_cube({"--turntable", "65", "--clear", "clear"}), 67);
}

TEST_F(RenderView, HasNoTextsInItsPictures) {
    const Words outputs{"--no-texts", "--passes", "3",       "--from", "3",         "--png", "plain.png",
                        "--gif",      "a.gif",    "--sheet", "s.png",  "--columns", "1"};
    expect_cube_run(render_cube(outputs), 3);
    const IndexedPicture plain = read_png(work.path("plain.png"));
    // The same as with the counter off, after the first message is gone (two seconds).
    const std::vector<std::string> later =
        shown_by_settings({{"fps", "0"}}, {"--tick", "1", "--passes", "3", "--from", "3"});
    EXPECT_EQ(later.back(), "3.png" + work.read("plain.png"));
    EXPECT_TRUE(read_gif(work.path("a.gif")).pictures.at(0).picture.pixels == plain.pixels);
    EXPECT_EQ(read_png(work.path("s.png")).at(4 + 50, 4 + 37), plain.at(50, 37));
    // The pictures show the same passes.
    EXPECT_TRUE(plain.pixels == frame({}, 3));
    EXPECT_TRUE(frame({"--spin"}, 4) != frame({"--spin"}, 3));
    expect_cube_run(render_cube({"--no-texts", "--spin", "--passes", "4", "--png", "%d.png"}), 4);
    EXPECT_TRUE(read_png(work.path("4.png")).pixels == frame({"--spin"}, 4));
}

TEST_F(RenderView, IsOpaqueOnFacesEvenIfBlack) {
    work.write("black", std::string(65536, '\0'));
    // Large frames are drawn in bands, with depths of their own.
    for (const auto &[size, pass] : std::vector<std::pair<std::string, int>>{
             {"100x75", 3}, {"100x75", 5}, {"1280x1024", 3}, {"1280x1024", 5}}) {
        const std::string last = std::to_string(pass);
        const Words spinning{object("cube"), "--size",     size,       "--spin=4", "--tilt",
                             "30,20",        "--no-texts", "--passes", last,       "--from",
                             last,           "--png",      "last.png"};
        expect_cube_run(render(joined(spinning, {"--mode", "z-light"})), pass, size);
        const std::vector<std::uint8_t> faces = read_png(work.path("last.png")).pixels;
        expect_cube_run(render(joined(spinning, {"--envmap", "black", "--background", "transparent"})), pass,
                        size);
        std::vector<std::array<std::uint8_t, 4>> expected;
        for (const std::uint8_t depth : faces) {
            expected.push_back({0, 0, 0, static_cast<std::uint8_t>(depth != 0 ? 255 : 0)});
        }
        EXPECT_TRUE(read_colour_png(work.path("last.png")).pixels == expected) << size << " " << pass;
        const auto opaque = static_cast<std::size_t>(
            std::count_if(faces.begin(), faces.end(), [](std::uint8_t depth) { return depth != 0; }));
        EXPECT_GT(opaque, faces.size() / 15) << size;
        EXPECT_LT(opaque, faces.size() * 14 / 15) << size;
    }
}

TEST_F(RenderView, IsTransparentWhereNothingIsDrawn) {
    // Dots write no depth. Depths of earlier faces, which are still in the buffer, must not count.
    for (const std::string mode : {"0", "6"}) {
        const Words input = script(mode == "0" ? "1 key e\n"
                                               : "1 button right\n1 button right\n1 button right\n"
                                                 "1 button right\n1 button right\n");
        const Words gammas{"--gamma", "3,1,0.5", "--tilt", "30,20"};
        expect_cube_run(
            render_cube(joined(joined(gammas, input), {"--background", "transparent", "--no-texts", "--png",
                                                       "dots.png", "--passes", "4", "--from", "4"})),
            4);
        const std::vector<std::uint8_t> levels = frame(joined(gammas, input), 4);
        const ColourPicture dots = read_colour_png(work.path("dots.png"));
        ASSERT_EQ(dots.pixels.size(), levels.size());
        std::set<int> different;
        for (std::size_t i = 0; i < levels.size(); ++i) {
            const double level = levels[i] / 255.0;
            const auto channel = [level](double gamma) {
                return static_cast<std::uint8_t>(std::pow(level, 1.0 / gamma) * 255.0);
            };
            EXPECT_EQ(dots.pixels[i],
                      (std::array<std::uint8_t, 4>{channel(3.0), levels[i], channel(0.5),
                                                   static_cast<std::uint8_t>(levels[i] != 0 ? 255 : 0)}))
                << i;
            different.insert(levels[i]);
        }
        EXPECT_GT(different.size(), 10U);
    }
    // Before the first frame the picture has only texts.
    expect_cube_run(
        render_cube({"--background", "transparent", "--no-texts", "--passes", "1", "--png", "none.png"}), 1);
    EXPECT_EQ(read_colour_png(work.path("none.png")).pixels,
              (std::vector<std::array<std::uint8_t, 4>>(7500)));
}

TEST_F(RenderView, IsOnBlackOtherwise) {
    expect_cube_run(render_cube({"--background", "black", "--png", "named.png"}), 3);
    expect_cube_run(render_cube({"--passes", "3", "--from", "3", "--png", "plain.png"}), 3);
    EXPECT_EQ(work.read("named.png"), work.read("plain.png"));
}

} // namespace
