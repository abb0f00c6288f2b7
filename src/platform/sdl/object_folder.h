// SPDX-License-Identifier: MIT
// The other objects in an object's folder.
#pragma once

#include <string>

namespace host {

/// Whether names are in the order of file managers: numbers in them count as numbers, and capitals are like
/// small letters, unless nothing else differs.
bool is_before(const std::string &name, const std::string &other);

/// The object after (step 1) or before (step -1) this one in its folder, of the objects whose names end in
/// ".lwo" or ".lwob", in any case. After the last comes the first. Empty if there is no other.
std::string neighbour_of(const std::string &path, int step);

} // namespace host
