// SPDX-License-Identifier: MIT
// Separates the options from the file names. Any word may be a file name, and the program's own template
// decides about some words, so no library parses them.
#include "command_line.h"

#include "help.h"
#include "main_68k/version.h"
#include "platform/posix/object_form.h"
#include "platform/shared/command_line.h"
#include "platform/shared/screen_size.h"
#include "settings/environment_map.h"
#include "shared/imported_object.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <strings.h>
#include <unistd.h>

namespace {

/// The mode that is a full screen, and the factors of windows, which are their modes' numbers.
constexpr std::uint32_t full_screen_mode = 0;
constexpr int smallest_factor = 1;
constexpr int largest_factor = 4;
constexpr char usual_factor[] = "2";

[[noreturn]] void print_and_exit(const std::string &text) {
    std::fputs(text.c_str(), stdout);
    std::exit(EXIT_SUCCESS);
}

[[noreturn]] void refuse(const std::string &what) {
    std::fprintf(stderr, "zelvo: %s (see zelvo --help)\n", what.c_str());
    std::exit(exit_misuse);
}

/// The whole text as a number within the bounds.
std::optional<int> number(const std::string &text, int lowest, int highest) {
    int value = 0;
    const char *end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    const bool is_number = error == std::errc{} && stop == end && value >= lowest && value <= highest;
    return is_number ? std::optional(value) : std::nullopt;
}

bool take_factor(const std::string &text, sdl::Setup &setup) {
    const std::optional<int> factor = number(text, smallest_factor, largest_factor);
    setup.screen.mode_id = factor;
    return factor.has_value();
}

bool take_size(const std::string &text, sdl::Setup &setup) {
    const std::size_t cross = std::min(text.find('x'), text.size());
    setup.screen.width = number(text.substr(0, cross), host::smallest_side, host::largest_side);
    setup.screen.height =
        number(text.substr(std::min(cross + 1, text.size())), host::smallest_side, host::largest_side);
    return setup.screen.width && setup.screen.height;
}

/// How an option gets its value: not at all; after "=" or not at all; after "=" or as the next word.
enum class Value { none, optional, required };

/// Whether a model of another format is converted first. Written by parse_command_line.
bool imports_objects = false;

/// An option, and what it does to the set-up; false if it cannot have this value, which is empty without one.
struct Option {
    std::string name;
    Value value;
    bool (*take)(const std::string &value, sdl::Setup &setup);
};

const std::array options{
    Option{"-h", Value::none, [](const std::string &, sdl::Setup &) -> bool { print_and_exit(help_text); }},
    Option{"--help", Value::none,
           [](const std::string &, sdl::Setup &) -> bool { print_and_exit(help_text); }},
    Option{
        "--version", Value::none,
        [](const std::string &, sdl::Setup &) -> bool { print_and_exit(std::string(shown_version) + "\n"); }},
    Option{"--fullscreen", Value::none,
           [](const std::string &, sdl::Setup &setup) {
               setup.screen.mode_id = full_screen_mode;
               return true;
           }},
    Option{"--window", Value::optional,
           [](const std::string &value, sdl::Setup &setup) { return take_factor(value, setup); }},
    Option{"--size", Value::required, take_size},
    Option{"--env", Value::required,
           [](const std::string &value, sdl::Setup &setup) {
               setup.env_folder = value;
               return !value.empty();
           }},
    Option{"--envarc", Value::required,
           [](const std::string &value, sdl::Setup &setup) {
               setup.envarc_folder = value;
               return !value.empty();
           }},
    Option{"--envmap", Value::required,
           [](const std::string &value, sdl::Setup &setup) {
               setup.stand_ins[default_envmap_filename] = value;
               return !value.empty();
           }},
    Option{"--import", Value::none,
           [](const std::string &, sdl::Setup &) {
               imports_objects = true;
               return true;
           }},
    Option{"--record", Value::required,
           [](const std::string &value, sdl::Setup &setup) {
               setup.recording = value;
               return !value.empty();
           }},
};

/// A word of the command line taken apart: the option that it is, and the value after its "=".
struct GivenOption {
    const Option *option;
    std::optional<std::string> value;
};

/// Nothing if the word is no option, or one that cannot have the value that comes with it.
std::optional<GivenOption> as_option(const std::string &word) {
    const std::size_t equals = word.find('=');
    const auto option = std::ranges::find(options, word.substr(0, equals), &Option::name);
    if (option == options.end() || (option->value == Value::none && equals != std::string::npos)) {
        return std::nullopt;
    }
    return GivenOption{&*option,
                       equals == std::string::npos ? std::nullopt : std::optional(word.substr(equals + 1))};
}

/// Whether the word is the template's keyword. The word after it is a file, even if it looks like an option.
bool is_keyword(const std::string &word) {
    return strcasecmp(word.c_str(), "FILE") == 0;
}

/// Replaces the model that the words name by the object that is made of it. Without one the program says what
/// is wrong with the model.
void import_model(std::vector<std::string> &words) {
    const std::optional<std::string> file = host::file_argument(words);
    if (!file || host::is_object_file(*file)) {
        return;
    }
    if (const std::optional<std::string> printed = import_object(*file, {}, true)) {
        words = {"FILE=" + printed->substr(0, printed->find('\n'))};
    }
}

} // namespace

sdl::Setup parse_command_line(int argc, char **argv) {
    sdl::Setup setup;
    std::vector<std::string> &words = setup.command_line;
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        const bool is_keywords_file = words.size() == 1 && is_keyword(words[0]);
        const std::optional<GivenOption> given = as_option(word);
        if (word == "--" && !is_keywords_file) {
            // After the keyword every word is a file, even the keyword itself.
            for (++i; i < argc; ++i) {
                words.push_back(std::string("FILE=") + argv[i]);
            }
        } else if (given && !is_keywords_file) {
            const bool has_default = given->option->value == Value::optional;
            std::string value = given->value.value_or(has_default ? usual_factor : "");
            if (given->option->value == Value::required && !given->value && ++i < argc) {
                value = argv[i];
            }
            if (!given->option->take(value, setup)) {
                std::string what = value.empty() ? "a value is missing: " : "impossible value: ";
                what += word;
                refuse(what.append(value.empty() ? "" : " ").append(value));
            }
        } else if (word.starts_with('-') && !is_keywords_file && access(word.c_str(), F_OK) != 0) {
            refuse("neither an option nor a file: " + word);
        } else {
            words.push_back(word);
        }
    }
    if (words == std::vector<std::string>{"?"}) {
        print_and_exit("FILE/A: the LightWave object to view\n");
    }
    if (imports_objects) {
        import_model(words);
    }
    setup.installed_files = {default_envmap_filename};
    return setup;
}
