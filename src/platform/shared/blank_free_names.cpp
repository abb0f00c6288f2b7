// SPDX-License-Identifier: MIT
// Writes white space as a percent sign and two digits, and reads it back.
#include "platform/shared/blank_free_names.h"

#include <array>
#include <optional>

namespace host {

namespace {

/// A character and its escaped form.
struct Form {
    char character;
    const char *text;
};

constexpr std::size_t form_length = 3;

/// The white space at which formatted input ends a name, and the sign that the forms begin with.
constexpr std::array<Form, 7> forms{{
    {' ', "%20"},
    {'\t', "%09"},
    {'\n', "%0A"},
    {'\v', "%0B"},
    {'\f', "%0C"},
    {'\r', "%0D"},
    {'%', "%25"},
}};

/// The character whose form begins at this place of a name.
std::optional<char> character_at(const std::string &name, std::size_t place) {
    for (const Form &form : forms) {
        if (name.compare(place, form_length, form.text) == 0) {
            return form.character;
        }
    }
    return std::nullopt;
}

/// What to write for the character at this place of a name.
std::string written_at(const std::string &name, std::size_t place) {
    const char character = name[place];
    const bool stays = character == '%' && !character_at(name, place);
    for (const Form &form : forms) {
        if (form.character == character && !stays) {
            return form.text;
        }
    }
    return {character};
}

} // namespace

std::string without_blanks(const std::string &name) {
    std::string written;
    for (std::size_t place = 0; place < name.size(); ++place) {
        written += written_at(name, place);
    }
    return written;
}

std::string with_blanks(const std::string &name) {
    std::string read;
    for (std::size_t place = 0; place < name.size();) {
        const std::optional<char> character = character_at(name, place);
        read += character.value_or(name[place]);
        place += character ? form_length : 1;
    }
    return read;
}

} // namespace host
