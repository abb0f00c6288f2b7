// SPDX-License-Identifier: MIT
// A line of text over the picture, where the window has no title.
#pragma once

#include <SDL_render.h>
#include <string>

namespace host {

/// What the banner says, in place of what it said; an empty text takes it away.
void set_banner(SDL_Renderer *renderer, const std::string &text);

/// Draws the banner at the bottom of what the renderer shows, if there is one.
void draw_banner(SDL_Renderer *renderer);

} // namespace host
