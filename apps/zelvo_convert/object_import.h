// SPDX-License-Identifier: MIT
// Reads an object file, so that it can be reduced or cut as well.
#pragma once

#include "import.h"

#include <string>

namespace convert {

/// Has the file read by the viewer's reader, into the viewer's model. The process ends if the viewer refuses
/// it.
void read_as_the_viewer(const std::string &path);

/// Makes a model of what the viewer's reader finds. The process ends if the viewer refuses it.
Model model_of_object(const std::string &path);

} // namespace convert
