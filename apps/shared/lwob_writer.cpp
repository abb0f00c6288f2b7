// SPDX-License-Identifier: MIT
// Big-endian chunk encoding.
#include "shared/lwob_writer.h"

#include <bit>
#include <stdexcept>

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

/// Text ends with a zero byte; a second one follows if the length would otherwise be odd.
void append_text(Bytes &bytes, const std::string &text) {
    bytes.insert(bytes.end(), text.begin(), text.end());
    bytes.push_back(0);
    if (text.size() % 2 == 0) {
        bytes.push_back(0);
    }
}

void append_chunk(Bytes &bytes, const std::string &id, const Bytes &content) {
    // Sizes are signed on the system that the format comes from.
    if (content.size() > INT32_MAX) {
        throw std::length_error("too large for the format");
    }
    append_id(bytes, id);
    append_u32(bytes, static_cast<std::uint32_t>(content.size()));
    bytes.insert(bytes.end(), content.begin(), content.end());
}

void append_notes(Bytes &bytes, const std::vector<LwobNote> &notes) {
    for (const LwobNote &note : notes) {
        Bytes content;
        append_text(content, note.text);
        append_chunk(bytes, note.id, content);
    }
}

Bytes encode_points(const std::vector<Vec3> &points) {
    Bytes content;
    content.reserve(points.size() * 12);
    for (const Vec3 &point : points) {
        for (const float coordinate : {point.x, point.y, point.z}) {
            append_u32(content, std::bit_cast<std::uint32_t>(coordinate));
        }
    }
    return content;
}

Bytes encode_words(const std::vector<std::uint16_t> &words) {
    Bytes content;
    content.reserve(words.size() * 2);
    for (const std::uint16_t word : words) {
        append_u16(content, word);
    }
    return content;
}

Bytes encode_surface_names(const std::vector<LwobSurface> &surfaces) {
    Bytes content;
    for (const LwobSurface &surface : surfaces) {
        append_text(content, surface.name);
    }
    return content;
}

void append_word_subchunk(Bytes &bytes, const std::string &id, std::uint16_t value) {
    append_id(bytes, id);
    append_u16(bytes, 2);
    append_u16(bytes, value);
}

Bytes encode_surface(const LwobSurface &surface) {
    // Faces share their points, so surfaces are meant to look smooth.
    constexpr std::uint16_t smooth_flag = 1 << 2;
    constexpr std::uint16_t two_sided_flag = 1 << 8;
    Bytes content;
    append_text(content, surface.name);
    append_id(content, "COLR");
    append_u16(content, 4);
    content.insert(content.end(), surface.colour.begin(), surface.colour.end());
    content.push_back(0);
    append_word_subchunk(content, "FLAG", surface.is_two_sided ? smooth_flag | two_sided_flag : smooth_flag);
    append_word_subchunk(content, "LUMI", surface.luminosity);
    append_word_subchunk(content, "DIFF", surface.diffuse);
    return content;
}

} // namespace

Bytes encode_lwob(const LwobObject &object) {
    Bytes body;
    append_id(body, "LWOB");
    append_notes(body, object.notes_before_points);
    append_chunk(body, "PNTS", encode_points(object.points));
    append_chunk(body, "SRFS", encode_surface_names(object.surfaces));
    append_chunk(body, "POLS", encode_words(object.polygon_words));
    append_notes(body, object.notes_after_polygons);
    for (const LwobSurface &surface : object.surfaces) {
        append_chunk(body, "SURF", encode_surface(surface));
    }
    Bytes file;
    file.reserve(body.size() + 8);
    append_chunk(file, "FORM", body);
    return file;
}
