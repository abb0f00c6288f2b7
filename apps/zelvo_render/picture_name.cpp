// SPDX-License-Identifier: MIT
// Puts a pass number into a file name pattern without passing the user's text to printf.
#include "picture_name.h"

#include <cstddef>
#include <regex>

namespace {

/// A number's conversion, or an escaped percent sign, or a percent sign that is neither.
const std::regex conversion("%(0?)([0-9]?[0-9]?)d|%%|%");

/// The place of an object's name, or an escaped percent sign, so that the s of "%%s" stays a letter.
const std::regex object_conversion("%s|%%");

struct Counts {
    int numbers = 0;
    int stray = 0;
};

Counts count_conversions(const std::string &pattern) {
    Counts counts;
    for (std::sregex_iterator at(pattern.begin(), pattern.end(), conversion), end; at != end; ++at) {
        const std::string found = at->str();
        counts.numbers += found.back() == 'd' ? 1 : 0;
        counts.stray += found == "%" ? 1 : 0;
    }
    return counts;
}

/// The number, padded to the conversion's width.
std::string padded(int number, const std::smatch &match) {
    std::string digits = std::to_string(number);
    const std::size_t width = match[2].length() > 0 ? std::stoul(match[2].str()) : 0;
    const char fill = match[1].length() > 0 ? '0' : ' ';
    return digits.size() < width ? std::string(width - digits.size(), fill) + digits : digits;
}

} // namespace

bool is_picture_pattern(const std::string &pattern) {
    const Counts counts = count_conversions(pattern);
    return counts.numbers == 1 && counts.stray == 0;
}

bool is_plain_name(const std::string &pattern) {
    const Counts counts = count_conversions(pattern);
    return counts.numbers == 0 && counts.stray == 0;
}

bool has_object_name(const std::string &text) {
    return with_object_name(text, "") != text;
}

std::string with_object_name(const std::string &text, const std::string &name) {
    std::string result;
    std::size_t at = 0;
    for (std::sregex_iterator match(text.begin(), text.end(), object_conversion), end; match != end;
         ++match) {
        const auto position = static_cast<std::size_t>(match->position());
        result += text.substr(at, position - at) + (match->str() == "%s" ? name : "%%");
        at = position + 2;
    }
    return result + text.substr(at);
}

std::string escaped(const std::string &name) {
    return std::regex_replace(name, std::regex("%"), "%%");
}

std::string picture_name(const std::string &pattern, int number) {
    std::string name;
    std::size_t at = 0;
    for (std::sregex_iterator match(pattern.begin(), pattern.end(), conversion), end; match != end; ++match) {
        const auto position = static_cast<std::size_t>(match->position());
        name += pattern.substr(at, position - at);
        name += match->str().back() == 'd' ? padded(number, *match) : "%";
        at = position + static_cast<std::size_t>(match->length());
    }
    return name + pattern.substr(at);
}
