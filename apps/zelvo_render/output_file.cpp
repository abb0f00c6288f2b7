// SPDX-License-Identifier: MIT
// Writes beside the final name, renames when complete, and removes what is left when the tool gives up.
#include "output_file.h"

#include "options.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <set>

namespace {

/// Files that are being written; removed when the tool gives up.
std::set<std::string> unfinished;

} // namespace

OutputFile::OutputFile(std::string final_path)
    : path(std::move(final_path)), part_path(path + ".part"), file(std::fopen(part_path.c_str(), "wb")) {
    if (file == nullptr) {
        give_up_on(path);
    }
    unfinished.insert(part_path);
}

OutputFile::~OutputFile() {
    if (file != nullptr) {
        std::fclose(file);
        std::remove(part_path.c_str());
        unfinished.erase(part_path);
    }
}

void OutputFile::complete() {
    const bool is_written = std::ferror(file) == 0;
    const bool is_closed = std::fclose(file) == 0;
    file = nullptr;
    if (!is_written || !is_closed || std::rename(part_path.c_str(), path.c_str()) != 0) {
        give_up_on(path);
    }
    unfinished.erase(part_path);
}

void give_up(const std::string &why) {
    std::fflush(stdout);
    std::fprintf(stderr, "zelvo-render: %s\n", why.c_str());
    for (const std::string &path : unfinished) {
        std::remove(path.c_str());
    }
    // Not exit: what would finish the other outputs there must not run any more.
    std::_Exit(exit_misuse);
}

void give_up_on(const std::string &path) {
    const int error = errno;
    give_up("cannot write " + path + ": " + std::strerror(error != 0 ? error : EIO));
}
