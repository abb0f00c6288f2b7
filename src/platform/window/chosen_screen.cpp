// SPDX-License-Identifier: MIT
// Replaces the values of three lines of a settings file.
#include "platform/window/chosen_screen.h"

#include <array>
#include <sstream>
#include <utility>

namespace host {

ChosenScreen chosen_screen;

ChosenScreen take_chosen_screen() {
    return std::exchange(chosen_screen, {});
}

std::string with_screen(const std::string &settings, const ChosenScreen &chosen) {
    const std::array<std::pair<std::string, std::optional<std::int64_t>>, 3> values{{
        {"ModeID:", chosen.mode_id},
        {"width:", chosen.width},
        {"height:", chosen.height},
    }};
    std::string changed;
    std::istringstream lines(settings);
    for (std::string line; std::getline(lines, line);) {
        for (const auto &[label, value] : values) {
            if (value && line.starts_with(label)) {
                line = label + " " + std::to_string(*value);
            }
        }
        // The last line may have no end.
        changed += line + (lines.eof() ? "" : "\n");
    }
    return changed;
}

} // namespace host
