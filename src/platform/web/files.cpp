// SPDX-License-Identifier: MIT
// The page's files as streams of the C library. A file that is read is copied whole when it is opened; one
// that is written goes to the page whole when it is closed.
#include "platform/dos.h"
#include "platform/shared/blank_free_names.h"
#include "platform/web/page.h"
#include "platform/window/requested_files.h"
#include "platform/window/windowed_host.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <stdio.h>
#include <string>

namespace host {

namespace {

struct FreeBytes {
    void operator()(void *bytes) const { std::free(bytes); }
};

/// A text of the page's; null for none.
using PageText = std::unique_ptr<char, FreeBytes>;

struct OpenFile {
    std::string name;
    std::unique_ptr<std::uint8_t, FreeBytes> bytes;
    off64_t size = 0;
    off64_t at = 0;
    /// What was written so far.
    std::string written;
};

OpenFile &file_of(void *cookie) {
    return *static_cast<OpenFile *>(cookie);
}

ssize_t read_bytes(void *cookie, char *to, size_t count) {
    OpenFile &file = file_of(cookie);
    const auto left = static_cast<size_t>(std::max<off64_t>(file.size - file.at, 0));
    const size_t copied = std::min(count, left);
    if (copied > 0) {
        std::memcpy(to, file.bytes.get() + file.at, copied);
    }
    file.at += static_cast<off64_t>(copied);
    return static_cast<ssize_t>(copied);
}

int seek(void *cookie, off64_t *offset, int origin) {
    OpenFile &file = file_of(cookie);
    const off64_t base = origin == SEEK_SET ? 0 : origin == SEEK_CUR ? file.at : file.size;
    if (base + *offset < 0) {
        errno = EINVAL;
        return -1;
    }
    file.at = *offset = base + *offset;
    return 0;
}

ssize_t write_bytes(void *cookie, const char *from, size_t count) {
    file_of(cookie).written.append(from, count);
    return static_cast<ssize_t>(count);
}

int close_read(void *cookie) {
    delete &file_of(cookie);
    return 0;
}

int close_written(void *cookie) {
    const std::unique_ptr<OpenFile> file(&file_of(cookie));
    const PageText error(page_write_file(file->name.c_str(),
                                         reinterpret_cast<const std::uint8_t *>(file->written.data()),
                                         static_cast<int>(file->written.size())));
    if (error == nullptr) {
        return 0;
    }
    std::fprintf(stderr, "zelvo: %s was not saved: %s\n", file->name.c_str(), error.get());
    errno = EIO;
    return -1;
}

/// The name as the page knows it.
std::string pages_name(const std::string &name) {
    const std::string read = with_blanks(name);
    return page_file_size(read.c_str()) < 0 && page_file_size(name.c_str()) >= 0 ? name : read;
}

} // namespace

std::string existing_path(const std::string &name) {
    const std::string path = pages_name(name);
    return name.empty() || page_file_size(path.c_str()) < 0 ? "" : path;
}

int error_of_opening(const std::string &path) {
    return page_file_size(path.c_str()) < 0 ? ENOENT : 0;
}

} // namespace host

std::FILE *open_file(const char *name, const char *mode) {
    auto file = std::make_unique<host::OpenFile>();
    file->name = host::pages_name(name);
    if (mode[0] == 'w') {
        return fopencookie(file.release(), mode, {nullptr, host::write_bytes, nullptr, host::close_written});
    }
    file->size = page_file_size(file->name.c_str());
    if (file->size < 0) {
        return nullptr;
    }
    file->bytes.reset(static_cast<std::uint8_t *>(std::malloc(static_cast<size_t>(file->size) + 1)));
    if (file->bytes == nullptr) {
        return nullptr;
    }
    page_read_file(file->name.c_str(), file->bytes.get());
    return fopencookie(file.release(), mode, {host::read_bytes, nullptr, host::seek, host::close_read});
}
