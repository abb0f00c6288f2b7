// SPDX-License-Identifier: MIT
// Draws the loaded object with the program's own stages, framed for a thumbnail.
#pragma once

#include <cstdint>

/// Draws the model in a frame of `side` rows and columns, from the front, one side and above, so that it
/// fills nine tenths of the square in its longer direction. Afterwards `chunkybuf1` has the object,
/// and is 0 where there is none.
///
/// The object reflects the default texture and is lit. Both sides of a polygon can be seen, and an
/// object whose faces point inwards looks like one whose faces point outwards. Points without a polygon do
/// not count. The process ends if all of the object is in one point, or nowhere.
void draw_object(std::int32_t side);
