// SPDX-License-Identifier: MIT
// The C stream collects the bytes in memory; closing it writes them to the disk.
#include "platform/posix/replacing_file.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace host {

namespace {

/// The system itself follows this many links.
constexpr int most_links = 40;

/// Owns a file descriptor; none if negative.
class Descriptor {
public:
    explicit Descriptor(int opened = -1) : number(opened) {}
    ~Descriptor() { close_now(); }
    Descriptor(Descriptor &&other) noexcept : number(std::exchange(other.number, -1)) {}
    Descriptor &operator=(Descriptor &&other) noexcept {
        std::swap(number, other.number);
        return *this;
    }

    bool is_open() const { return number >= 0; }
    int get() const { return number; }

    /// Closes the file; whether the system accepted everything that was written.
    bool close_now() { return number < 0 || close(std::exchange(number, -1)) == 0; }

private:
    int number;
};

/// The stream's data.
struct Save {
    std::string path;
    /// The existing file, opened for writing; not open if there is none.
    Descriptor existing;
    /// The hidden file beside it; not open if it could not be created.
    Descriptor partial;
    std::string partial_path;
    std::string bytes;
    OnFailedSave on_failure;
};

bool is_regular(const Descriptor &file) {
    struct stat status {};
    return fstat(file.get(), &status) == 0 && S_ISREG(status.st_mode);
}

bool write_all(const Descriptor &file, const std::string &bytes) {
    std::size_t written = 0;
    while (written < bytes.size()) {
        const ssize_t step = write(file.get(), bytes.data() + written, bytes.size() - written);
        if (step > 0) {
            written += static_cast<std::size_t>(step);
        } else if (step == 0 || errno != EINTR) {
            return false;
        }
    }
    return true;
}

/// The bytes are on the disk before the rename, so that even a power failure cannot leave an empty file.
bool replace(Save &save) {
    return write_all(save.partial, save.bytes) && fsync(save.partial.get()) == 0 &&
           save.partial.close_now() && std::rename(save.partial_path.c_str(), save.path.c_str()) == 0;
}

/// Sets errno; true if this is not an error.
bool is_none(int error) {
    errno = error;
    return error == 0;
}

/// Reserves room on the disk before the first byte is overwritten.
bool write_in_place(Save &save) {
    const auto length = static_cast<off_t>(save.bytes.size());
    if (!is_regular(save.existing)) {
        return write_all(save.existing, save.bytes) && save.existing.close_now();
    }
    struct stat before {};
    fstat(save.existing.get(), &before);
    if (length > 0 && !is_none(posix_fallocate(save.existing.get(), 0, length))) {
        const int error = errno;
        (void)ftruncate(save.existing.get(), before.st_size);
        return is_none(error);
    }
    return write_all(save.existing, save.bytes) && ftruncate(save.existing.get(), length) == 0 &&
           fsync(save.existing.get()) == 0 && save.existing.close_now();
}

/// Whether the folder, not the file, refused the replacement, so that the file itself may still be writable.
/// The folder may belong to another user, or only let owners replace their files, or the file may be a mount
/// point.
bool is_folders_refusal(int error) {
    return error == EACCES || error == EPERM || error == EROFS || error == EBUSY;
}

bool finish(Save &save) {
    if (!save.partial.is_open()) {
        return write_in_place(save);
    }
    if (replace(save)) {
        return true;
    }
    const int error = errno;
    unlink(save.partial_path.c_str());
    if (save.existing.is_open() && is_folders_refusal(error)) {
        return write_in_place(save);
    }
    return is_none(error);
}

ssize_t take_bytes(void *cookie, const char *bytes, std::size_t count) {
    static_cast<Save *>(cookie)->bytes.append(bytes, count);
    return static_cast<ssize_t>(count);
}

int close_stream(void *cookie) {
    const std::unique_ptr<Save> save(static_cast<Save *>(cookie));
    if (finish(*save)) {
        return 0;
    }
    const int error = errno;
    if (save->on_failure) {
        save->on_failure(error);
    }
    errno = error;
    return EOF;
}

/// The path where a chain of links ends, whether that file exists or not; nothing if the chain is a circle.
std::optional<std::string> end_of_links(const std::string &path) {
    std::filesystem::path end(path);
    for (int links = 0; links <= most_links; ++links) {
        std::error_code error;
        const std::filesystem::path target = std::filesystem::read_symlink(end, error);
        if (error) {
            return end.string();
        }
        // An absolute target replaces the folder.
        end = end.parent_path() / target;
    }
    errno = ELOOP;
    return std::nullopt;
}

/// The mode of the existing file, or the mode of a new one.
mode_t mode_for(const Descriptor &existing) {
    struct stat status {};
    if (existing.is_open() && fstat(existing.get(), &status) == 0) {
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

/// Creates the hidden file; false if that fails and there is no existing file to write in place.
bool make_partial(Save &save) {
    save.partial_path = hidden_name_beside(save.path);
    save.partial = Descriptor(mkostemp(save.partial_path.data(), O_CLOEXEC));
    if (save.partial.is_open()) {
        (void)fchmod(save.partial.get(), mode_for(save.existing));
        return true;
    }
    return save.existing.is_open() && is_folders_refusal(errno);
}

std::unique_ptr<Save> begin(const std::string &path) {
    const std::optional<std::string> end = end_of_links(path);
    if (!end) {
        return nullptr;
    }
    if (std::filesystem::path(*end).filename().empty()) {
        errno = ENOENT;
        return nullptr;
    }
    auto save = std::make_unique<Save>();
    save->path = *end;
    // rename() would also replace a read-only file, so check that the file can be written.
    save->existing = Descriptor(open(end->c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK));
    if (!save->existing.is_open() && errno != ENOENT) {
        return nullptr;
    }
    const bool is_device = save->existing.is_open() && !is_regular(save->existing);
    return is_device || make_partial(*save) ? std::move(save) : nullptr;
}

} // namespace

std::FILE *open_for_saving(const std::string &path, OnFailedSave on_failure) {
    std::unique_ptr<Save> save = begin(path);
    if (save == nullptr) {
        const int error = errno;
        if (on_failure) {
            on_failure(error);
        }
        errno = error;
        return nullptr;
    }
    save->on_failure = std::move(on_failure);
    const cookie_io_functions_t functions{nullptr, take_bytes, nullptr, close_stream};
    std::FILE *stream = fopencookie(save.get(), "w", functions);
    if (stream == nullptr) {
        unlink(save->partial_path.c_str());
        return nullptr;
    }
    (void)save.release();
    return stream;
}

std::FILE *open_plain_file(const std::string &path, const char *mode, const OnFailedSave &on_failed_save) {
    const bool is_for_saving = mode[0] == 'w';
    struct stat status {};
    const bool exists = stat(path.c_str(), &status) == 0;
    if (exists && !S_ISREG(status.st_mode) && !S_ISCHR(status.st_mode)) {
        if (is_for_saving && on_failed_save) {
            on_failed_save(S_ISDIR(status.st_mode) ? EISDIR : ENOTSUP);
        }
        return nullptr;
    }
    return is_for_saving ? open_for_saving(path, on_failed_save) : std::fopen(path.c_str(), mode);
}

std::string report_failed_save(const std::string &name, const std::string &path, int error) {
    const std::string place = path.empty() ? "" : " (" + path + ")";
    std::string text = name + " was not saved: " + std::strerror(error) + place;
    std::fprintf(stderr, "zelvo: %s\n", text.c_str());
    return text;
}

} // namespace host
