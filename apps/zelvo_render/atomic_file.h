// SPDX-License-Identifier: MIT
// Output files that appear under their names only when they are complete.
#pragma once

#include <cstdio>
#include <string>

/// A file that is written under a temporary name. Every error ends the tool through fail.
class AtomicFile {
public:
    explicit AtomicFile(std::string final_path);
    ~AtomicFile();
    AtomicFile(const AtomicFile &) = delete;
    AtomicFile &operator=(const AtomicFile &) = delete;

    std::FILE *stream() const { return file; }

    /// Closes the file and gives it its name.
    void complete();

private:
    std::string path;
    std::string part_path;
    std::FILE *file;
};
