// SPDX-License-Identifier: MIT
// The model: the object's points and polygons as read, and the arrays that every frame is made from. Every
// array has one element more than there are points or words: a chunk may end in a partial record, and the
// last point can then be read as four floats.
#pragma once

#include "core/heap_array.h"
#include "core/vec3.h"

#include <cstdint>

/// The object's points in file order. Written by the reader, centred and scaled in place once by preparation.
extern HeapArray<Vec3> point_chunk;

/// The polygon list: per polygon its vertex count n, n point indices, and a surface word. Written by the
/// reader.
extern HeapArray<std::uint16_t> polygon_chunk;

/// Sizes of the two chunks in bytes, as their headers give them; 0 until a chunk was found. Written by the
/// reader.
extern std::int32_t point_chunk_bytes;
extern std::int32_t polygon_chunk_bytes;

/// Number of identical points at the end of the list: the file ended before them and no polygon refers to
/// them, so all are zero and only the first is processed. A header of a few bytes can claim millions of them.
/// Written by the reader, 0 for a whole file.
extern std::int32_t unread_points;

/// Number of words at the end of the polygon list that are missing in the file; all are 0. Written by the
/// reader.
extern std::int32_t unread_polygon_words;

/// Prepared points in object space, within 110 of the origin. Written once by preparation.
extern HeapArray<Vec3> lwopoints2;

/// Rotated and projected points of the current frame: screen x and y in pixels, depth value (128 - 0.9 z,
/// larger is nearer). Written by transform_and_project, read by the face loops.
extern HeapArray<Vec3> lwopoints3;

/// Vertex normals in object space, 123 long. Written once by preparation.
extern HeapArray<Vec3> lwonormals2;

/// Vertex normals after the frame's rotation. Written by rotate_normals.
extern HeapArray<Vec3> lwonormals3;

/// Colour of each point in the current frame of mode 4, 25 .. 255; -1 marks a point that is not lit yet.
/// Reset by the mode's driver, filled by its face loop.
extern HeapArray<float> lwofis;

/// Number of the object's points; a partial record at the end does not count.
inline std::int32_t point_count() {
    return point_chunk_bytes / 12;
}

/// Number of points that the stages process: all but the unread ones after the first of these.
inline std::int32_t points_to_process() {
    return point_count() - (unread_points > 0 ? unread_points - 1 : 0);
}

/// Number of words of the polygon list; an odd last byte does not count.
inline std::int32_t polygon_word_count() {
    return polygon_chunk_bytes / 2;
}

/// Releases the arrays that frames are made from. The two chunks stay as they were read until the process
/// ends.
void release_model();
