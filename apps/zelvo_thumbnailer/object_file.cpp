// SPDX-License-Identifier: MIT
// Opens the file and has it read.
#include "object_file.h"

#include "failure.h"
#include "object/lwo_reader.h"

#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>

namespace {

/// The text with each %XX replaced by its byte. A zero byte would end the path early, so it is refused.
std::string without_escapes(std::string_view text) {
    std::string bytes;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '%') {
            bytes += text[at];
            continue;
        }
        const std::string_view digits = text.substr(at + 1, 2);
        unsigned char byte = 0;
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), byte, 16);
        if (digits.size() != 2 || end != digits.data() + 2 || byte == 0) {
            fail(exit_misuse, "not a file URI: " + std::string(text));
        }
        bytes += static_cast<char>(byte);
        at += 2;
    }
    return bytes;
}

} // namespace

std::string path_of(const std::string &uri_or_path) {
    constexpr std::string_view scheme = "file://";
    if (!uri_or_path.starts_with(scheme)) {
        return uri_or_path;
    }
    std::string_view rest = uri_or_path;
    rest.remove_prefix(scheme.size());
    constexpr std::string_view this_machine = "localhost";
    if (rest.starts_with(this_machine)) {
        rest.remove_prefix(this_machine.size());
    }
    if (!rest.starts_with('/')) {
        fail(exit_misuse, "not a file of this machine: " + uri_or_path);
    }
    return without_escapes(rest);
}

void load_object(const std::string &path) {
    // Opening a pipe would wait for a writer.
    const int descriptor = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    struct stat status {};
    if (descriptor < 0 || fstat(descriptor, &status) != 0) {
        fail(exit_no_picture, std::string("cannot open: ") + std::strerror(errno));
    }
    if (!S_ISREG(status.st_mode)) {
        fail(exit_no_picture, "not a regular file");
    }
    std::FILE *file = fdopen(descriptor, "rb");
    if (file == nullptr) {
        fail(exit_no_picture, std::string("cannot open: ") + std::strerror(errno));
    }
    read_object(file);
}

void read_object_bytes(const std::string &bytes) {
    std::FILE *file = fmemopen(const_cast<char *>(bytes.data()), bytes.size(), "rb");
    if (file == nullptr) {
        fail(exit_no_picture, std::string("cannot open: ") + std::strerror(errno));
    }
    read_object(file);
}
