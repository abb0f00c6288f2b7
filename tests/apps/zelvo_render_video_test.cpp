// SPDX-License-Identifier: MIT
// Tests of zelvo-render's video stream, in a file and on standard output.
#include "picture_reading.h"
#include "render_test.h"

#include <cmath>
#include <fstream>

namespace {

class RenderVideo : public RenderTest {};

const std::string header = "YUV4MPEG2 W100 H75 F50:1 Ip A1:1 C444 XCOLORRANGE=LIMITED\n";
const std::string frame_header = "FRAME\n";
constexpr std::size_t picture_pixels = 100 * 75;
const std::size_t frame_size = frame_header.size() + 3 * picture_pixels;

TEST_F(RenderVideo, HasThePicturesInTheirColours) {
    const ToolRun run = render_cube({"--passes", "4", "--from", "2", "--spin", "--gamma", "2,0.5,3", "--y4m",
                                     "a.y4m", "--png", "%d.png"});
    expect_cube_run(run, 4);
    const std::string video = work.read("a.y4m");
    ASSERT_EQ(video.size(), header.size() + 3 * frame_size);
    EXPECT_EQ(video.substr(0, header.size()), header);
    for (std::size_t number = 0; number < 3; ++number) {
        const std::string frame = video.substr(header.size() + number * frame_size, frame_size);
        EXPECT_EQ(frame.substr(0, frame_header.size()), frame_header);
        const IndexedPicture picture = read_png(work.path(std::to_string(number + 2) + ".png"));
        for (std::size_t i = 0; i < picture_pixels; ++i) {
            const auto level = [&](std::size_t plane) {
                return static_cast<unsigned char>(frame[frame_header.size() + plane * picture_pixels + i]);
            };
            // Converted to red, green and blue as a player does.
            const double luma = 255.0 / 219.0 * (level(0) - 16);
            const double blue_difference = 255.0 / 112.0 * (level(1) - 128);
            const double red_difference = 255.0 / 112.0 * (level(2) - 128);
            const double red = luma + 0.701 * red_difference;
            const double blue = luma + 0.886 * blue_difference;
            const double green = (luma - 0.299 * red - 0.114 * blue) / 0.587;
            const host::Colour &colour = picture.palette[picture.pixels[i]];
            ASSERT_NEAR(red, colour[0], 2.0) << i;
            ASSERT_NEAR(green, colour[1], 2.0) << i;
            ASSERT_NEAR(blue, colour[2], 2.0) << i;
        }
    }
}

TEST_F(RenderVideo, HasTheLevelsOfTheLimitedRange) {
    expect_cube_run(render_cube({"--passes", "3", "--from", "3", "--y4m", "a.y4m", "--png", "a.png"}), 3);
    const std::string planes = work.read("a.y4m").substr(header.size() + frame_header.size());
    ASSERT_EQ(planes.size(), 3 * picture_pixels);
    const IndexedPicture picture = read_png(work.path("a.png"));
    std::set<int> different;
    for (std::size_t i = 0; i < picture_pixels; ++i) {
        EXPECT_EQ(static_cast<unsigned char>(planes[i]), std::lround(16 + 219 * picture.pixels[i] / 255.0));
        different.insert(picture.pixels[i]);
    }
    EXPECT_EQ(planes.substr(picture_pixels), std::string(2 * picture_pixels, '\x80'));
    EXPECT_TRUE(different.contains(0));
    EXPECT_TRUE(different.contains(255));
}

TEST_F(RenderVideo, GoesToStandardOutputAndTheProgramsTextsToStandardError) {
    expect_cube_run(render_cube({"--passes", "5", "--y4m", "a.y4m"}), 5);
    const ToolRun run = render_cube({"--passes", "5", "--y4m", "-"});
    EXPECT_EQ(run.exit_code, 0);
    EXPECT_TRUE(run.output == work.read("a.y4m"));
    EXPECT_EQ(run.errors, cube_output(5));
    EXPECT_EQ(names_in(work.folder()), std::set<std::string>{"a.y4m"});
}

TEST_F(RenderVideo, EndsTheToolWhenNobodyReadsIt) {
    const std::string command = "cd '" + work.folder() + "' && { TMPDIR='" + temporary.folder() + "' '" +
                                ZELVO_BIN_FOLDER + "/zelvo-render' '" + object("cube") + "' --envmap '" +
                                test_file("golden/envmap.chunky") +
                                "' --passes 20000000 --y4m - 2>errors; echo $? >code; } | head -c 9 >start";
    EXPECT_EQ(std::system(command.c_str()), 0);
    EXPECT_EQ(work.read("start"), "YUV4MPEG2");
    EXPECT_EQ(work.read("code"), "2\n");
    EXPECT_TRUE(work.read("errors").ends_with("zelvo-render: cannot write standard output: Broken pipe\n"))
        << work.read("errors");
}

TEST_F(RenderVideo, IsRefusedIfItCannotBeWritten) {
    std::filesystem::create_symlink("/dev/full", work.path("a.y4m.part"));
    const ToolRun run = render_cube({"--passes", "3", "--y4m", "a.y4m"});
    expect_misuse(run, "a full disk");
    EXPECT_EQ(run.errors, "zelvo-render: cannot write a.y4m: No space left on device\n");
    const ToolRun nowhere = render_cube({"--y4m", "none/a.y4m"});
    expect_misuse(nowhere, "no folder");
    EXPECT_EQ(nowhere.errors, "zelvo-render: cannot write none/a.y4m: No such file or directory\n");
    EXPECT_EQ(names_in(work.folder()), std::set<std::string>{});
}

TEST_F(RenderVideo, HasPicturesOfOneSize) {
    for (const std::string size : {"101 75", "100 76"}) {
        const ToolRun run =
            render_cube(joined({"--passes", "4", "--y4m", "a.y4m"},
                               script("2 key m\nanswer mode 0 100 75\nanswer mode 0 " + size + "\n")));
        expect_misuse(run, size);
        EXPECT_EQ(run.errors, "zelvo-render: cannot write a.y4m: the pictures of a video have one size\n");
        EXPECT_EQ(names_in(work.folder()), std::set<std::string>{"script.txt"});
    }
}

TEST_F(RenderVideo, IsRemovedIfItHasNoPicture) {
    expect_cube_run(render_cube({"--passes", "3", "--from", "4", "--y4m", "a.y4m"}), 3);
    EXPECT_EQ(names_in(work.folder()), std::set<std::string>{});
}

} // namespace
