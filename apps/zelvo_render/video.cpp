// SPDX-License-Identifier: MIT
// Turns palette indices into the three planes of a video picture.
#include "video.h"

#include "failure.h"

#include <array>
#include <cmath>
#include <csignal>
#include <cstddef>
#include <unistd.h>

namespace {

constexpr char standard_output[] = "-";

/// A stream to the old standard output. Standard output itself is redirected to standard error.
std::FILE *take_standard_output() {
    // If the encoder ends early, writing must fail with an error instead of a signal.
    std::signal(SIGPIPE, SIG_IGN);
    const int taken = dup(STDOUT_FILENO);
    std::FILE *stream = taken >= 0 ? fdopen(taken, "wb") : nullptr;
    if (stream == nullptr || dup2(STDERR_FILENO, STDOUT_FILENO) < 0) {
        fail_on("standard output");
    }
    return stream;
}

/// The values of one colour in the three planes: luma, blue difference, red difference.
std::array<std::uint8_t, 3> planes_of(const host::Colour &colour) {
    constexpr double red_share = 0.299;
    constexpr double blue_share = 0.114;
    const double red = colour[0] / 255.0;
    const double blue = colour[2] / 255.0;
    const double luma =
        red_share * red + (1.0 - red_share - blue_share) * colour[1] / 255.0 + blue_share * blue;
    const auto level = [](double value) { return static_cast<std::uint8_t>(std::lround(value)); };
    return {level(16.0 + 219.0 * luma), level(128.0 + 112.0 * (blue - luma) / (1.0 - blue_share)),
            level(128.0 + 112.0 * (red - luma) / (1.0 - red_share))};
}

} // namespace

Video::Video(const std::string &video_path)
    : path(video_path == standard_output ? "standard output" : video_path) {
    if (video_path == standard_output) {
        stream = take_standard_output();
    } else {
        stream = file.emplace(video_path).stream();
    }
}

void Video::add(const offscreen::Picture &picture) {
    if (width == 0) {
        width = picture.width;
        height = picture.height;
        planes.resize(3 * picture.pixels.size());
        std::fprintf(stream, "YUV4MPEG2 W%d H%d F50:1 Ip A1:1 C444 XCOLORRANGE=LIMITED\n", width, height);
    }
    if (picture.width != width || picture.height != height) {
        fail("cannot write " + path + ": the pictures of a video have one size");
    }
    std::array<std::array<std::uint8_t, 3>, 256> levels{};
    for (std::size_t i = 0; i < levels.size(); ++i) {
        levels[i] = planes_of(picture.palette[i]);
    }
    const std::size_t count = picture.pixels.size();
    for (std::size_t plane = 0; plane < 3; ++plane) {
        for (std::size_t i = 0; i < count; ++i) {
            planes[plane * count + i] = levels[picture.pixels[i]][plane];
        }
    }
    std::fputs("FRAME\n", stream);
    // The reader of the stream may have ended.
    if (std::fwrite(planes.data(), 1, planes.size(), stream) != planes.size()) {
        fail_on(path);
    }
}

void Video::complete() {
    if (!file) {
        if (std::fclose(stream) != 0) {
            fail_on(path);
        }
    } else if (width != 0) {
        file->complete();
    }
}
