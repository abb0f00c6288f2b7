// SPDX-License-Identifier: MIT
// Saves what the screen shows as a PNG file in the user's folder of pictures.
#pragma once

#include "platform/shared/state.h"

#include <string>
#include <vector>

namespace host {

/// The bytes of a PNG file of 8-bit palette indices with a palette of 256 colours.
std::vector<unsigned char> png_of(const BitMap &bitmap, const Palette &palette);

/// Saves the picture that a screen shows, with its texts, one pixel for each of its own. Its place is then in
/// the window's title for a while. A failure's reason goes to standard error and into a notice.
void save_picture(const MemoryScreen &screen);

} // namespace host
