// SPDX-License-Identifier: MIT
// Writes beside the final name, renames when complete.
#include "output_file.h"

#include "give_up.h"

OutputFile::OutputFile(std::string final_path)
    : path(std::move(final_path)), part_path(path + ".part"), file(std::fopen(part_path.c_str(), "wb")) {
    if (file == nullptr) {
        give_up_on(path);
    }
    remove_on_giving_up(part_path);
}

OutputFile::~OutputFile() {
    if (file != nullptr) {
        std::fclose(file);
        std::remove(part_path.c_str());
        keep_on_giving_up(part_path);
    }
}

void OutputFile::complete() {
    const bool is_written = std::ferror(file) == 0;
    const bool is_closed = std::fclose(file) == 0;
    file = nullptr;
    if (!is_written || !is_closed || std::rename(part_path.c_str(), path.c_str()) != 0) {
        give_up_on(path);
    }
    keep_on_giving_up(part_path);
}
