// SPDX-License-Identifier: MIT
// Makes paths, and runs the viewer.
#include "output.h"

#include "shared/sibling_program.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <sys/stat.h>

namespace convert {

namespace fs = std::filesystem;

namespace {

/// What all names of a file have in common; nothing if there is no such file.
std::optional<FileIdentity> identity_of(const std::string &path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 ? std::optional(FileIdentity(status.st_dev, status.st_ino))
                                            : std::nullopt;
}

} // namespace

Outputs::Outputs(const Options &all_options) : options(all_options) {
    for (const std::string &input : options.inputs) {
        if (const auto identity = identity_of(input)) {
            inputs.insert(*identity);
        }
    }
    if (options.opens_viewer && !options.output && !options.folder) {
        std::error_code error;
        std::string pattern = (fs::temp_directory_path(error) / "zelvo-XXXXXX").string();
        temporary_folder = mkdtemp(pattern.data()) != nullptr ? pattern : "";
    }
}

Outputs::~Outputs() {
    if (!temporary_folder.empty()) {
        std::error_code error;
        fs::remove_all(temporary_folder, error);
    }
}

std::string Outputs::path_for(const std::string &input) const {
    if (options.only_describes) {
        return "";
    }
    if (options.output) {
        return *options.output;
    }
    const fs::path name = fs::path(input).filename().replace_extension(".lwo");
    if (!temporary_folder.empty()) {
        return (temporary_folder / name).string();
    }
    return (options.folder ? fs::path(*options.folder) : fs::path(input).parent_path()) / name;
}

std::string Outputs::take(const std::string &path) {
    if (const auto older = identity_of(path); older && inputs.contains(*older)) {
        return "its object would replace an input (-o or -d names another place)";
    }
    std::error_code error;
    const bool is_new = taken.insert(fs::absolute(path, error).lexically_normal()).second;
    return is_new ? "" : "another input becomes " + path;
}

bool Outputs::view() const {
    const std::optional<int> code =
        run_program({sibling_program("zelvo"), "--", path_for(options.inputs.front())});
    if (!code) {
        std::fprintf(stderr, "zelvo-convert: cannot start the viewer: %s\n", std::strerror(errno));
    }
    return code == 0;
}

} // namespace convert
