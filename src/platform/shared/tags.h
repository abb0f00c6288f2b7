// SPDX-License-Identifier: MIT
// Reading the tag lists that the program's calls bring.
#pragma once

#include "platform/exec.h"

namespace host {

/// The data of the first such tag of a list, which may be null, or `otherwise` if it has none.
TagData tag_value(const TagItem *tags, ULONG tag, TagData otherwise);

} // namespace host
