// SPDX-License-Identifier: MIT
// Which pixels of a picture show the object, and which the background.
#pragma once

#include "platform/offscreen/host.h"

#include <cstdint>
#include <vector>

/// Remembers where faces were drawn. A picture shows the frame of the pass before, so this is one pass late
/// on purpose.
class Coverage {
public:
    /// To be called once per pass, when the frame of the pass before is written to the screen.
    void advance();

    /// One value per pixel of a picture of this pass: 0 where it is background, 255 elsewhere. Background is
    /// what is black and has no face.
    std::vector<std::uint8_t> opacity(const offscreen::Picture &picture) const;

private:
    std::vector<bool> shown;
    std::vector<bool> drawn;
};
