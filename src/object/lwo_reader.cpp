// SPDX-License-Identifier: MIT
// Reads the point and polygon chunks of an IFF form LWOB and skips all others.
#include "object/lwo_reader.h"

#include "core/fatal_exit.h"
#include "object/model.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <span>

namespace {

constexpr std::uint32_t chunk_id(const char (&name)[5]) {
    std::uint32_t id = 0;
    for (int i = 0; i < 4; ++i) {
        id = id << 8 | static_cast<unsigned char>(name[i]);
    }
    return id;
}

/// The chunk counter's last value: it starts at 0, so at most 101 chunks are read.
constexpr int last_chunk_counter = 100;

std::uint16_t big_endian_16(const unsigned char *bytes) {
    return static_cast<std::uint16_t>(bytes[0] << 8 | bytes[1]);
}

std::uint32_t big_endian_32(const unsigned char *bytes) {
    return std::uint32_t{big_endian_16(bytes)} << 16 | big_endian_16(bytes + 2);
}

struct ChunkHeader {
    std::uint32_t id;
    std::uint32_t size;
};

/// Reads the next chunk's header; false at the end of the file.
bool read_header(std::FILE *file, ChunkHeader &header) {
    std::array<unsigned char, 8> bytes{};
    if (std::fread(bytes.data(), 1, bytes.size(), file) != bytes.size()) {
        return false;
    }
    header = {big_endian_32(bytes.data()), big_endian_32(bytes.data() + 4)};
    return true;
}

bool is_lwob_form(std::FILE *file) {
    ChunkHeader form{};
    std::array<unsigned char, 4> type{};
    return read_header(file, form) && form.id == chunk_id("FORM") &&
           std::fread(type.data(), 1, type.size(), file) == type.size() &&
           big_endian_32(type.data()) == chunk_id("LWOB");
}

/// Chunk sizes are signed on the system that the format comes from, and no buffer can have a negative size.
bool is_negative(std::uint32_t size) {
    return (size >> 31) != 0;
}

/// Converts big-endian numbers as wide as T to native ones in place. Only the first `bytes_read` bytes came
/// from the file; the zeros after them need no conversion.
template <typename T>
void make_native(void *data, std::size_t bytes_read) {
    auto *bytes = static_cast<unsigned char *>(data);
    for (std::size_t at = 0; at < bytes_read; at += sizeof(T)) {
        T value;
        if constexpr (sizeof(T) == 4) {
            value = big_endian_32(bytes + at);
        } else {
            value = big_endian_16(bytes + at);
        }
        std::memcpy(bytes + at, &value, sizeof(T));
    }
}

/// How many bytes of the two chunks the file really has.
struct BytesRead {
    std::size_t points = 0;
    std::size_t polygons = 0;
};

/// Reads one chunk's data into a new array of T, whose numbers are as wide as Number. The array has one
/// element more than fits into the chunk, so that a partial record at its end stays inside. False if the file
/// ended early.
template <typename Number, typename T>
bool read_chunk(std::FILE *file, std::uint32_t size, HeapArray<T> &array, std::int32_t &array_bytes,
                std::size_t &bytes_read, const char *refusal) {
    if (is_negative(size)) {
        fatal_exit(refusal);
    }
    HeapArray<T> data = allocate_or_exit<T>(size / sizeof(T) + 1, refusal);
    bytes_read = std::fread(data.get(), 1, size, file);
    make_native<Number>(data.get(), bytes_read);
    array = std::move(data);
    array_bytes = static_cast<std::int32_t>(size);
    return bytes_read == size;
}

/// Reads the chunks up to the end of the file. No pad byte follows a chunk of odd size.
BytesRead read_chunks(std::FILE *file) {
    BytesRead bytes_read;
    ChunkHeader chunk{};
    for (int counter = 0; counter <= last_chunk_counter && read_header(file, chunk); ++counter) {
        bool more = false;
        if (chunk.id == chunk_id("PNTS")) {
            more = read_chunk<std::uint32_t>(file, chunk.size, point_chunk, point_chunk_bytes,
                                             bytes_read.points, "Couldn't allocate PNTS chunk memory\n");
        } else if (chunk.id == chunk_id("POLS")) {
            more = read_chunk<std::uint16_t>(file, chunk.size, polygon_chunk, polygon_chunk_bytes,
                                             bytes_read.polygons, "Couldn't allocate POLS chunk memory\n");
        } else {
            more = !is_negative(chunk.size) && std::fseek(file, static_cast<long>(chunk.size), SEEK_CUR) == 0;
        }
        if (!more) {
            break;
        }
    }
    return bytes_read;
}

/// Finds how many points and words the chunks claim beyond the end of the file. A point counts as read if at
/// least one of its bytes was read, or if its index is among the words of the polygon list.
void measure_unread(const BytesRead &bytes_read) {
    const auto reached_words =
        std::min(static_cast<std::int32_t>((bytes_read.polygons + 1) / 2), polygon_word_count());
    unread_polygon_words = polygon_word_count() - reached_words;

    std::int32_t reached_points =
        static_cast<std::int32_t>((bytes_read.points + sizeof(Vec3) - 1) / sizeof(Vec3));
    if (reached_points < point_count()) {
        for (const std::uint16_t word :
             std::span(polygon_chunk.get(), static_cast<std::size_t>(reached_words))) {
            reached_points = std::max<std::int32_t>(reached_points, word + 1);
        }
    }
    unread_points = std::max<std::int32_t>(point_count() - reached_points, 0);
}

} // namespace

void read_object(std::FILE *file) {
    const bool is_object = is_lwob_form(file);
    const BytesRead bytes_read = is_object ? read_chunks(file) : BytesRead{};
    std::fclose(file);
    if (!is_object) {
        fatal_exit("This is not a(n) LW object\n");
    }
    if (polygon_chunk_bytes == 0 || point_chunk_bytes == 0) {
        fatal_exit("nincs polygon az objektben!\n");
    }
    measure_unread(bytes_read);
    const auto count = static_cast<std::size_t>(point_count()) + 1;
    lwopoints2 = allocate_or_exit<Vec3>(count, "Couldn't allocate *lwopoints2 memory\n");
    lwopoints3 = allocate_or_exit<Vec3>(count, "Couldn't allocate *lwopoints3 memory\n");
    lwonormals2 = allocate_or_exit<Vec3>(count, "Couldn't allocate *lwonormals2 memory\n");
    lwonormals3 = allocate_or_exit<Vec3>(count, "Couldn't allocate *lwonormals3 memory\n");
    lwofis = allocate_or_exit<float>(count, "Couldn't allocate *lwofis memory\n");
}
