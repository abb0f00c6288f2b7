// SPDX-License-Identifier: MIT
// The four depth-tested triangle fillers.
#pragma once

#include <array>

/// What a face loop hands to a filler, by slot: 0-2, 3-5, 6-8 are x, y (pixels) and depth (0 .. 255, larger
/// is nearer) of three vertices; 9 is the colour of a flat face, 9-11 are the vertices' colours in an
/// interpolated one; 12-13, 14-15, 16-17 are the vertices' map coordinates (column and row, counted from the
/// map's centre).
using TriangleParams = std::array<float, 18>;

/// Each filler draws one triangle into `chunkybuf1` and `zbuf`, with vertices in any order and of either
/// winding, and leaves the block with its vertices sorted by y. A pixel is written where its depth is larger
/// than what `zbuf` holds. Rows 6 to height - 6 are drawn, and columns inside the frame; any input whatever
/// stays inside.

/// Depth is the colour as well.
void fill_tri_zcolour(TriangleParams *triangle);

/// One colour, slot 9 truncated.
void fill_tri_flat(TriangleParams *triangle);

/// Colours interpolated from the vertices.
void fill_tri_gouraud(TriangleParams *triangle);

/// Texels of `envmap`.
void fill_tri_mapped(TriangleParams *triangle);
