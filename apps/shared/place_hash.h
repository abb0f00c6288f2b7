// SPDX-License-Identifier: MIT
// A hash of a point's place, by the bits of its coordinates.
#pragma once

#include "core/vec3.h"

#include <bit>
#include <cstdint>
#include <initializer_list>

/// Mixes a value into a hash so that every bit of both changes about half of the result's.
inline std::uint64_t mix(std::uint64_t hash, std::uint64_t value) {
    hash = (std::rotl(hash, 29) ^ value) * 0x9E3779B97F4A7C15U;
    return hash ^ hash >> 32;
}

/// Points whose coordinates are equal have the same hash, even if one has a negative zero.
inline std::uint64_t place_hash(const Vec3 &point) {
    std::uint64_t hash = 0;
    for (const float coordinate : {point.x, point.y, point.z}) {
        // Adding 0 makes a negative zero positive.
        hash = mix(hash, std::bit_cast<std::uint32_t>(coordinate + 0.0F));
    }
    return hash;
}
