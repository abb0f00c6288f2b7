// SPDX-License-Identifier: MIT
// The walk over the polygon list.
#pragma once

#include "object/model.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

/// Number of empty polygons (count 0, two words each) in a tail of `words` zero words at the end of the list.
/// There are at least 4 words, and each polygon needs three words after its count.
inline std::int32_t empty_polygons(std::size_t words) {
    return static_cast<std::int32_t>((words - 2) / 2);
}

/// One polygon: its vertex count, and the words after the count, which are its point indices. A polygon of
/// fewer than three points is used as the triangle of the three words after its count, so there are always at
/// least three words. They are valid if all of them are indices of points.
struct Polygon {
    std::size_t vertices;
    std::span<const std::uint16_t> indices;
    bool has_valid_indices;

    /// Where the next polygon starts if this one starts at the word `at`: after the indices and the surface.
    std::size_t next(std::size_t at) const { return at + vertices + 2; }
};

/// Words of a triangle and of a quad: the count, the indices and the surface.
constexpr std::size_t triangle_words = 5;
constexpr std::size_t quad_words = 6;

/// The polygon whose count is the word `at` of the list. None if the list ends inside it, which ends every
/// walk.
inline std::optional<Polygon> polygon_at(std::span<const std::uint16_t> words, std::size_t at) {
    const std::size_t vertices = words[at];
    const std::size_t used = std::max<std::size_t>(vertices, 3);
    if (at + used >= words.size()) {
        return std::nullopt;
    }
    const auto points = static_cast<std::uint32_t>(point_count());
    const std::span<const std::uint16_t> indices = words.subspan(at + 1, used);
    const bool has_valid_indices =
        std::all_of(indices.begin(), indices.end(), [points](std::uint16_t i) { return i < points; });
    return Polygon{vertices, indices, has_valid_indices};
}

/// The whole list.
inline std::span<const std::uint16_t> polygon_words() {
    return {polygon_chunk.get(), static_cast<std::size_t>(polygon_word_count())};
}

/// Calls `visit` for each polygon in list order, up to the first one that the list ends inside.
///
/// All polygons in the unread tail of the list are empty and identical. Only the first of them is visited, so
/// that the file's size limits the length of a walk. The number of the others is returned.
template <typename Visit>
std::int32_t for_each_polygon(Visit visit) {
    const std::span<const std::uint16_t> words = polygon_words();
    const std::size_t read_words = words.size() - static_cast<std::size_t>(unread_polygon_words);
    for (std::size_t at = 0; at < words.size();) {
        const std::optional<Polygon> polygon = polygon_at(words, at);
        if (!polygon) {
            return 0;
        }
        visit(*polygon);
        if (at >= read_words) {
            return empty_polygons(words.size() - at) - 1;
        }
        at = polygon->next(at);
    }
    return 0;
}
