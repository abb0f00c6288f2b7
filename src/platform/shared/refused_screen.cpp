// SPDX-License-Identifier: MIT
// Looks up a refused value in the settings file.
#include "platform/shared/refused_screen.h"

#include "platform/shared/screen_size.h"

#include <cstdio>
#include <cstdlib>
#include <memory>

namespace host {

namespace {

/// Reads a line, without its end; false at the end of the file.
bool read_line(std::FILE *file, std::string &line) {
    line.clear();
    int character = std::getc(file);
    if (character == EOF) {
        return false;
    }
    for (; character != EOF && character != '\n'; character = std::getc(file)) {
        line += static_cast<char>(character);
    }
    return true;
}

/// The start of a message: the line of the settings file that has this value; empty if none does.
std::string place_of_value(const std::string &path, const std::string &label, std::int32_t value) {
    const std::optional<int> line = line_of_value(path, label, value);
    return line ? path + ":" + std::to_string(*line) + ": " : "";
}

bool report_impossible_side(const std::string &settings_path, const std::string &name, std::int32_t side) {
    if (is_possible_side(side)) {
        return false;
    }
    std::fprintf(stderr, "zelvo: %sno screen has a %s of %ld, only of %ld to %ld\n",
                 place_of_value(settings_path, name + ":", side).c_str(), name.c_str(),
                 static_cast<long>(side), static_cast<long>(smallest_side), static_cast<long>(largest_side));
    return true;
}

} // namespace

std::optional<int> line_of_value(const std::string &path, const std::string &label, std::int32_t value) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE *)> file(std::fopen(path.c_str(), "r"), std::fclose);
    std::string text;
    for (int line = 1; file != nullptr && read_line(file.get(), text); ++line) {
        // Read as formatted input reads it: a number that is too long loses its high bits.
        if (text.starts_with(label) &&
            static_cast<std::int32_t>(std::strtol(text.c_str() + label.size(), nullptr, 10)) == value) {
            return line;
        }
    }
    return std::nullopt;
}

void report_unknown_mode(const std::string &settings_path, std::int32_t mode_id) {
    std::fprintf(stderr, "zelvo: %sno display mode %ld\n",
                 place_of_value(settings_path, "ModeID:", mode_id).c_str(), static_cast<long>(mode_id));
}

bool report_impossible_sides(const std::string &settings_path, std::int32_t width, std::int32_t height) {
    const bool is_width = report_impossible_side(settings_path, "width", width);
    const bool is_height = report_impossible_side(settings_path, "height", height);
    return is_width || is_height;
}

} // namespace host
