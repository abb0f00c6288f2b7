// SPDX-License-Identifier: MIT
// Changes object files chunk by chunk, so that fuzzing gets past the header.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace fuzz {

/// Changes arbitrary bytes in place, to at most `max_size` bytes, and returns their new number.
using ByteMutator = std::size_t (*)(std::uint8_t *data, std::size_t size, std::size_t max_size);

/// One chunk of a file. The size in its header may differ from that of its data.
struct Chunk {
    std::uint32_t id = 0;
    std::uint32_t size = 0;
    std::string data;
};

/// The parts of an object file: twelve bytes of form header, the chunks, and a rest too short to be a chunk.
struct ObjectFile {
    std::string form;
    std::vector<Chunk> chunks;
    std::string rest;
};

ObjectFile take_apart(const std::string &bytes);
std::string put_together(const ObjectFile &file);

/// Makes one change to an object file: a coordinate, a word of the polygon list, a new polygon or point, a
/// chunk's size, name, place or number of copies, or a few bytes.
std::string mutate_object(const std::string &bytes, std::size_t max_size, std::uint32_t seed,
                          ByteMutator mutate_bytes);

/// Lets the byte mutator change a text, to at most `max_size` bytes.
std::string mutate_text(std::string text, std::size_t max_size, ByteMutator mutate_bytes);

} // namespace fuzz
