// SPDX-License-Identifier: MIT
// The builders of all objects that come with the viewer.
#pragma once

#include "mesh.h"

namespace zelvo_data {

Mesh build_torus_knot();
Mesh build_cut_gem();
Mesh build_chess_pawn();
Mesh build_sphere();
Mesh build_letters();
Mesh build_cogwheel();

// Adds the text chunks of the chess pawn, which test that readers skip chunks that they do not know.
void add_chess_pawn_notes(LwobObject &object);

} // namespace zelvo_data
