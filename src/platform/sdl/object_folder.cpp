// SPDX-License-Identifier: MIT
// Lists a folder and walks around it.
#include "platform/sdl/object_folder.h"

#include "platform/posix/object_form.h"

#include <algorithm>
#include <filesystem>
#include <vector>

namespace fs = std::filesystem;

namespace host {

namespace {

bool is_digit(char character) {
    return character >= '0' && character <= '9';
}

/// ASCII only, so that the order is the same in every locale.
char small(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

std::string small(std::string text) {
    std::ranges::transform(text, text.begin(), [](char character) { return small(character); });
    return text;
}

/// Takes the digits at the place of a name, without leading zeros.
std::string take_number(const std::string &name, std::size_t &place) {
    const std::size_t first = place;
    while (place < name.size() && is_digit(name[place])) {
        ++place;
    }
    const std::size_t zeros = std::min(name.find_first_not_of('0', first), place);
    return name.substr(zeros, place - zeros);
}

/// Less than, equal to or more than 0 as the number is.
int compare_numbers(const std::string &number, const std::string &other) {
    if (number.size() != other.size()) {
        return number.size() < other.size() ? -1 : 1;
    }
    return number.compare(other);
}

bool has_object_suffix(const fs::path &path) {
    const std::string suffix = small(path.extension().string());
    return suffix == ".lwo" || suffix == ".lwob";
}

} // namespace

bool is_before(const std::string &name, const std::string &other) {
    std::size_t here = 0;
    std::size_t there = 0;
    while (here < name.size() && there < other.size()) {
        if (is_digit(name[here]) && is_digit(other[there])) {
            const std::string number = take_number(name, here);
            if (const int order = compare_numbers(number, take_number(other, there)); order != 0) {
                return order < 0;
            }
        } else {
            const auto letter = static_cast<unsigned char>(small(name[here++]));
            const auto other_letter = static_cast<unsigned char>(small(other[there++]));
            if (letter != other_letter) {
                return letter < other_letter;
            }
        }
    }
    const std::size_t left = name.size() - here;
    const std::size_t other_left = other.size() - there;
    return left != other_left ? left < other_left : name < other;
}

std::string neighbour_of(const std::string &path, int step) {
    const fs::path folder = fs::path(path).parent_path();
    const std::string own_name = fs::path(path).filename().string();
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator at(folder.empty() ? "." : folder, error);
         !error && at != fs::directory_iterator(); at.increment(error)) {
        const std::string name = at->path().filename().string();
        if (has_object_suffix(name) && name != own_name) {
            names.push_back(name);
        }
    }
    std::ranges::sort(names, is_before);
    // In the order of a walk around the folder that begins after this object.
    std::rotate(names.begin(), std::upper_bound(names.begin(), names.end(), own_name, is_before),
                names.end());
    if (step < 0) {
        std::ranges::reverse(names);
    }
    for (const std::string &name : names) {
        if (is_object_file((folder / name).string())) {
            return (folder / name).string();
        }
    }
    return "";
}

} // namespace host
