// SPDX-License-Identifier: MIT
// The memory of the model, empty until an object is read.
#include "object/model.h"

HeapArray<Vec3> point_chunk;
HeapArray<std::uint16_t> polygon_chunk;
std::int32_t point_chunk_bytes = 0;
std::int32_t polygon_chunk_bytes = 0;
std::int32_t unread_points = 0;
std::int32_t unread_polygon_words = 0;
HeapArray<Vec3> lwopoints2;
HeapArray<Vec3> lwopoints3;
HeapArray<Vec3> lwonormals2;
HeapArray<Vec3> lwonormals3;
HeapArray<float> lwofis;

void release_model() {
    lwofis.reset();
    lwonormals3.reset();
    lwonormals2.reset();
    lwopoints3.reset();
    lwopoints2.reset();
}
