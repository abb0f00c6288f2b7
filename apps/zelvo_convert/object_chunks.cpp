// SPDX-License-Identifier: MIT
// Steps from one header to the next, without reading what is between them.
#include "object_chunks.h"

#include "messages.h"

#include <algorithm>
#include <cstdio>
#include <string_view>

namespace convert {

namespace {

constexpr std::size_t form_header = 12;
constexpr std::size_t chunk_header = 8;

/// The next bytes of a file; fewer than asked for if it ends before.
std::string read_bytes(std::FILE *file, std::size_t count) {
    std::string bytes(count, '\0');
    bytes.resize(std::fread(bytes.data(), 1, count, file));
    return bytes;
}

std::size_t big_endian(std::string_view bytes) {
    std::size_t number = 0;
    for (const char byte : bytes) {
        number = number << 8 | static_cast<unsigned char>(byte);
    }
    return number;
}

/// The text up to a zero byte, and where the next one begins: with its zeros it has an even number of bytes.
struct Name {
    std::string text;
    std::size_t end;
};
Name name_at(const std::string &data, std::size_t at) {
    const std::size_t end = std::min(data.find('\0', at), data.size());
    return {data.substr(at, end - at), std::min(at + (end - at + 2) / 2 * 2, data.size())};
}

/// Gives the surface that a chunk is about its colour.
void take_colour(const std::string &data, std::vector<LwobSurface> &surfaces) {
    const std::string_view bytes = data;
    const Name name = name_at(data, 0);
    const auto surface = std::ranges::find(surfaces, name.text, &LwobSurface::name);
    constexpr std::size_t part_header = 6;
    for (std::size_t at = name.end; surface != surfaces.end() && at + part_header <= data.size();) {
        const std::size_t size = big_endian(bytes.substr(at + 4, 2));
        const std::string value = data.substr(at + part_header, size);
        if (data.substr(at, 4) == "COLR" && value.size() >= surface->colour.size()) {
            std::ranges::copy_n(value.begin(), std::ssize(surface->colour), surface->colour.begin());
        }
        at += part_header + size;
    }
}

} // namespace

Chunks chunks_of(const std::string &path) {
    std::FILE *file = std::fopen(path.c_str(), "rb");
    if (file == nullptr) {
        refuse("cannot be opened");
    }
    std::fseek(file, 0, SEEK_END);
    const auto file_size = static_cast<std::size_t>(std::max(std::ftell(file), 0L));
    Chunks chunks;
    std::size_t at = form_header;
    while (at + chunk_header <= file_size) {
        std::fseek(file, static_cast<long>(at), SEEK_SET);
        const std::string header = read_bytes(file, chunk_header);
        Chunk chunk{header.substr(0, 4), big_endian(header.substr(4)), 0, {}};
        chunk.present = std::min(chunk.size, file_size - at - chunk_header);
        if (chunk.name == "SRFS" || chunk.name == "SURF") {
            chunk.data = read_bytes(file, chunk.present);
        }
        at += chunk_header + chunk.size;
        chunks.list.push_back(std::move(chunk));
    }
    chunks.rest = file_size - std::min(at, file_size);
    std::fclose(file);
    return chunks;
}

std::vector<LwobSurface> surfaces_in(const Chunks &chunks) {
    std::vector<LwobSurface> surfaces;
    for (const Chunk &chunk : chunks.list) {
        for (std::size_t at = 0; chunk.name == "SRFS" && at < chunk.data.size();) {
            const Name name = name_at(chunk.data, at);
            surfaces.push_back({.name = name.text, .colour = default_colour});
            at = name.end;
        }
    }
    for (const Chunk &chunk : chunks.list) {
        if (chunk.name == "SURF") {
            take_colour(chunk.data, surfaces);
        }
    }
    return surfaces;
}

} // namespace convert
