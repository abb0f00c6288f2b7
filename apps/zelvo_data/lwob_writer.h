// SPDX-License-Identifier: MIT
// Turns a mesh into the bytes of an IFF object file of type LWOB.
#pragma once

#include "mesh.h"

#include <cstdint>
#include <string>
#include <vector>

namespace zelvo_data {

using Bytes = std::vector<std::uint8_t>;

// A chunk of free text. Readers must skip chunks that they do not know; these objects test that they do.
struct NoteChunk {
    std::string id;
    std::string text;
};

struct ObjectNotes {
    std::vector<NoteChunk> before_points;
    std::vector<NoteChunk> after_polygons;
};

// The chunk order is: leading notes, PNTS, SRFS, POLS, trailing notes, one SURF per surface.
Bytes encode_lwob(const Mesh &mesh, const ObjectNotes &notes);

} // namespace zelvo_data
