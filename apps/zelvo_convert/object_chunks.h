// SPDX-License-Identifier: MIT
// The chunks of an object file.
#pragma once

#include "mesh.h"

#include <cstddef>
#include <string>
#include <vector>

namespace convert {

struct Chunk {
    std::string name;
    /// In bytes: as its header says, and how many of them the file has.
    std::size_t size;
    std::size_t present;
    /// The contents of a chunk about surfaces; empty for all others.
    std::string data;
};

struct Chunks {
    std::vector<Chunk> list;
    /// Bytes after the last chunk that are too few for another one.
    std::size_t rest = 0;
};

/// The chunks of an object file, found as the viewer does: no pad byte follows an odd size. The process ends
/// if the file cannot be opened.
Chunks chunks_of(const std::string &path);

/// The surfaces in the list of names, with the colours that other chunks give them.
std::vector<LwobSurface> surfaces_in(const Chunks &chunks);

} // namespace convert
