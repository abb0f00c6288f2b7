// SPDX-License-Identifier: MIT
// Parses a command line by the template "FILE/A" and joins paths.
#include "platform/shared/command_line.h"

#include <algorithm>
#include <cctype>
#include <cstring>

namespace host {

namespace {

const std::string keyword = "FILE";

/// Whether the word begins with the keyword, in any case of letters.
bool starts_with_keyword(const std::string &word) {
    return word.size() >= keyword.size() &&
           std::equal(keyword.begin(), keyword.end(), word.begin(),
                      [](char letter, unsigned char typed) { return letter == std::toupper(typed); });
}

bool is_keyword(const std::string &word) {
    return word.size() == keyword.size() && starts_with_keyword(word);
}

bool starts_with_keyword_and_equals(const std::string &word) {
    return starts_with_keyword(word) && word.size() > keyword.size() && word[keyword.size()] == '=';
}

} // namespace

std::optional<std::string> file_argument(const std::vector<std::string> &words) {
    if (words.size() == 2 && is_keyword(words[0])) {
        return words[1];
    }
    if (words.size() != 1 || is_keyword(words[0])) {
        return std::nullopt;
    }
    return starts_with_keyword_and_equals(words[0]) ? words[0].substr(keyword.size() + 1) : words[0];
}

std::string join_path(const std::string &drawer, const std::string &file) {
    const bool is_joined = drawer.empty() || drawer.back() == ':' || drawer.back() == '/';
    return drawer + (is_joined ? "" : "/") + file;
}

bool join_path_in_place(char *drawer, const char *file, std::size_t size) {
    const std::string path = join_path(drawer, file);
    if (path.size() >= size) {
        return false;
    }
    std::memcpy(drawer, path.c_str(), path.size() + 1);
    return true;
}

} // namespace host
