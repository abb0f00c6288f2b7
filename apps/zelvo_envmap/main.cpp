// SPDX-License-Identifier: MIT
// zelvo-envmap: makes textures from pictures.
#include "options.h"
#include "platform/posix/folders.h"
#include "platform/posix/standard_streams.h"
#include "shared/child_process.h"
#include "shared/sibling_program.h"
#include "shared/tool_files.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <png.h>

namespace {

using namespace envmap;

constexpr int exit_failure = 1;

/// The kinds of messages of the process that reads a picture.
constexpr char texture_message = 't';
constexpr char failure_message = 'f';

constexpr ResourceLimits limits{std::size_t{4} << 30, 120.0, 240.0};

[[noreturn]] void fail(const std::string &file, const std::string &why) {
    std::fprintf(stderr, "zelvo-envmap: %s: %s\n", one_line(file).c_str(), one_line(why).c_str());
    std::exit(exit_failure);
}

/// The bytes of the picture's texture, made in a child process.
std::string texture_of(const Options &options) {
    std::string texture;
    std::string failure;
    const ChildEnd end = run_in_child(
        limits,
        [&] {
            std::string why;
            const LightPicture picture = read_picture(options.input, why);
            if (picture.light.empty()) {
                send_to_parent(failure_message, "cannot be read: " + why);
                return;
            }
            LightMap map = make_map(picture, options.kind, options.turn);
            blur(map, options.blur);
            send_to_parent(texture_message, encode(map, options.exposure, options.contrast));
        },
        [&](char kind, std::string &&bytes) {
            (kind == texture_message ? texture : failure) = std::move(bytes);
        });
    if (!failure.empty()) {
        fail(options.input, failure);
    }
    if (!end.is_good()) {
        fail(options.input, reason_of(end, "reading it takes too long", "reading it takes too much memory"));
    }
    return texture;
}

/// The texture as a picture that is the right way up.
std::string png_of(const Options &options) {
    std::ifstream file(options.input, std::ios::binary);
    std::string texture{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    if (texture.size() != static_cast<std::size_t>(map_side) * map_side) {
        fail(options.input, "not a texture, which has 65536 bytes");
    }
    std::ranges::reverse(texture);
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = map_side;
    image.height = map_side;
    image.format = PNG_FORMAT_GRAY;
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(image);
    std::string png(size, '\0');
    if (png_image_write_to_memory(&image, png.data(), &size, 0, texture.data(), 0, nullptr) == 0) {
        fail(options.output, image.message);
    }
    png.resize(size);
    return png;
}

/// Has zelvo-render draw a sphere with the texture.
void draw_preview(const std::string &texture, const std::string &picture) {
    std::string printed;
    const std::optional<int> code =
        run_program({sibling_program("zelvo-render"), host::installed_data_path("sphere.lwo"), "--envmap",
                     texture, "--mode", "envmap", "--size", "640x512", "--no-texts", "--png", picture},
                    printed, true);
    if (!code) {
        fail(picture, std::string("cannot start zelvo-render: ") + std::strerror(errno));
    }
    if (code < 0) {
        fail(picture, "zelvo-render crashed");
    }
    if (code != 0) {
        // zelvo-render has said why.
        std::exit(exit_failure);
    }
}

} // namespace

int main(int argc, char **argv) {
    host::open_missing_standard_streams();
    // A file that may not grow is reported when it is written.
    std::signal(SIGXFSZ, SIG_IGN);
    const Options options = parse_options(argc, argv);
    if (const std::string why = unreadable(options.input); !why.empty()) {
        fail(options.input, why);
    }
    const std::string bytes = options.makes_png ? png_of(options) : texture_of(options);
    if (const std::string why = save(options.output, bytes); !why.empty()) {
        fail(options.input, why);
    }
    if (options.preview) {
        draw_preview(options.output, *options.preview);
    }
}
