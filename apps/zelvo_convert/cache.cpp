// SPDX-License-Identifier: MIT
// A folder per entry, named after a hash, with the object and a list of other files.
#include "cache.h"

#include "shared/tool_files.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <vector>

namespace convert {

namespace fs = std::filesystem;

namespace {

constexpr std::uintmax_t most_bytes = std::uintmax_t{256} << 20;

/// To be changed whenever this program begins to make another object from the same model.
constexpr char generation[] = "2";

constexpr char list_name[] = "files";

/// FNV-1a with 128 bits, so that no two files have the same hash by chance.
class Hash {
public:
    void add(const char *bytes, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            value ^= static_cast<unsigned char>(bytes[i]);
            value *= prime;
        }
    }
    /// Adds a text and its end.
    void add(const std::string &text) { add(text.c_str(), text.size() + 1); }

    std::string text() const {
        std::array<char, 33> digits{};
        std::snprintf(digits.data(), digits.size(), "%016llx%016llx",
                      static_cast<unsigned long long>(value >> 64), static_cast<unsigned long long>(value));
        return digits.data();
    }

private:
    __extension__ using Number = unsigned __int128;
    static constexpr Number prime = (Number{1} << 88) + 0x13B;
    Number value = (Number{0x6C62272E07BB0142} << 64) + 0x62B821756295C58D;
};

/// Adds a file's content; false if it cannot be read.
bool add_file(Hash &hash, const std::string &path) {
    std::FILE *file = unreadable(path).empty() ? std::fopen(path.c_str(), "rb") : nullptr;
    if (file == nullptr) {
        return false;
    }
    std::vector<char> bytes(std::size_t{1} << 16);
    while (const std::size_t count = std::fread(bytes.data(), 1, bytes.size(), file)) {
        hash.add(bytes.data(), count);
    }
    const bool is_read = std::ferror(file) == 0;
    std::fclose(file);
    return is_read;
}

/// The hash of another file of a model, or "none" if it cannot be read.
std::string hash_of(const std::string &path) {
    Hash hash;
    return add_file(hash, path) ? hash.text() : "none";
}

/// $XDG_CACHE_HOME or ~/.cache; only absolute paths count.
std::optional<fs::path> cache_folder() {
    for (const auto &[variable, rest] : {std::pair{"XDG_CACHE_HOME", ""}, std::pair{"HOME", ".cache"}}) {
        const char *value = std::getenv(variable);
        if (value != nullptr && fs::path(value).is_absolute()) {
            return fs::path(value) / rest / "zelvo" / "objects";
        }
    }
    return std::nullopt;
}

struct OldEntry {
    fs::file_time_type used;
    std::uintmax_t bytes = 0;
    fs::path folder;
};

/// The entries, most recently used first. Files that disappear meanwhile do not count.
std::vector<OldEntry> all_entries(const fs::path &cache) {
    std::vector<OldEntry> entries;
    std::error_code error;
    for (const auto &folder : fs::directory_iterator(cache, error)) {
        OldEntry entry{fs::file_time_type::min(), 0, folder.path()};
        for (const auto &file : fs::directory_iterator(folder, error)) {
            const std::uintmax_t bytes = file.file_size(error);
            entry.bytes += error ? 0 : bytes;
            entry.used = std::max(entry.used, file.last_write_time(error));
        }
        entries.push_back(std::move(entry));
    }
    std::ranges::sort(entries, std::ranges::greater(), &OldEntry::used);
    return entries;
}

/// Deletes old entries, but never the one that was just stored.
void trim(const fs::path &cache, const fs::path &newest) {
    std::uintmax_t sum = 0;
    for (const OldEntry &entry : all_entries(cache)) {
        sum += entry.bytes;
        if (sum > most_bytes && entry.folder != newest) {
            std::error_code error;
            fs::remove_all(entry.folder, error);
        }
    }
}

} // namespace

std::optional<CacheEntry> cache_entry(const std::string &model, const Wishes &wishes) {
    const std::optional<fs::path> cache = cache_folder();
    const fs::path path(model);
    Hash hash;
    hash.add(generation);
    hash.add(path.filename().string());
    hash.add(wishes.up ? *wishes.up == Up::z ? "z" : "y" : "");
    for (const std::size_t number : {std::size_t{wishes.is_flipped}, std::size_t{wishes.has_only_triangles},
                                     wishes.most_points, wishes.most_polygons}) {
        hash.add(std::to_string(number));
    }
    if (!cache || !add_file(hash, model)) {
        return std::nullopt;
    }
    const fs::path folder = *cache / hash.text();
    return CacheEntry{folder.string(), (folder / path.filename().replace_extension(".lwo")).string()};
}

bool is_cached(const CacheEntry &entry) {
    std::ifstream list(fs::path(entry.folder) / list_name);
    if (!list.is_open() || !unreadable(entry.object).empty()) {
        return false;
    }
    std::string hash;
    std::string path;
    while (list >> hash && std::getline(list.ignore(), path)) {
        if (hash_of(path) != hash) {
            return false;
        }
    }
    std::error_code error;
    fs::last_write_time(entry.object, fs::file_time_type::clock::now(), error);
    return true;
}

std::string store(const CacheEntry &entry, const std::string &object,
                  const std::set<std::string> &other_files) {
    std::string list;
    for (const std::string &file : other_files) {
        // The next run may be in another folder.
        const std::string path = fs::absolute(file).string();
        list += hash_of(path) + " " + path + "\n";
    }
    const fs::path folder(entry.folder);
    // The list last: it must not vouch for an older object if this one cannot be saved.
    std::string failure = save(entry.object, object);
    failure = failure.empty() ? save((folder / list_name).string(), list) : failure;
    trim(folder.parent_path(), folder);
    return failure;
}

} // namespace convert
