// SPDX-License-Identifier: MIT
// A C stream over a file beside the real one, renamed by the stream's own closing.
#include "platform/shared/safe_file.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace host {

namespace {

/// What the stream needs to know about its two files.
struct Replacement {
    std::string path;
    std::string partial_path;
    int descriptor = -1;
    bool is_whole = true;
};

ssize_t write_bytes(void *cookie, const char *bytes, std::size_t count) {
    auto &file = *static_cast<Replacement *>(cookie);
    std::size_t written = 0;
    while (written < count) {
        const ssize_t step = write(file.descriptor, bytes + written, count - written);
        if (step < 0 && errno == EINTR) {
            continue;
        }
        if (step <= 0) {
            file.is_whole = false;
            break;
        }
        written += static_cast<std::size_t>(step);
    }
    return static_cast<ssize_t>(written);
}

/// The bytes reach the disk before the name does, so that not even a power failure leaves an empty file.
int close_file(void *cookie) {
    const std::unique_ptr<Replacement> file(static_cast<Replacement *>(cookie));
    file->is_whole = file->is_whole && fsync(file->descriptor) == 0;
    file->is_whole = close(file->descriptor) == 0 && file->is_whole;
    if (file->is_whole && std::rename(file->partial_path.c_str(), file->path.c_str()) == 0) {
        return 0;
    }
    unlink(file->partial_path.c_str());
    return EOF;
}

/// Where a chain of links ends; a path that does not exist yet is its own end.
std::string end_of_links(const std::string &path) {
    std::error_code error;
    const std::filesystem::path end = std::filesystem::canonical(path, error);
    return error ? path : end.string();
}

/// The mode of the file that is replaced, or what a new file gets.
mode_t mode_for(const std::string &path) {
    struct stat status {};
    if (stat(path.c_str(), &status) == 0) {
        return status.st_mode & 07777;
    }
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

std::string hidden_name_beside(const std::string &path) {
    const std::filesystem::path whole(path);
    return (whole.parent_path() / ("." + whole.filename().string() + ".XXXXXX")).string();
}

} // namespace

std::FILE *open_replacing(const std::string &path) {
    auto file = std::make_unique<Replacement>();
    file->path = end_of_links(path);
    // A rename would not mind that the file it replaces is read-only.
    if (access(file->path.c_str(), F_OK) == 0 && access(file->path.c_str(), W_OK) != 0) {
        return nullptr;
    }
    file->partial_path = hidden_name_beside(file->path);
    file->descriptor = mkostemp(file->partial_path.data(), O_CLOEXEC);
    if (file->descriptor < 0) {
        return nullptr;
    }
    (void)fchmod(file->descriptor, mode_for(file->path));
    const cookie_io_functions_t functions{nullptr, write_bytes, nullptr, close_file};
    std::FILE *stream = fopencookie(file.get(), "w", functions);
    if (stream == nullptr) {
        close(file->descriptor);
        unlink(file->partial_path.c_str());
        return nullptr;
    }
    (void)file.release();
    return stream;
}

} // namespace host
