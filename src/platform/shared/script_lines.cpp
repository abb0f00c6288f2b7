// SPDX-License-Identifier: MIT
// Writes what read_script reads.
#include "platform/shared/script_lines.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>

namespace host {

namespace {

std::string code(UWORD value) {
    std::array<char, 8> text{};
    std::snprintf(text.data(), text.size(), "0x%02X", static_cast<unsigned>(value));
    return text.data();
}

/// A character that can be seen, in ASCII, is its own word.
std::string key(UWORD character) {
    return character > ' ' && character < 0x7F ? std::string(1, static_cast<char>(character))
                                               : code(character);
}

std::string event_words(const IntuiMessage &event) {
    switch (event.Class) {
    case IDCMP_VANILLAKEY:
        return "key " + key(event.Code);
    case IDCMP_RAWKEY:
        return "rawkey " + code(event.Code);
    case IDCMP_MOUSEMOVE:
        return "move " + std::to_string(event.MouseX) + " " + std::to_string(event.MouseY);
    default:
        return event.Code == SELECTDOWN ? "button left" : "button right";
    }
}

} // namespace

std::string event_line(int pass, const IntuiMessage &event) {
    return std::to_string(pass) + " " + event_words(event) + "\n";
}

std::string file_answer_line(const std::string &drawer, const std::string &file) {
    return "answer file " + script_word(drawer) + " " + script_word(file) + "\n";
}

std::string mode_answer_line(const ScreenModeRequester &requester) {
    return "answer mode " + std::to_string(requester.sm_DisplayID) + " " +
           std::to_string(static_cast<LONG>(requester.sm_DisplayWidth)) + " " +
           std::to_string(static_cast<LONG>(requester.sm_DisplayHeight)) + "\n";
}

std::string file_line(const std::string &name, const std::string &path) {
    return "file " + script_word(name) + " " + script_word(path) + "\n";
}

std::string settings_lines(const std::string &volume, const std::string &settings) {
    std::string small_name = volume;
    for (char &letter : small_name) {
        letter = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
    }
    std::string lines;
    for (std::size_t at = 0; at <= settings.size();) {
        const std::size_t end = std::min(settings.find('\n', at), settings.size());
        lines += small_name + " " + settings.substr(at, end - at) + "\n";
        at = end + 1;
    }
    return lines;
}

std::string script_word(const std::string &text) {
    return text.empty() || text.front() == '"' ? '"' + text + '"' : text;
}

} // namespace host
