// SPDX-License-Identifier: MIT
// Objects that were made before, in the user's cache. All of it can be deleted at any time.
#pragma once

#include "conversion.h"

#include <optional>
#include <set>
#include <string>

namespace convert {

/// The cache's entry for a model: its folder, and the object in it.
struct CacheEntry {
    std::string folder;
    std::string object;
};

/// The entry of a model with this name and content, made in this way. Nothing if there is no folder for a
/// cache, or the model cannot be read.
std::optional<CacheEntry> cache_entry(const std::string &model, const Wishes &wishes);

/// Whether the object is there, and all other files of its model are as they were. Notes that the object was
/// used.
bool is_cached(const CacheEntry &entry);

/// Stores the object, with the names and contents of the model's other files. Then drops the objects that
/// were not used for the longest time, until all together fit into 256 MiB. Returns why that failed, or
/// nothing.
std::string store(const CacheEntry &entry, const std::string &object,
                  const std::set<std::string> &other_files);

} // namespace convert
