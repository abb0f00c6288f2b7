// SPDX-License-Identifier: MIT
// Reads a typed size and computes how much memory such a screen needs.
#include "platform/sdl/typed_size.h"

#include "platform/shared/screen_size.h"

#include <algorithm>
#include <glib.h>
#include <sys/resource.h>
#include <unistd.h>

namespace host {

namespace {

/// The program's five frame buffers, of which the depth buffer has two bytes per pixel.
constexpr std::uint64_t frame_buffer_bytes = 6;

/// The screen's bitmap and its two other screen buffers.
constexpr std::uint64_t bitmap_bytes = 3;

/// The picture in true colour, which the window shows.
constexpr std::uint64_t texture_bytes = 4;

/// Whether this is white space or an invisible formatting character, such as a mark for the direction of
/// text.
bool is_invisible(gunichar character) {
    return g_unichar_isspace(character) != 0 || g_unichar_type(character) == G_UNICODE_FORMAT;
}

/// The text without invisible characters at its ends; nothing if it is not UTF-8.
std::optional<std::u32string> visible_part(const std::string &text) {
    if (g_utf8_validate(text.data(), static_cast<gssize>(text.size()), nullptr) == 0) {
        return std::nullopt;
    }
    std::u32string characters;
    for (const char *at = text.c_str(); *at != 0; at = g_utf8_next_char(at)) {
        characters.push_back(g_utf8_get_char(at));
    }
    const auto first = std::ranges::find_if_not(characters, is_invisible);
    characters.erase(characters.begin(), first);
    while (!characters.empty() && is_invisible(characters.back())) {
        characters.pop_back();
    }
    return characters;
}

} // namespace

std::optional<int> side_of_text(const std::string &text) {
    const std::optional<std::u32string> digits = visible_part(text);
    if (!digits) {
        return std::nullopt;
    }
    int side = 0;
    for (const char32_t digit : *digits) {
        const int value = g_unichar_digit_value(digit);
        if (value < 0) {
            return std::nullopt;
        }
        side = 10 * side + value;
        if (side > largest_side) {
            return std::nullopt;
        }
    }
    return is_possible_side(side) ? std::optional(side) : std::nullopt;
}

std::uint64_t memory_of_screen(int width, int height) {
    return static_cast<std::uint64_t>(width) * static_cast<std::uint64_t>(height) *
           (frame_buffer_bytes + bitmap_bytes + texture_bytes);
}

std::uint64_t memory_of_machine() {
    const auto pages = static_cast<std::uint64_t>(sysconf(_SC_PHYS_PAGES));
    const auto page_size = static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
    rlimit limit{};
    const bool is_limited = getrlimit(RLIMIT_AS, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY;
    return is_limited ? std::min<std::uint64_t>(pages * page_size, limit.rlim_cur) : pages * page_size;
}

} // namespace host
