// SPDX-License-Identifier: MIT
// Reads the file's first bytes.
#include "platform/posix/object_form.h"

#include <filesystem>
#include <fstream>

namespace host {

bool is_object_file(const std::string &path) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) {
        return false;
    }
    std::ifstream file(path, std::ios::binary);
    constexpr std::size_t form_header = 12;
    std::string form(form_header, '\0');
    file.read(form.data(), form_header);
    return file && form.starts_with("FORM") && form.ends_with("LWOB");
}

} // namespace host
