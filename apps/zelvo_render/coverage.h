// SPDX-License-Identifier: MIT
// Which pixels of a picture show the object, and which the background.
#pragma once

#include "platform/offscreen/host.h"

#include <cstdint>
#include <vector>

/// Remembers where faces were drawn. A picture shows the frame of the previous pass, so this is one pass late
/// on purpose.
class Coverage {
public:
    /// Has every frame keep its depths.
    Coverage();

    /// Must be called once per pass, when the frame of the previous pass is written to the screen.
    void advance();

    /// One value per pixel of this pass's picture: 0 for background, 255 otherwise. A pixel is background if
    /// it is black and no face was drawn there.
    std::vector<std::uint8_t> opacity(const offscreen::Picture &picture) const;

private:
    std::vector<bool> shown;
    std::vector<bool> drawn;
};
