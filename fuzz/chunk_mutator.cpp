// SPDX-License-Identifier: MIT
// Splits an object file into chunks, changes one thing, and joins them again.
#include "chunk_mutator.h"

#include "support/model_builder.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <limits>
#include <random>

namespace fuzz {

namespace {

constexpr std::size_t form_bytes = 12;
constexpr std::size_t header_bytes = 8;
constexpr std::uint32_t points_id = 0x504E5453;
constexpr std::uint32_t polygons_id = 0x504F4C53;

std::uint32_t number_at(const std::string &bytes, std::size_t at) {
    std::uint32_t number = 0;
    for (std::size_t i = at; i < at + 4; ++i) {
        number = number << 8 | static_cast<unsigned char>(bytes[i]);
    }
    return number;
}

/// The possible changes to one file.
class Mutation {
public:
    Mutation(ObjectFile object_file, std::uint32_t seed, ByteMutator byte_mutator)
        : file(std::move(object_file)), random(seed), mutate_bytes(byte_mutator) {}

    void change_something() {
        using Change = void (Mutation::*)();
        // The changes that reach the most code are listed several times.
        static constexpr std::array<Change, 14> changes{
            &Mutation::change_coordinate, &Mutation::change_coordinate, &Mutation::change_word,
            &Mutation::change_word,       &Mutation::change_word,       &Mutation::add_polygon,
            &Mutation::add_polygon,       &Mutation::add_point,         &Mutation::change_size,
            &Mutation::change_name,       &Mutation::move_chunk,        &Mutation::repeat_chunk,
            &Mutation::drop_chunk,        &Mutation::change_data,
        };
        (this->*changes[below(changes.size())])();
    }

    ObjectFile file;

private:
    std::size_t below(std::size_t bound) { return bound == 0 ? 0 : random() % bound; }

    template <typename T, std::size_t Count>
    T one_of(const std::array<T, Count> &values) {
        return values[below(Count)];
    }

    /// The last chunk with this name, because only that one counts; a new one if there is none.
    Chunk &chunk_named(std::uint32_t id) {
        const auto found = std::find_if(file.chunks.rbegin(), file.chunks.rend(),
                                        [id](const Chunk &c) { return c.id == id; });
        if (found != file.chunks.rend()) {
            return *found;
        }
        file.chunks.push_back({id, 0, {}});
        return file.chunks.back();
    }

    std::size_t points() { return chunk_named(points_id).data.size() / 12; }

    float coordinate() {
        constexpr float infinity = std::numeric_limits<float>::infinity();
        constexpr std::array<float, 16> special{infinity, -infinity, std::numeric_limits<float>::quiet_NaN(),
                                                1e38F,    -3e38F,    1e19F,
                                                1e-38F,   1e-45F,    2e-20F,
                                                0.0F,     -0.0F,     1.0F,
                                                -1.0F,    110.0F,    250.0F,
                                                1e10F};
        return below(2) == 0 ? one_of(special)
                             : static_cast<float>(static_cast<int>(below(2001)) - 1000) / 8.0F;
    }

    std::uint16_t point_index() {
        const std::size_t count = points();
        return static_cast<std::uint16_t>(below(16) == 0 ? count + below(3) : below(count));
    }

    std::uint16_t word() {
        const auto count = static_cast<std::uint16_t>(points());
        const std::array<std::uint16_t, 12> special{
            0, 1, 2, 3, 4, 5, 0x7FFF, 0x8000, 0xFFFF, 0xFFFE, count, static_cast<std::uint16_t>(count - 1)};
        return below(2) == 0 ? one_of(special) : point_index();
    }

    /// Overwrites part of a chunk's data, or appends at its end.
    void put(Chunk &chunk, std::size_t at, const std::string &bytes) {
        const bool was_true = chunk.size == chunk.data.size();
        chunk.data.resize(std::max(chunk.data.size(), at + bytes.size()));
        chunk.data.replace(at, bytes.size(), bytes);
        if (was_true) {
            chunk.size = static_cast<std::uint32_t>(chunk.data.size());
        }
    }

    void change_coordinate() {
        Chunk &chunk = chunk_named(points_id);
        const float value = coordinate();
        // One time in eight, all coordinates become the same.
        const std::size_t numbers = chunk.data.size() / 4;
        if (below(8) == 0) {
            for (std::size_t i = 0; i < numbers; ++i) {
                put(chunk, i * 4, big_endian_float(value));
            }
        } else {
            put(chunk, below(numbers) * 4, big_endian_float(value));
        }
    }

    void change_word() {
        const std::uint16_t value = word();
        Chunk &chunk = chunk_named(polygons_id);
        put(chunk, below(chunk.data.size() / 2) * 2, big_endian_16(value));
    }

    void add_polygon() {
        const std::size_t vertices = below(4) == 0 ? below(12) : 3 + below(2);
        std::string words = big_endian_16(static_cast<std::uint16_t>(vertices));
        for (std::size_t i = 0; i < vertices; ++i) {
            words += big_endian_16(point_index());
        }
        // A negative surface announces detail polygons in this file format.
        words += big_endian_16(below(8) == 0 ? 0xFFFE : 1);
        Chunk &chunk = chunk_named(polygons_id);
        put(chunk, chunk.data.size(), words);
    }

    void add_point() {
        const std::string point =
            big_endian_float(coordinate()) + big_endian_float(coordinate()) + big_endian_float(coordinate());
        Chunk &chunk = chunk_named(points_id);
        put(chunk, chunk.data.size(), point);
    }

    void change_size() {
        if (file.chunks.empty()) {
            return;
        }
        Chunk &chunk = file.chunks[below(file.chunks.size())];
        const auto length = static_cast<std::uint32_t>(chunk.data.size());
        const std::array<std::uint32_t, 12> sizes{0,          1,           length,      length + 1,
                                                  length - 1, length + 12, length * 64, 0x000C0000,
                                                  0xC000,     0x7FFFFFFF,  0x80000000,  0xFFFFFFFF};
        chunk.size = below(3) == 0 ? length : one_of(sizes);
    }

    void change_name() {
        if (file.chunks.empty()) {
            return;
        }
        constexpr std::array<std::uint32_t, 4> names{points_id, polygons_id, 0x53524653, 0};
        file.chunks[below(file.chunks.size())].id = one_of(names);
    }

    void move_chunk() {
        if (!file.chunks.empty()) {
            std::swap(file.chunks[below(file.chunks.size())], file.chunks[below(file.chunks.size())]);
        }
    }

    void repeat_chunk() {
        if (!file.chunks.empty()) {
            const Chunk chunk = file.chunks[below(file.chunks.size())];
            const std::size_t times = below(32) == 0 ? 101 : 1;
            file.chunks.insert(file.chunks.begin() +
                                   static_cast<std::ptrdiff_t>(below(file.chunks.size() + 1)),
                               times, chunk);
        }
    }

    void drop_chunk() {
        if (!file.chunks.empty()) {
            file.chunks.erase(file.chunks.begin() + static_cast<std::ptrdiff_t>(below(file.chunks.size())));
        }
    }

    void change_data() {
        if (file.chunks.empty()) {
            return;
        }
        Chunk &chunk = file.chunks[below(file.chunks.size())];
        const bool was_true = chunk.size == chunk.data.size();
        chunk.data = mutate_text(chunk.data, chunk.data.size() + 64, mutate_bytes);
        if (was_true) {
            chunk.size = static_cast<std::uint32_t>(chunk.data.size());
        }
    }

    std::minstd_rand random;
    ByteMutator mutate_bytes;
};

} // namespace

ObjectFile take_apart(const std::string &bytes) {
    ObjectFile file;
    file.form = bytes.substr(0, form_bytes);
    std::size_t at = file.form.size();
    while (at + header_bytes <= bytes.size()) {
        Chunk chunk{number_at(bytes, at), number_at(bytes, at + 4), {}};
        at += header_bytes;
        chunk.data = bytes.substr(at, chunk.size);
        at += chunk.data.size();
        file.chunks.push_back(std::move(chunk));
    }
    file.rest = bytes.substr(at);
    return file;
}

std::string put_together(const ObjectFile &file) {
    std::string bytes = file.form;
    for (const Chunk &chunk : file.chunks) {
        bytes += big_endian_32(chunk.id) + big_endian_32(chunk.size) + chunk.data;
    }
    return bytes + file.rest;
}

std::string mutate_text(std::string text, std::size_t max_size, ByteMutator mutate_bytes) {
    const std::size_t size = text.size();
    // An empty text starts with one byte.
    text.resize(std::max({max_size, size, std::size_t{1}}));
    const std::size_t changed = mutate_bytes(reinterpret_cast<std::uint8_t *>(text.data()),
                                             std::max<std::size_t>(size, 1), text.size());
    text.resize(changed);
    return text;
}

std::string mutate_object(const std::string &bytes, std::size_t max_size, std::uint32_t seed,
                          ByteMutator mutate_bytes) {
    constexpr std::uint32_t one_in = 16;
    if (seed % one_in == 0) {
        return mutate_text(bytes, max_size, mutate_bytes);
    }
    if (seed % one_in == 1) {
        return bytes.substr(0, bytes.empty() ? 0 : seed / one_in % bytes.size());
    }
    Mutation mutation(take_apart(bytes), seed, mutate_bytes);
    constexpr std::uint32_t most_changes = 4;
    for (std::uint32_t i = 0; i <= seed / one_in % most_changes; ++i) {
        mutation.change_something();
    }
    const std::string changed = put_together(mutation.file);
    return changed.substr(0, max_size);
}

} // namespace fuzz
