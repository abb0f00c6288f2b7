// SPDX-License-Identifier: MIT
// Looks words up in the catalogues of the toolkit and of the C library.
#include "platform/sdl/gtk_words.h"

#include <cstring>
#include <glib.h>
#include <libintl.h>

namespace host {

namespace {

constexpr char toolkit_catalogue[] = "gtk30";
constexpr char system_catalogue[] = "libc";

/// Text between these two characters runs from left to right and counts as one character for the text around
/// it.
constexpr char left_to_right_isolate[] = "\u2066";
constexpr char end_of_isolate[] = "\u2069";

} // namespace

std::string toolkit_words(const char *catalogued, const char *own) {
    const char *translated = g_dgettext(toolkit_catalogue, catalogued);
    return std::strcmp(translated, catalogued) == 0 ? own : translated;
}

std::string toolkit_words(const char *catalogued) {
    return toolkit_words(catalogued, catalogued);
}

std::string label_words(const char *catalogued, const char *own) {
    std::string words = toolkit_words(catalogued, own);
    for (const char *ending : {":", "\uFF1A", "\u00A0", "\u202F", " "}) {
        if (words.ends_with(ending)) {
            words.resize(words.size() - std::strlen(ending));
        }
    }
    return words;
}

std::string error_words(int error) {
    // Only the language of messages is the user's; the process's character set is not. The toolkit needs
    // UTF-8.
    bind_textdomain_codeset(system_catalogue, "UTF-8");
    return std::strerror(error);
}

std::string path_words(const std::string &path) {
    char *name = g_filename_display_name(path.c_str());
    std::string words = name;
    g_free(name);
    return words;
}

std::string size_words(int width, int height) {
    return left_to_right_isolate + std::to_string(width) + " \u00D7 " + std::to_string(height) +
           end_of_isolate;
}

} // namespace host
