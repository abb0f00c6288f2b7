// SPDX-License-Identifier: MIT
// Tests of the pictures that zelvo-render writes.
#include "picture_reading.h"
#include "render_test.h"
#include "support/viewer_test.h"

namespace {

class RenderPictures : public RenderTest {
protected:
    IndexedPicture pgm(const std::string &name) const { return read_pgm(work.read(name)); }
    IndexedPicture png(const std::string &name) const { return read_png(work.path(name)); }
    AnimationFile gif(const std::string &name) const { return read_gif(work.path(name)); }
};

/// A frame as the screen shows it: with the message line, and the counter at the bottom.
std::vector<std::uint8_t> with_texts(const IndexedPicture &frame, const std::string &message,
                                     const std::string &counter) {
    BitMap bitmap(frame.width, frame.height);
    bitmap.pixels = frame.pixels;
    RastPort context{};
    host::initialise_context(context);
    context.BitMap = &bitmap;
    context.cp_x = 1;
    context.cp_y = 10;
    host::draw_text(context, message.data(), message.size());
    context.cp_x = 1;
    context.cp_y = static_cast<WORD>(frame.height - 10);
    host::draw_text(context, counter.data(), counter.size());
    return bitmap.pixels;
}

std::vector<host::Colour> grey_ramp() {
    std::vector<host::Colour> colours;
    for (int i = 0; i < 256; ++i) {
        const auto level = static_cast<std::uint8_t>(i);
        colours.push_back({level, level, level});
    }
    return colours;
}

TEST_F(RenderPictures, AreExactlyTheFramesWrittenToTheScreen) {
    expect_cube_run(render_cube({"--passes", "3", "--chunky", "deep/frames"}), 3);
    EXPECT_EQ(names_in(work.path("deep/frames")),
              (std::set<std::string>{"00001.pgm", "00002.pgm", "00003.pgm"}));
    const std::string first = work.read("deep/frames/00001.pgm");
    EXPECT_EQ(first, "P5\n100 75\n255\n" + std::string(7500, '\0'));
    EXPECT_TRUE(work.read("deep/frames/00002.pgm").starts_with("P5\n100 75\n255\n"));
    EXPECT_EQ(first.size(), work.read("deep/frames/00002.pgm").size());
    EXPECT_NE(work.read("deep/frames/00002.pgm"), first);
}

TEST_F(RenderPictures, ShowTheFrameWithItsTextsOnTop) {
    expect_cube_run(render_cube(joined({"--passes", "3", "--chunky", "frames", "--png", "frame-%05d.png"},
                                       script("1 rawkey 0x4E\n2 key p\n"))),
                    3);
    const std::vector<std::pair<std::string, std::string>> texts{
        {"Zelvo", "fps:25.60 "}, {"rotate=0.1", "fps:38.40 "}, {"dots enabled", "fps:51.20 "}};
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const std::string number = "0000" + std::to_string(i + 1);
        const IndexedPicture picture = png("frame-" + number + ".png");
        EXPECT_EQ(picture.width, 100);
        EXPECT_EQ(picture.height, 75);
        EXPECT_EQ(picture.palette, grey_ramp());
        EXPECT_TRUE(picture.pixels ==
                    with_texts(pgm("frames/" + number + ".pgm"), texts[i].first, texts[i].second))
            << number;
    }
}

TEST_F(RenderPictures, ShowOnlyTheFrameWhenNoTextIsDrawn) {
    // A pass takes 4 seconds here, so the message of the counter's key is gone after pass 2.
    const ToolRun run =
        render_cube(joined({"--passes", "3", "--tick", "1", "--chunky", "frames", "--png", "frame-%d.png"},
                           script("1 key f\n")));
    EXPECT_EQ(run.exit_code, 0);
    EXPECT_TRUE(png("frame-3.png").pixels == pgm("frames/00003.pgm").pixels);
    EXPECT_FALSE(png("frame-2.png").pixels == pgm("frames/00002.pgm").pixels);
}

TEST_F(RenderPictures, HaveTheScreensPalette) {
    work.write("Zelvo.vars", settings_text({{"gammas", "2.0 0.5 3.0"}, {"width", "64"}, {"height", "48"}}));
    const ToolRun run = render_cube({"--env", ".", "--png", "one.png", "--gif", "a.gif", "--sheet", "s.png"});
    EXPECT_EQ(run.exit_code, 0);
    const IndexedPicture picture = png("one.png");
    ASSERT_EQ(picture.palette.size(), 256U);
    EXPECT_EQ(picture.width, 64);
    EXPECT_EQ(picture.palette[0], (host::Colour{0, 0, 0}));
    EXPECT_EQ(picture.palette[1], (host::Colour{15, 0, 40}));
    EXPECT_EQ(picture.palette[64], (host::Colour{127, 16, 160}));
    EXPECT_EQ(picture.palette[128], (host::Colour{180, 64, 202}));
    EXPECT_EQ(picture.palette[255], (host::Colour{255, 255, 255}));
    EXPECT_EQ(gif("a.gif").pictures.at(0).picture.palette, picture.palette);
    EXPECT_EQ(png("s.png").palette, picture.palette);
}

TEST_F(RenderPictures, MakeAnEndlessAnimation) {
    expect_cube_run(render_cube(joined({"--passes", "6", "--png", "frame-%d.png", "--gif", "a.gif"},
                                       script("1 rawkey 0x4E\n2 move 30 10\n4 button right\n"))),
                    6);
    const AnimationFile animation = gif("a.gif");
    EXPECT_EQ(animation.width, 100);
    EXPECT_EQ(animation.height, 75);
    EXPECT_EQ(animation.repetitions, 0);
    ASSERT_EQ(animation.pictures.size(), 6U);
    for (std::size_t i = 0; i < 6; ++i) {
        const AnimationPicture &shown = animation.pictures[i];
        const IndexedPicture single = png("frame-" + std::to_string(i + 1) + ".png");
        // At 50 pictures per second each lasts two hundredths of a second.
        EXPECT_EQ(shown.delay, 2);
        EXPECT_TRUE(shown.is_cleared_afterwards);
        EXPECT_FALSE(shown.has_transparency);
        EXPECT_EQ(shown.left, 0);
        EXPECT_EQ(shown.top, 0);
        EXPECT_EQ(shown.picture.width, 100);
        EXPECT_EQ(shown.picture.height, 75);
        EXPECT_EQ(shown.picture.palette, single.palette);
        EXPECT_TRUE(shown.picture.pixels == single.pixels) << "picture " << i + 1;
    }
}

TEST_F(RenderPictures, MakeAnAnimationWiderThanAByteCanSay) {
    const ToolRun run = render({object("cube"), "--envmap", test_file("golden/envmap.chunky"), "--size",
                                "320x258", "--passes", "2", "--gif", "a.gif"});
    EXPECT_EQ(run.exit_code, 0);
    const AnimationFile animation = gif("a.gif");
    EXPECT_EQ(animation.width, 320);
    EXPECT_EQ(animation.height, 258);
    EXPECT_EQ(animation.pictures.at(1).picture.width, 320);
    EXPECT_EQ(animation.pictures.at(1).picture.height, 258);
}

TEST_F(RenderPictures, KeepTheirPalettesWhenTheGammaChanges) {
    expect_cube_run(render_cube(joined({"--passes", "4", "--png", "frame-%d.png", "--gif", "a.gif"},
                                       script("2 key 4\n3 key 0\n"))),
                    4);
    const AnimationFile animation = gif("a.gif");
    ASSERT_EQ(animation.pictures.size(), 4U);
    for (std::size_t i = 0; i < 4; ++i) {
        const IndexedPicture single = png("frame-" + std::to_string(i + 1) + ".png");
        const AnimationPicture &shown = animation.pictures[i];
        EXPECT_EQ(shown.has_own_palette, i == 2) << i;
        EXPECT_EQ(shown.picture.palette, single.palette) << i;
        EXPECT_EQ(single.palette == grey_ramp(), i != 2) << i;
    }
}

TEST_F(RenderPictures, ChangeTheirSizeWithTheScreenMode) {
    const ToolRun run = render_cube(
        joined({"--passes", "3", "--png", "frame-%d.png", "--gif", "a.gif", "--chunky", "frames"},
               script("answer mode 0 64 90\n1 key m\nanswer mode 0 120 48\n2 key m\nanswer mode 0 80 60\n")));
    EXPECT_EQ(run.exit_code, 0);
    const AnimationFile animation = gif("a.gif");
    EXPECT_EQ(animation.width, 120);
    EXPECT_EQ(animation.height, 90);
    const std::vector<std::pair<int, int>> sizes{{64, 90}, {120, 48}, {80, 60}};
    ASSERT_EQ(animation.pictures.size(), sizes.size());
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        const IndexedPicture single = png("frame-" + std::to_string(i + 1) + ".png");
        EXPECT_EQ(std::pair(single.width, single.height), sizes[i]);
        EXPECT_EQ(std::pair(animation.pictures[i].picture.width, animation.pictures[i].picture.height),
                  sizes[i]);
        EXPECT_TRUE(animation.pictures[i].picture.pixels == single.pixels) << i;
        EXPECT_EQ(pgm("frames/0000" + std::to_string(i + 1) + ".pgm").width, sizes[i].first);
    }
}

TEST_F(RenderPictures, OmitEarlierPassesOnRequest) {
    expect_cube_run(render_cube({"--passes", "9", "--from", "4", "--every", "2", "--png", "f%d.png", "--gif",
                                 "a.gif", "--chunky", "frames"}),
                    9);
    EXPECT_EQ(names_in(work.folder()),
              (std::set<std::string>{"a.gif", "f4.png", "f6.png", "f8.png", "frames"}));
    EXPECT_EQ(gif("a.gif").pictures.size(), 3U);
    EXPECT_EQ(names_in(work.path("frames")).size(), 9U);
}

TEST_F(RenderPictures, AreNamedByTheirPass) {
    expect_cube_run(render_cube({"--passes", "12", "--from", "9", "--every", "3", "--png", "a%%-%03d.png"}),
                    12);
    EXPECT_EQ(names_in(work.folder()), (std::set<std::string>{"a%-009.png", "a%-012.png"}));
    expect_cube_run(render_cube({"--passes", "5", "--from", "5", "--png", "one.png"}), 5);
    // Only one of the two passes has a picture, so one name is enough.
    expect_cube_run(render_cube({"--passes", "2", "--every", "2", "--png", "two.png"}), 2);
    expect_cube_run(render_cube({"--passes", "12", "--from", "12", "--png", "b%1d.png"}), 12);
    expect_cube_run(render_cube({"--passes", "3", "--from", "3", "--png", "c%4d.png"}), 3);
    expect_cube_run(render_cube({"--passes", "3", "--from", "3", "--png", "d%d.png"}), 3);
    for (const char *name : {"one.png", "two.png", "b12.png", "c   3.png", "d3.png"}) {
        EXPECT_TRUE(names_in(work.folder()).contains(name)) << name;
    }
}

TEST_F(RenderPictures, ReplaceOlderFiles) {
    work.write("a.gif", "old");
    work.write("p.png", "old");
    work.write("s.png", "old");
    expect_cube_run(render_cube({"--gif", "a.gif", "--png", "p.png", "--sheet", "s.png"}), 1);
    EXPECT_EQ(gif("a.gif").pictures.size(), 1U);
    EXPECT_EQ(png("p.png").width, 100);
    EXPECT_GT(png("s.png").width, 100);
}

TEST_F(RenderPictures, AreSideBySideOnASheet) {
    expect_cube_run(render_cube(joined(
                        {"--passes", "7", "--png", "frame-%d.png", "--sheet", "sheet.png", "--columns", "3"},
                        script("1 key e\n2 button right\n3 button right\n4 button right\n"
                               "5 button right\n6 button right\n"))),
                    7);
    const IndexedPicture sheet = png("sheet.png");
    // Seven pictures in rows of three, with 4 pixels of dark grey between and around them.
    ASSERT_EQ(sheet.width, 4 + 3 * (100 + 4));
    ASSERT_EQ(sheet.height, 4 + 3 * (75 + 4));
    std::vector<std::uint8_t> expected(sheet.pixels.size(), 48);
    for (int i = 0; i < 7; ++i) {
        const IndexedPicture single = png("frame-" + std::to_string(i + 1) + ".png");
        const int left = 4 + i % 3 * 104;
        const int top = 4 + i / 3 * 79;
        for (int y = 0; y < 75; ++y) {
            for (int x = 0; x < 100; ++x) {
                expected[static_cast<std::size_t>((top + y) * sheet.width + left + x)] =
                    static_cast<std::uint8_t>(single.at(x, y));
            }
        }
    }
    EXPECT_TRUE(sheet.pixels == expected);
}

TEST_F(RenderPictures, HaveThePlacesOfTheFirstOnesSizeOnASheet) {
    const ToolRun run = render_cube(joined(
        {"--passes", "3", "--png", "frame-%d.png", "--sheet", "sheet.png", "--columns", "3"},
        script(
            "answer mode 0 64 60\n1 key m\nanswer mode 0 120 48\n2 key m\nanswer mode 0 40 90\n2 key 4\n")));
    EXPECT_EQ(run.exit_code, 0);
    const IndexedPicture sheet = png("sheet.png");
    ASSERT_EQ(sheet.width, 4 + 3 * (64 + 4));
    ASSERT_EQ(sheet.height, 4 + 60 + 4);
    // Larger pictures are cut, smaller ones are filled up with black. The palette is the first picture's.
    EXPECT_EQ(sheet.palette, png("frame-1.png").palette);
    EXPECT_NE(sheet.palette, png("frame-3.png").palette);
    std::vector<std::uint8_t> expected(sheet.pixels.size(), 48);
    for (int i = 0; i < 3; ++i) {
        const IndexedPicture single = png("frame-" + std::to_string(i + 1) + ".png");
        for (int y = 0; y < 60; ++y) {
            for (int x = 0; x < 64; ++x) {
                const bool is_inside = x < single.width && y < single.height;
                expected[static_cast<std::size_t>((4 + y) * sheet.width + 4 + i * 68 + x)] =
                    static_cast<std::uint8_t>(is_inside ? single.at(x, y) : 0);
            }
        }
    }
    EXPECT_TRUE(sheet.pixels == expected);
}

TEST_F(RenderPictures, AreWholeOnASheet) {
    // The text reaches the last row of such a low picture.
    const ToolRun run = render({object("cube"), "--envmap", test_file("golden/envmap.chunky"), "--size",
                                "100x11", "--png", "frame-%d.png", "--sheet", "sheet.png", "--from", "1"});
    EXPECT_EQ(run.exit_code, 0);
    const IndexedPicture single = png("frame-1.png");
    const IndexedPicture sheet = png("sheet.png");
    ASSERT_EQ(sheet.height, 4 + 11 + 4);
    int texts = 0;
    for (int x = 0; x < 100; ++x) {
        EXPECT_EQ(sheet.at(4 + x, 4 + 10), single.at(x, 10)) << x;
        texts += single.at(x, 10) != 0 ? 1 : 0;
    }
    EXPECT_GT(texts, 0);
}

TEST_F(RenderPictures, MakeASheetNoWiderThanTheirNumber) {
    expect_cube_run(render_cube({"--passes", "2", "--sheet", "sheet.png"}), 2);
    EXPECT_EQ(png("sheet.png").width, 4 + 2 * 104);
    EXPECT_EQ(png("sheet.png").height, 4 + 79);
    expect_cube_run(render_cube({"--passes", "4", "--sheet", "sheet.png"}), 4);
    EXPECT_EQ(png("sheet.png").width, 4 + 4 * 104);
    EXPECT_EQ(png("sheet.png").height, 4 + 79) << "a full row is the last one";
    expect_cube_run(render_cube({"--passes", "5", "--sheet", "sheet.png"}), 5);
    EXPECT_EQ(png("sheet.png").width, 4 + 4 * 104);
    EXPECT_EQ(png("sheet.png").height, 4 + 2 * 79);
}

} // namespace
