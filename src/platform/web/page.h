// SPDX-License-Identifier: MIT
// What the page does for the host. Its functions are in page_calls.js, which passes them on to the page.
#pragma once

#include <cstdint>

extern "C" {

/// Shows a black picture of this size. `factor` is the side of its pixels in the page's own pixels; 0 makes
/// the picture as large as the page has room for.
void page_open_picture(int width, int height, int factor);

/// Takes the picture away.
void page_close_picture();

/// Shows the next picture, in the size of the open one: `pixels` has red, green, blue and 255 for each pixel,
/// `indices` the palette entry of each pixel, and `palette` red, green and blue of 256 entries. All three
/// stay where they are until the picture is closed.
void page_show_picture(const std::uint32_t *pixels, const std::uint8_t *indices, const std::uint8_t *palette);

/// Says that a text for the user is new.
void page_announce(const char *text);

/// Lets the user choose a file, one whose name ends in `suffix` or any other. Returns when the user has
/// answered: the path, which the caller frees, or null if the requester was cancelled.
char *page_ask_for_file(const char *title, const char *initial_path, const char *suffix);

/// Lets the user choose a mode and a size: `answer` holds the number of the mode, the width and the height.
/// The page knows the modes by their numbers. Returns when the user has answered; false if the requester was
/// cancelled, and then `answer` is as it was.
bool page_ask_for_mode(int *answer);

/// The size of a file in bytes, -1 if there is none of this name.
int page_file_size(const char *name);

/// Copies the bytes of a file that exists.
void page_read_file(const char *name, std::uint8_t *bytes);

/// Keeps a file, in the place of an older one of the name. Why it could not, or null; the caller frees it.
char *page_write_file(const char *name, const std::uint8_t *bytes, int size);
}
