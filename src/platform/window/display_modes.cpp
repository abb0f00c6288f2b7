// SPDX-License-Identifier: MIT
// The table of display modes.
#include "platform/window/display_modes.h"

#include <algorithm>
#include <array>

namespace host {

namespace {

constexpr std::array<DisplayMode, 5> modes{{
    {0, "Full screen", true, 2},
    {1, "Window, pixels as they are", false, 1},
    {2, "Window, pixels doubled", false, 2},
    {3, "Window, pixels tripled", false, 3},
    {4, "Window, pixels quadrupled", false, 4},
}};

} // namespace

std::span<const DisplayMode> display_modes() {
    return modes;
}

const DisplayMode *find_display_mode(std::uint32_t id) {
    const auto found =
        std::find_if(modes.begin(), modes.end(), [id](const DisplayMode &mode) { return mode.id == id; });
    return found == modes.end() ? nullptr : &*found;
}

} // namespace host
