// SPDX-License-Identifier: MIT
// zelvo-thumbnailer: makes the picture of an object that a file manager shows.
#include "core/sanitized.h"
#include "failure.h"
#include "main_68k/version.h"
#include "object_file.h"
#include "object_picture.h"
#include "platform/posix/object_form.h"
#include "platform/posix/standard_streams.h"
#include "shared/imported_object.h"
#include "shared/resource_limits.h"
#include "shared/tool_files.h"
#include "thumbnail_file.h"

#include <algorithm>
#include <charconv>
#include <csignal>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <unistd.h>

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

/// How many times larger than the thumbnail the object is drawn. A small thumbnail is reduced from a frame of
/// at least 256 rows, since the program leaves the first and last rows of a frame empty and draws narrow
/// frames slowly.
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

/// A signal handler, so it calls only what such a handler may call.
void give_up(int) {
    constexpr std::string_view why = "zelvo-thumbnailer: the object takes too long\n";
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, why.data(), why.size());
    _exit(exit_no_picture);
}

/// Services make thumbnails of untrusted files without being asked.
void limit_cost() {
    // If a file may not grow, the write fails and is reported; the signal would end the process.
    std::signal(SIGXFSZ, SIG_IGN);
    // A sanitized build needs a multiple of these.
    if (!is_sanitized) {
        std::signal(SIGPROF, give_up);
        std::signal(SIGALRM, give_up);
        limit_resources({.address_space = std::size_t{256} << 20, .processor_time = 0.8, .clock_time = 10.0});
    }
}

/// The object that zelvo-convert, where it is installed, makes from a model of another format. It limits
/// itself.
std::optional<std::string> imported_from(const std::string &input) {
    if (!unreadable(input).empty() || host::is_object_file(input)) {
        return std::nullopt;
    }
    return import_object(input, {"--output", "-", "--timeout", "10", "--memory", "1024"}, false);
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
    const std::string input = path_of(argv[1]);
    set_failing_file(input);
    const std::optional<std::string> imported = imported_from(input);
    limit_cost();
    if (imported) {
        read_object_bytes(*imported);
    } else {
        load_object(input);
    }
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
