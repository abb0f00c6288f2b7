// SPDX-License-Identifier: MIT
// For each set of up to eight lanes: the lanes in the set, in order, and then the others.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace fast {

/// The most lanes of a vector that is compressed by the table.
constexpr std::size_t compress_lanes = 8;

/// Lane numbers by the bits of the set, lane 0 the lowest:
///
///     lanes 1 and 4, bits 0b00010010:    1 4 0 2 3 5 6 7
///
/// The table of four lanes is made of the first four numbers of the first 16 entries, which are all below
/// four.
using CompressTable = std::array<std::array<std::uint8_t, compress_lanes>, 1U << compress_lanes>;

constexpr CompressTable make_compress_table() {
    CompressTable table{};
    for (std::size_t bits = 0; bits < table.size(); ++bits) {
        std::size_t at = 0;
        for (const std::size_t is_in_set : {std::size_t{1}, std::size_t{0}}) {
            for (std::size_t lane = 0; lane < compress_lanes; ++lane) {
                if ((bits >> lane & 1U) == is_in_set) {
                    table[bits][at++] = static_cast<std::uint8_t>(lane);
                }
            }
        }
    }
    return table;
}

inline constexpr CompressTable compress_table = make_compress_table();

/// The same for a vector of four lanes of 32 bits, as the numbers of their bytes.
using CompressByteTable = std::array<std::array<std::uint8_t, 16>, 1U << 4U>;

constexpr CompressByteTable make_compress_byte_table() {
    CompressByteTable table{};
    for (std::size_t bits = 0; bits < table.size(); ++bits) {
        for (std::size_t byte = 0; byte < table[bits].size(); ++byte) {
            table[bits][byte] = static_cast<std::uint8_t>(compress_table[bits][byte / 4] * 4 + byte % 4);
        }
    }
    return table;
}

alignas(16) inline constexpr CompressByteTable compress_byte_table = make_compress_byte_table();

} // namespace fast
