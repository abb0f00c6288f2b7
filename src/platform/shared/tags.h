// SPDX-License-Identifier: MIT
// Reads the tag lists of the program's calls.
#pragma once

#include "platform/exec.h"

namespace host {

/// The data of the first such tag of a list; `otherwise` if there is none, or if the list is null.
TagData tag_value(const TagItem *tags, ULONG tag, TagData otherwise);

} // namespace host
