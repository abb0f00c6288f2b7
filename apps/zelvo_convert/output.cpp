// SPDX-License-Identifier: MIT
// Makes paths, and runs the viewer.
#include "output.h"

#include "shared/sibling_program.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>

namespace convert {

namespace fs = std::filesystem;

Outputs::Outputs(const Options &all_options) : options(all_options) {
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

bool Outputs::take(const std::string &path) {
    return taken.insert(path).second;
}

bool Outputs::view() const {
    const std::optional<int> code =
        run_program({sibling_program("zelvo"), "--", path_for(options.inputs.front())});
    if (!code) {
        std::fprintf(stderr, "zelvo-convert: cannot start the viewer: %s\n", std::strerror(errno));
    }
    return code == 0;
}

std::string unwritable(const std::string &input, const std::string &path) {
    std::error_code error;
    return fs::equivalent(input, path, error) ? "its object would replace it (-o or -d names another place)"
                                              : "";
}

} // namespace convert
