// SPDX-License-Identifier: MIT
// Reads the depth buffer, which holds 0 where no face was drawn.
#include "coverage.h"

#include "display/frame_buffers.h"
#include "main_68k/viewer_state.h"

#include <cstddef>

Coverage::Coverage() {
    keeps_depths = true;
}

void Coverage::advance() {
    shown.swap(drawn);
    drawn.assign(frame_pixels(), false);
    // The other modes draw no faces and leave the depth buffer as it was.
    if (viewer.obj_style < mode_envmap || viewer.obj_style > mode_zlight) {
        return;
    }
    for (std::size_t i = 0; i < drawn.size(); ++i) {
        drawn[i] = zbuf[i] != 0;
    }
}

std::vector<std::uint8_t> Coverage::opacity(const offscreen::Picture &picture) const {
    std::vector<std::uint8_t> values(picture.pixels.size());
    // After a change of the size there is no frame of the previous pass.
    const bool is_known = shown.size() == values.size();
    for (std::size_t i = 0; i < values.size(); ++i) {
        values[i] = picture.pixels[i] != 0 || (is_known && shown[i]) ? 255 : 0;
    }
    return values;
}
