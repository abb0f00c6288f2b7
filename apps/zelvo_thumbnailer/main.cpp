// SPDX-License-Identifier: MIT
// zelvo-thumbnailer: makes the picture of an object that a file manager shows.
#include "failure.h"
#include "main_68k/version.h"
#include "object_file.h"
#include "object_picture.h"
#include "platform/posix/standard_streams.h"
#include "resource_limits.h"
#include "thumbnail_file.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <string>
#include <string_view>

namespace {

constexpr char help_text[] =
    "Usage: zelvo-thumbnailer INPUT OUTPUT SIZE\n"
    "\n"
    "Draws the LightWave object INPUT, a path or a file URI, into the PNG OUTPUT, SIZE\n"
    "pixels wide and high (1 to 2048), on a transparent background.\n"
    "\n"
    "  -h, --help     print this help and exit\n"
    "  --version      print the version and exit\n";

constexpr int largest_size = 2048;

/// How many times larger than the thumbnail the object is drawn. The program leaves the first and last rows
/// of a frame empty, and draws narrow frames slowly, so that a small thumbnail is drawn in a frame of some
/// size.
int factor_for(int size) {
    constexpr int smallest_frame = 256;
    if (size > 256) {
        return size > 512 ? 2 : 3;
    }
    return std::max(4, (smallest_frame + size - 1) / size);
}

int size_from(std::string_view text) {
    int size = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), size);
    if (error != std::errc{} || end != text.data() + text.size() || size < 1 || size > largest_size) {
        fail(exit_misuse, "not a size from 1 to " + std::to_string(largest_size) + ": " + std::string(text));
    }
    return size;
}

[[noreturn]] void print_and_exit(const char *text) {
    std::fputs(text, stdout);
    std::exit(EXIT_SUCCESS);
}

} // namespace

int main(int argc, char **argv) {
    host::open_missing_standard_streams();
    const std::string_view option = argc == 2 ? argv[1] : "";
    if (option == "-h" || option == "--help") {
        print_and_exit(help_text);
    }
    if (option == "--version") {
        print_and_exit((std::string(shown_version) + "\n").c_str());
    }
    if (argc != 4) {
        fail(exit_misuse, "needs INPUT, OUTPUT and SIZE (see zelvo-thumbnailer --help)");
    }
    const int size = size_from(argv[3]);
    std::set_new_handler([] { fail(exit_no_picture, "not enough memory"); });
    limit_resources();
    const std::string input = path_of(argv[1]);
    set_failing_file(input);
    load_object(input);
    const int factor = factor_for(size);
    draw_object(size * factor);
    const Thumbnail thumbnail = reduce_frame(factor);
    if (is_empty(thumbnail)) {
        fail(exit_no_picture, "nothing of the object can be seen");
    }
    lift_time_limits();
    set_failing_file(argv[2]);
    write_thumbnail(argv[2], thumbnail);
}
