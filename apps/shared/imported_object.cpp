// SPDX-License-Identifier: MIT
// Runs the converter and reads from a pipe what it prints.
#include "shared/imported_object.h"

#include "shared/sibling_program.h"

std::optional<std::string> import_object(const std::string &path, const std::vector<std::string> &options,
                                         bool shows_errors) {
    std::vector<std::string> words{sibling_program("zelvo-convert"), "--cached"};
    words.insert(words.end(), options.begin(), options.end());
    words.insert(words.end(), {"--", path});
    std::string printed;
    const std::optional<int> code = run_program(words, printed, shows_errors);
    return code == 0 ? std::optional(printed) : std::nullopt;
}
