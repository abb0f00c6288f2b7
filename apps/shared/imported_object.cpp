// SPDX-License-Identifier: MIT
// Runs the converter and reads from a pipe what it prints.
#include "shared/imported_object.h"

#include "shared/sibling_program.h"
#include "shared/tool_files.h"

#include <cstdio>

bool is_object_file(const std::string &path) {
    constexpr std::size_t form_header = 12;
    std::FILE *file = unreadable(path).empty() ? std::fopen(path.c_str(), "rb") : nullptr;
    if (file == nullptr) {
        return false;
    }
    std::string start(form_header, '\0');
    start.resize(std::fread(start.data(), 1, form_header, file));
    std::fclose(file);
    return start.size() == form_header && start.starts_with("FORM") && start.ends_with("LWOB");
}

std::optional<std::string> import_object(const std::string &path, const std::vector<std::string> &options,
                                         bool shows_errors) {
    std::vector<std::string> words{sibling_program("zelvo-convert"), "--cached"};
    words.insert(words.end(), options.begin(), options.end());
    words.insert(words.end(), {"--", path});
    std::string printed;
    const std::optional<int> code = run_program(words, printed, shows_errors);
    return code == 0 ? std::optional(printed) : std::nullopt;
}
