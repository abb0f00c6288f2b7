// SPDX-License-Identifier: MIT
// Encodes in memory with libpng, writes beside the final name and renames.
#include "thumbnail_file.h"

#include "failure.h"

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <png.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zlib.h>

namespace {

using Bytes = std::vector<std::uint8_t>;

void refuse(png_structp, png_const_charp why) {
    fail(exit_misuse, std::string("cannot encode: ") + why);
}

void append(png_structp png, png_bytep data, std::size_t count) {
    auto *bytes = static_cast<Bytes *>(png_get_io_ptr(png));
    bytes->insert(bytes->end(), data, data + count);
}

Bytes encode(const Thumbnail &thumbnail) {
    Bytes file;
    file.reserve(thumbnail.bytes.size());
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, refuse, nullptr);
    png_infop info = png != nullptr ? png_create_info_struct(png) : nullptr;
    if (info == nullptr) {
        refuse(nullptr, "not enough memory");
    }
    png_set_write_fn(png, &file, append, nullptr);
    const auto side = static_cast<png_uint_32>(thumbnail.side);
    png_set_IHDR(png, info, side, side, 8, PNG_COLOR_TYPE_GRAY_ALPHA, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    // Half of the time of the defaults, for files of about the same size.
    png_set_compression_strategy(png, Z_RLE);
    png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_FILTER_UP);
    png_set_sRGB(png, info, PNG_sRGB_INTENT_PERCEPTUAL);
    png_write_info(png, info);
    const std::size_t row_bytes = 2 * static_cast<std::size_t>(thumbnail.side);
    for (std::size_t at = 0; at < thumbnail.bytes.size(); at += row_bytes) {
        png_write_row(png, thumbnail.bytes.data() + at);
    }
    png_write_end(png, info);
    png_destroy_write_struct(&png, &info);
    return file;
}

/// Closes the descriptor; whether the system took all bytes.
bool write_and_close(int descriptor, const Bytes &bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t written = write(descriptor, bytes.data() + done, bytes.size() - done);
        if (written < 0) {
            const int error = errno;
            close(descriptor);
            errno = error;
            return false;
        }
        done += static_cast<std::size_t>(written);
    }
    return close(descriptor) == 0;
}

[[noreturn]] void fail_to_write() {
    fail(exit_misuse, std::string("cannot write: ") + std::strerror(errno));
}

/// Writes a new file beside the path and gives it this name.
void replace(const std::string &path, const Bytes &bytes) {
    std::string part = path + ".XXXXXX";
    const int descriptor = mkstemp(part.data());
    if (descriptor < 0) {
        fail_to_write();
    }
    // Not readable by its owner alone, as mkstemp makes it, but as the user wants new files to be.
    const mode_t mask = umask(0);
    fchmod(descriptor, 0666 & ~mask);
    if (!write_and_close(descriptor, bytes) || std::rename(part.c_str(), path.c_str()) != 0) {
        const int error = errno;
        unlink(part.c_str());
        errno = error;
        fail_to_write();
    }
}

/// Writes into what is there.
void fill(const std::string &path, const Bytes &bytes) {
    const int descriptor = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (descriptor < 0 || !write_and_close(descriptor, bytes)) {
        const int error = errno;
        // Empty again, where it can be.
        [[maybe_unused]] const int result = truncate(path.c_str(), 0);
        errno = error;
        fail_to_write();
    }
}

} // namespace

void write_thumbnail(const std::string &path, const Thumbnail &thumbnail) {
    const Bytes bytes = encode(thumbnail);
    struct stat status {};
    const bool is_new = lstat(path.c_str(), &status) != 0;
    if (is_new || (S_ISREG(status.st_mode) && status.st_size != 0)) {
        replace(path, bytes);
    } else {
        fill(path, bytes);
    }
}
