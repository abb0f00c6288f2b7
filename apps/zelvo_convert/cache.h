// SPDX-License-Identifier: MIT
// The user's cache of converted objects. It can be deleted at any time.
#pragma once

#include "conversion.h"

#include <optional>
#include <set>
#include <string>

namespace convert {

/// The cache's entry for a model: the entry's folder, and the path of the object in it.
struct CacheEntry {
    std::string folder;
    std::string object;
};

/// The entry for a model of this name and content, converted in this way. Nothing if the user has no folder
/// for a cache, or if the model cannot be read.
std::optional<CacheEntry> cache_entry(const std::string &model, const Wishes &wishes);

/// Whether the object is in the cache and all other files of its model are unchanged. If so, the object
/// counts as used now.
bool is_cached(const CacheEntry &entry);

/// Stores the object, and the names and hashes of the model's other files. Then deletes the objects that were
/// not used for the longest time, until the rest fit into 256 MiB. Returns why storing failed; empty if it
/// did not.
std::string store(const CacheEntry &entry, const std::string &object,
                  const std::set<std::string> &other_files);

} // namespace convert
