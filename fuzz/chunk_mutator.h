// SPDX-License-Identifier: MIT
// Changes object files as files of chunks, so that fuzzing gets past the header.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace fuzz {

/// Changes bytes without knowing what they are, in place, to at most `max_size` of them, and returns how many
/// there are then.
using ByteMutator = std::size_t (*)(std::uint8_t *data, std::size_t size, std::size_t max_size);

/// One chunk as a file has it. The size in the header need not be that of the data.
struct Chunk {
    std::uint32_t id = 0;
    std::uint32_t size = 0;
    std::string data;
};

/// An object file taken apart: twelve bytes of form header, chunks, and what is too short to be one.
struct ObjectFile {
    std::string form;
    std::vector<Chunk> chunks;
    std::string rest;
};

ObjectFile take_apart(const std::string &bytes);
std::string put_together(const ObjectFile &file);

/// Changes one thing about an object file: a coordinate, a word of the polygon list, a polygon or a point
/// more, a chunk's size, name, place or number, or a stretch of bytes.
std::string mutate_object(const std::string &bytes, std::size_t max_size, std::uint32_t seed,
                          ByteMutator mutate_bytes);

/// Lets the byte mutator change a text, to at most `max_size` bytes.
std::string mutate_text(std::string text, std::size_t max_size, ByteMutator mutate_bytes);

} // namespace fuzz
