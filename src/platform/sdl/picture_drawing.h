// SPDX-License-Identifier: MIT
// Draws the picture into the window with an SDL renderer and a texture of the picture's size.
#pragma once

#include "platform/shared/bitmap.h"
#include "platform/window/picture_placement.h"

#include <SDL_video.h>
#include <string>

namespace host {

/// Makes a window's renderer and the texture for pictures of this size; false if SDL refuses either.
bool make_renderer(SDL_Window *window, Extent picture_extent, Uint32 flags);

/// Changes the size of the pictures. If the renderer refuses the size, a software renderer replaces it; false
/// if that refuses it as well.
bool change_picture_size(SDL_Window *window, Extent picture_extent);

/// Destroys the renderer, if there is one, with its textures.
void destroy_renderer();

/// Asks the renderer to wait, or not to wait, for the display's refresh; returns whether it will.
bool wait_in_presenting(bool is_wanted);

/// The window's size in physical pixels, at least 1 each way.
Extent output_extent();

/// Makes the window black.
void show_black();

/// Replaces the picture that is drawn from now on.
void fill_picture(const BitMap &bitmap, const Palette &palette);

/// Draws a line of text over the picture from now on; an empty one takes it away.
void show_text_over_picture(const std::string &text);

/// Draws the picture and shows it; does nothing without a renderer.
void show_picture();

} // namespace host
