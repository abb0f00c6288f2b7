// SPDX-License-Identifier: MIT
// Reads a model of any format.
#pragma once

#include "mesh.h"

#include <cstddef>
#include <optional>
#include <string>

namespace convert {

/// The axis that points up in the model.
enum class Up { y, z };

/// A model as its file has it, in the axes of an object file, with its parts in their places.
struct Model {
    Mesh mesh;
    std::string format;
    /// What an object file cannot hold.
    std::size_t lines = 0;
    std::size_t single_points = 0;
    /// Faces with an index of no point.
    std::size_t broken_faces = 0;
};

/// Reads an object file as the viewer does, and any other file with assimp. Without `up` the axis is the one
/// that the file names, or else the usual one of its format. The process ends if there is no model in the
/// file.
Model import_model(const std::string &path, std::optional<Up> up);

} // namespace convert
