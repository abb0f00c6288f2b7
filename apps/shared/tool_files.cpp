// SPDX-License-Identifier: MIT
// Checks a file before it is opened, and saves with the host's function.
#include "shared/tool_files.h"

#include "platform/posix/replacing_file.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

bool is_control(char c) {
    return (c >= 0 && c < ' ') || c == '\x7F';
}

} // namespace

std::string unreadable(const std::string &path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0 || access(path.c_str(), R_OK) != 0) {
        return std::strerror(errno);
    }
    if (S_ISDIR(status.st_mode)) {
        return std::strerror(EISDIR);
    }
    // Opening a pipe would wait for a writer.
    if (!S_ISREG(status.st_mode)) {
        return "not a regular file";
    }
    return status.st_size == 0 ? "it is empty" : "";
}

std::string save(const std::string &path, const std::string &bytes) {
    if (const std::filesystem::path folder = std::filesystem::path(path).parent_path(); !folder.empty()) {
        std::error_code error;
        std::filesystem::create_directories(folder, error);
    }
    errno = 0;
    std::FILE *file = host::open_for_saving(path);
    if (file != nullptr) {
        std::fwrite(bytes.data(), 1, bytes.size(), file);
        if (std::fclose(file) == 0) {
            return "";
        }
    }
    return "cannot write " + path + ": " + std::strerror(errno != 0 ? errno : EIO);
}

std::string printable(std::string text) {
    std::ranges::replace_if(text, is_control, '?');
    return text;
}

std::string one_line(std::string text) {
    while (!text.empty() && is_control(text.back())) {
        text.pop_back();
    }
    return printable(std::move(text));
}
