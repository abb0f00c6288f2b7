// SPDX-License-Identifier: MIT
// Separates the few options from the file names.
#include "command_line.h"

#include "main_68k/version.h"

#include <cstdio>
#include <cstdlib>
#include <strings.h>
#include <unistd.h>

namespace {

constexpr int exit_misuse = 2;

constexpr char help_text[] =
    "Usage: zelvo [OBJECT]\n"
    "\n"
    "Turns an object before your eyes. OBJECT is a LightWave object file (IFF form LWOB);\n"
    "without it a requester asks for one. The cursor keys steer, Esc quits; the README\n"
    "lists all keys.\n"
    "\n"
    "  -h, --help     print this help and exit\n"
    "  --version      print the version and exit\n"
    "  ?              print the template of the command line and exit\n"
    "  -- OBJECT      the object, whatever its name looks like\n";

/// The version tag without its marker.
std::string version_text() {
    const std::string tag = version_tag;
    return tag.substr(tag.find("Zelvo"));
}

[[noreturn]] void print_and_exit(const std::string &text) {
    std::fputs(text.c_str(), stdout);
    std::exit(EXIT_SUCCESS);
}

/// Handles a word that looks like an option: an option ends the process, any other word must name a file.
void take_option(const std::string &word) {
    if (word == "-h" || word == "--help") {
        print_and_exit(help_text);
    }
    if (word == "--version") {
        print_and_exit(version_text() + "\n");
    }
    if (access(word.c_str(), F_OK) != 0) {
        std::fprintf(stderr, "zelvo: neither an option nor a file: %s (see zelvo --help)\n", word.c_str());
        std::exit(exit_misuse);
    }
}

/// Whether the word is the template's keyword. The word after it is a file, even if it looks like an option.
bool is_keyword(const std::string &word) {
    return strcasecmp(word.c_str(), "FILE") == 0;
}

} // namespace

std::vector<std::string> program_words(int argc, char **argv) {
    std::vector<std::string> words;
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        if (words.size() == 1 && is_keyword(words[0])) {
            words.push_back(word);
        } else if (word == "--") {
            // After the keyword every word is a file, even the keyword itself.
            for (++i; i < argc; ++i) {
                words.push_back(std::string("FILE=") + argv[i]);
            }
        } else {
            if (word.starts_with('-')) {
                take_option(word);
            }
            words.push_back(word);
        }
    }
    if (words == std::vector<std::string>{"?"}) {
        print_and_exit("FILE/A: the LightWave object to view\n");
    }
    return words;
}
