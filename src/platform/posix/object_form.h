// SPDX-License-Identifier: MIT
// Recognises an object file by how it begins.
#pragma once

#include <string>

namespace host {

/// Whether a file begins as an object does, with the IFF form LWOB. Only a regular file is opened.
bool is_object_file(const std::string &path);

} // namespace host
