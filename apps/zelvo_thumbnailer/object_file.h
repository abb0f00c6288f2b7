// SPDX-License-Identifier: MIT
// From the name of a file to the model.
#pragma once

#include <string>

/// The path that a file URI names; any other word is a path as it is. The process ends for a URI of another
/// machine and for one with a broken escape.
std::string path_of(const std::string &uri_or_path);

/// Reads a regular file into the model. A pipe or a device is refused, since it could keep the process
/// waiting. The process ends, with the reason, if there is no object in it.
void load_object(const std::string &path);

/// Reads an object file in memory into the model, in the same way.
void read_object_bytes(const std::string &bytes);
