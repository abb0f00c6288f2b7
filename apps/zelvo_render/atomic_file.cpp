// SPDX-License-Identifier: MIT
// Writes under a temporary name beside the final one, and renames the complete file.
#include "atomic_file.h"

#include "failure.h"

AtomicFile::AtomicFile(std::string final_path)
    : path(std::move(final_path)), part_path(path + ".part"), file(std::fopen(part_path.c_str(), "wb")) {
    if (file == nullptr) {
        fail_on(path);
    }
    remove_on_failure(part_path);
}

AtomicFile::~AtomicFile() {
    if (file != nullptr) {
        std::fclose(file);
        std::remove(part_path.c_str());
        keep_on_failure(part_path);
    }
}

void AtomicFile::complete() {
    const bool is_written = std::ferror(file) == 0;
    const bool is_closed = std::fclose(file) == 0;
    file = nullptr;
    if (!is_written || !is_closed || std::rename(part_path.c_str(), path.c_str()) != 0) {
        fail_on(path);
    }
    keep_on_failure(part_path);
}
