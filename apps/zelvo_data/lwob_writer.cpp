// SPDX-License-Identifier: MIT
// Big-endian chunk encoding; every chunk has an even size, so no pad bytes occur between chunks.
#include "lwob_writer.h"

#include <bit>
#include <stdexcept>

namespace zelvo_data {

namespace {

void append_id(Bytes &bytes, const std::string &id) {
    if (id.size() != 4) {
        throw std::invalid_argument("a chunk name has four characters");
    }
    bytes.insert(bytes.end(), id.begin(), id.end());
}

void append_u16(Bytes &bytes, std::uint16_t value) {
    bytes.push_back(static_cast<std::uint8_t>(value >> 8));
    bytes.push_back(static_cast<std::uint8_t>(value & 0xff));
}

void append_u32(Bytes &bytes, std::uint32_t value) {
    append_u16(bytes, static_cast<std::uint16_t>(value >> 16));
    append_u16(bytes, static_cast<std::uint16_t>(value & 0xffff));
}

// Grid steps are well below 2^24 and the grid divides by a power of two, so the float is exact.
void append_coordinate(Bytes &bytes, std::int32_t grid_steps) {
    const float value = static_cast<float>(grid_steps) / static_cast<float>(grid_steps_per_unit);
    append_u32(bytes, std::bit_cast<std::uint32_t>(value));
}

// Text ends with a zero byte; a second one follows if the length would otherwise be odd.
void append_text(Bytes &bytes, const std::string &text) {
    bytes.insert(bytes.end(), text.begin(), text.end());
    bytes.push_back(0);
    if (text.size() % 2 == 0) {
        bytes.push_back(0);
    }
}

void append_chunk(Bytes &bytes, const std::string &id, const Bytes &content) {
    append_id(bytes, id);
    append_u32(bytes, static_cast<std::uint32_t>(content.size()));
    bytes.insert(bytes.end(), content.begin(), content.end());
}

void append_notes(Bytes &bytes, const std::vector<NoteChunk> &notes) {
    for (const NoteChunk &note : notes) {
        Bytes content;
        append_text(content, note.text);
        append_chunk(bytes, note.id, content);
    }
}

Bytes encode_points(const Mesh &mesh) {
    Bytes content;
    content.reserve(mesh.points().size() * 12);
    for (const GridPoint &point : mesh.points()) {
        append_coordinate(content, point.x);
        append_coordinate(content, point.y);
        append_coordinate(content, point.z);
    }
    return content;
}

Bytes encode_polygons(const Mesh &mesh) {
    Bytes content;
    for (const Polygon &polygon : mesh.polygons()) {
        append_u16(content, static_cast<std::uint16_t>(polygon.corners.size()));
        for (const std::uint16_t corner : polygon.corners) {
            append_u16(content, corner);
        }
        append_u16(content, polygon.surface);
    }
    return content;
}

Bytes encode_surface_names(const Mesh &mesh) {
    Bytes content;
    for (const Surface &surface : mesh.surfaces()) {
        append_text(content, surface.name);
    }
    return content;
}

void append_word_subchunk(Bytes &bytes, const std::string &id, std::uint16_t value) {
    append_id(bytes, id);
    append_u16(bytes, 2);
    append_u16(bytes, value);
}

Bytes encode_surface(const Surface &surface) {
    Bytes content;
    append_text(content, surface.name);
    append_id(content, "COLR");
    append_u16(content, 4);
    content.insert(content.end(), surface.colour.begin(), surface.colour.end());
    content.push_back(0);
    // Flag bit 2 asks for smooth shading; it documents the intent of the shared points.
    append_word_subchunk(content, "FLAG", 4);
    append_word_subchunk(content, "LUMI", surface.luminosity);
    append_word_subchunk(content, "DIFF", surface.diffuse);
    return content;
}

} // namespace

Bytes encode_lwob(const Mesh &mesh, const ObjectNotes &notes) {
    Bytes body;
    append_id(body, "LWOB");
    append_notes(body, notes.before_points);
    append_chunk(body, "PNTS", encode_points(mesh));
    append_chunk(body, "SRFS", encode_surface_names(mesh));
    append_chunk(body, "POLS", encode_polygons(mesh));
    append_notes(body, notes.after_polygons);
    for (const Surface &surface : mesh.surfaces()) {
        append_chunk(body, "SURF", encode_surface(surface));
    }
    Bytes file;
    file.reserve(body.size() + 8);
    append_chunk(file, "FORM", body);
    return file;
}

} // namespace zelvo_data
