// SPDX-License-Identifier: MIT
// The display modes of a host with a window. Settings files store their numbers.
#pragma once

#include <cstdint>
#include <span>

namespace host {

/// A way to show a screen.
struct DisplayMode {
    /// Stored in settings files, so it must never change.
    std::uint32_t id;
    /// The name that the user sees.
    const char *name;
    bool is_full_screen;
    /// How many screen pixels a picture pixel is wide and high when the window opens; for full screen, when
    /// the user leaves it.
    int factor;
};

/// The mode suggested at the first start: a window that fits every display. F11 makes it full screen.
constexpr std::uint32_t first_mode_id = 2;

/// All modes, in the order in which the user sees them.
std::span<const DisplayMode> display_modes();

/// The mode with this number; null if there is none.
const DisplayMode *find_display_mode(std::uint32_t id);

} // namespace host
