// SPDX-License-Identifier: MIT
// Draws the picture into the window: a renderer of SDL and a texture of the picture's size.
#pragma once

#include "platform/shared/bitmap.h"
#include "platform/window/picture_placement.h"

#include <SDL_video.h>

namespace host {

/// Makes the renderer of a window and the texture for pictures of this size; false if one of them is refused.
bool make_renderer(SDL_Window *window, Extent picture_extent, Uint32 flags);

/// Makes the window's renderer take pictures of another size, or replaces it with one in plain memory; false
/// if that is refused as well.
bool change_picture_size(SDL_Window *window, Extent picture_extent);

/// Destroys the renderer, if there is one, with its textures.
void destroy_renderer();

/// Asks the renderer to wait for the display's refresh, or not to; whether it will wait.
bool wait_in_presenting(bool is_wanted);

/// The window's size in the display's own pixels, at least 1 each way.
Extent output_extent();

/// Makes the window black.
void show_black();

/// Changes the picture that is drawn from now on.
void fill_picture(const BitMap &bitmap, const Palette &palette);

/// Draws the picture and shows it; nothing if there is no renderer.
void show_picture();

} // namespace host
