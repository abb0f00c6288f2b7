// SPDX-License-Identifier: MIT
// Builds models, buffers and object files for tests.
#include "support/model_builder.h"

#include "display/frame_buffers.h"
#include "display/overlay_text.h"
#include "main_68k/run_statistics.h"
#include "object/model.h"
#include "raster/dots.h"
#include "raster/texture_map.h"

#include <algorithm>
#include <bit>

void reset_program_state() {
    viewer = ViewerState{};
    faces_seen = 0;
    triangles_drawn = 0;
    frame_rates = {};
    frame_count = 0.0;
    stage_seconds = {};
    stage_totals = {};
    frame_width = viewer.width;
    frame_height = viewer.height;
    release_frame_buffers();
    release_dot_image();
    release_envmap();
    release_model();
    point_chunk.reset();
    polygon_chunk.reset();
    point_chunk_bytes = 0;
    polygon_chunk_bytes = 0;
    unread_points = 0;
    unread_polygon_words = 0;
}

void set_model(const std::vector<Vec3> &points, const std::vector<std::uint16_t> &polygon_words) {
    const std::size_t count = points.size() + 1;
    point_chunk = allocate_array<Vec3>(count);
    std::copy(points.begin(), points.end(), point_chunk.get());
    point_chunk_bytes = static_cast<std::int32_t>(points.size() * sizeof(Vec3));
    polygon_chunk = allocate_array<std::uint16_t>(polygon_words.size() + 1);
    std::copy(polygon_words.begin(), polygon_words.end(), polygon_chunk.get());
    polygon_chunk_bytes = static_cast<std::int32_t>(polygon_words.size() * 2);
    lwopoints2 = allocate_array<Vec3>(count);
    std::copy(points.begin(), points.end(), lwopoints2.get());
    lwopoints3 = allocate_array<Vec3>(count);
    lwonormals2 = allocate_array<Vec3>(count);
    lwonormals3 = allocate_array<Vec3>(count);
    lwofis = allocate_array<float>(count);
}

void set_frame(int width, int height) {
    allocate_frame_buffers(width, height);
    allocate_dot_image();
    allocate_envmap();
}

std::string big_endian_16(std::uint16_t value) {
    return {static_cast<char>(value >> 8), static_cast<char>(value & 0xFF)};
}

std::string big_endian_32(std::uint32_t value) {
    return big_endian_16(static_cast<std::uint16_t>(value >> 16)) +
           big_endian_16(static_cast<std::uint16_t>(value & 0xFFFF));
}

std::string big_endian_float(float value) {
    return big_endian_32(std::bit_cast<std::uint32_t>(value));
}

std::string claiming(const std::string &identifier, std::uint32_t size, const std::string &data) {
    return identifier + big_endian_32(size) + data;
}

std::string chunk(const std::string &identifier, const std::string &data) {
    return claiming(identifier, static_cast<std::uint32_t>(data.size()), data);
}

std::string skipped_chunks(int count) {
    std::string chunks;
    for (int i = 0; i < count; ++i) {
        chunks += chunk("SURF", "name");
    }
    return chunks;
}

std::string point_data(const std::vector<Vec3> &points) {
    std::string data;
    for (const Vec3 &point : points) {
        data += big_endian_float(point.x) + big_endian_float(point.y) + big_endian_float(point.z);
    }
    return data;
}

std::string word_data(const std::vector<std::uint16_t> &words) {
    std::string data;
    for (const std::uint16_t word : words) {
        data += big_endian_16(word);
    }
    return data;
}

std::string form(const std::string &type, const std::string &chunks) {
    return chunk("FORM", type + chunks);
}

std::string object_file(const std::vector<Vec3> &points, const std::vector<std::uint16_t> &polygon_words) {
    return form("LWOB", chunk("PNTS", point_data(points)) + chunk("POLS", word_data(polygon_words)));
}
