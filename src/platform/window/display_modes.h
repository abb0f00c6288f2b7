// SPDX-License-Identifier: MIT
// The display modes of a host with a window, by the numbers that settings files keep.
#pragma once

#include <cstdint>
#include <span>

namespace host {

/// A way to show a screen.
struct DisplayMode {
    /// Kept in settings files, so it never changes.
    std::uint32_t id;
    /// What the user chooses it by.
    const char *name;
    bool is_full_screen;
    /// The side of a picture pixel in screen pixels, in a window that opens; for full screen, in the window
    /// that the user gets on leaving it.
    int factor;
};

/// What a first start suggests: a window that fits every display, from which F11 leads to full screen.
constexpr std::uint32_t first_mode_id = 2;

/// All modes, in the order in which the user sees them.
std::span<const DisplayMode> display_modes();

/// The mode of this number, null if there is none.
const DisplayMode *find_display_mode(std::uint32_t id);

} // namespace host
