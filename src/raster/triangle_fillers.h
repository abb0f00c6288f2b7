// SPDX-License-Identifier: MIT
// The four depth-tested triangle fillers.
#pragma once

#include <array>

/// A triangle as a face loop gives it to a filler. Slots 0-2, 3-5 and 6-8 are x, y (pixels) and depth (0 ..
/// 255, larger is nearer) of the three vertices. Slot 9 is the colour of a flat triangle; slots 9-11 are the
/// vertices' colours if they are interpolated. Slots 12-13, 14-15 and 16-17 are the vertices' map coordinates
/// (column and row, counted from the map's centre).
using TriangleParams = std::array<float, 18>;

/// Each filler draws one triangle into `chunkybuf1` and `zbuf`. The vertices may have any order and either
/// winding; afterwards those in the block are sorted by y. A pixel is written if its depth is larger than the
/// one in `zbuf`. Only rows 6 to height - 6 and columns inside the frame are drawn, whatever the input.

/// The depth is also the colour.
void fill_tri_zcolour(TriangleParams *triangle);

/// One colour: slot 9, truncated.
void fill_tri_flat(TriangleParams *triangle);

/// Colours that are interpolated between the vertices.
void fill_tri_gouraud(TriangleParams *triangle);

/// Colours are texels of `envmap`.
void fill_tri_mapped(TriangleParams *triangle);
