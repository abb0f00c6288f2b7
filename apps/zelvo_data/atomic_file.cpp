// SPDX-License-Identifier: MIT
// Writes a file beside its name and renames it.
#include "atomic_file.h"

#include <fstream>
#include <stdexcept>
#include <system_error>

namespace zelvo_data {

namespace fs = std::filesystem;

namespace {

bool store(const fs::path &path, const Bytes &bytes) {
    std::ofstream stream(path, std::ios::binary | std::ios::trunc);
    // A loop over characters avoids reinterpreting the buffer; the files are small.
    for (const std::uint8_t byte : bytes) {
        stream.put(static_cast<char>(byte));
    }
    stream.close();
    return stream.good();
}

} // namespace

void write_file(const fs::path &path, const Bytes &bytes) {
    fs::path part = path;
    part += ".part";
    std::error_code error;
    if (!store(part, bytes)) {
        fs::remove(part, error);
        throw std::runtime_error("cannot write " + path.string());
    }
    fs::rename(part, path, error);
    if (error) {
        std::error_code ignored;
        fs::remove(part, ignored);
        throw std::runtime_error("cannot write " + path.string() + ": " + error.message());
    }
}

} // namespace zelvo_data
