// SPDX-License-Identifier: MIT
// The picture by which a desktop shows the viewer and its requesters.
#pragma once

struct SDL_Window;

namespace host {

/// Gives the window the installed icon. Without an installed one the desktop shows its own.
void give_icon(SDL_Window *window);

/// Gives all requesters the installed icon.
void give_requesters_icon();

} // namespace host
