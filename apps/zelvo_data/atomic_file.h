// SPDX-License-Identifier: MIT
// Writing whole files, so that a failure never leaves a half-written one.
#pragma once

#include "shared/lwob_writer.h"

#include <filesystem>

namespace zelvo_data {

// Writes to NAME.part first and renames that once every byte is stored. Throws std::runtime_error.
void write_file(const std::filesystem::path &path, const Bytes &bytes);

} // namespace zelvo_data
