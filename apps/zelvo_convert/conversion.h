// SPDX-License-Identifier: MIT
// From a file of any format to an object file.
#pragma once

#include "import.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace convert {

/// The most points whose indices fit into an object file.
constexpr std::size_t most_points_of_an_object = 65535;

/// How the object is to be made.
struct Wishes {
    std::optional<Up> up;
    bool is_flipped = false;
    bool has_only_triangles = false;
    std::size_t most_points = most_points_of_an_object;
    std::size_t most_polygons = SIZE_MAX;
    /// Whether to report the object's bounds and surfaces too.
    bool is_described = false;
};

/// Converts the file, and sends the object, a summary, and a note about everything that was left out. The
/// process ends if there is no object to make. Only for a process that run_in_child started.
void convert_model(const std::string &path, const Wishes &wishes);

} // namespace convert
