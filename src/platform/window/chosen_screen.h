// SPDX-License-Identifier: MIT
// A screen that was chosen before the program asks for one, as by options of the command line.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace host {

/// The parts of a screen that were chosen; the others are those of the settings, or of a first start.
struct ChosenScreen {
    std::optional<std::uint32_t> mode_id;
    std::optional<int> width;
    std::optional<int> height;

    bool is_any() const { return mode_id || width || height; }
};

/// What was chosen for the first screen of this run. Written by the host's set-up; the first settings file
/// that is loaded or the first screen-mode requester takes it, whichever comes first.
extern ChosenScreen chosen_screen;

/// Takes the choice: nothing is chosen any more.
ChosenScreen take_chosen_screen();

/// The text of a settings file with the chosen mode and size in place of its own.
std::string with_screen(const std::string &settings, const ChosenScreen &chosen);

} // namespace host
