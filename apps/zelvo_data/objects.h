// SPDX-License-Identifier: MIT
// The builders of all objects that come with the viewer.
#pragma once

#include "lwob_writer.h"
#include "mesh.h"

namespace zelvo_data {

Mesh build_torus_knot();
Mesh build_cut_gem();
Mesh build_chess_pawn();
Mesh build_sphere();
Mesh build_letters();
Mesh build_cogwheel();

// The text chunks of the chess pawn.
ObjectNotes chess_pawn_notes();

} // namespace zelvo_data
