// SPDX-License-Identifier: MIT
// Scales by a whole factor if that uses the window well, otherwise by a fraction.
#include "platform/window/picture_placement.h"

#include <algorithm>
#include <cstdint>

namespace host {

namespace {

int largest_whole_factor(Extent picture, Extent window) {
    return std::min(window.width / picture.width, window.height / picture.height);
}

/// The largest extent with the picture's aspect that fits the window, at least one pixel each way.
Extent fit(Extent picture, Extent window) {
    const std::int64_t by_width = std::int64_t{window.width} * picture.height;
    const std::int64_t by_height = std::int64_t{window.height} * picture.width;
    if (by_width <= by_height) {
        return {window.width, std::max(1, static_cast<int>(by_width / picture.width))};
    }
    return {std::max(1, static_cast<int>(by_height / picture.height)), window.height};
}

} // namespace

Placement place_picture(Extent picture, Extent window) {
    int factor = largest_whole_factor(picture, window);
    if (3 * std::int64_t{picture.height} * factor < 2 * std::int64_t{window.height}) {
        factor = 0;
    }
    Extent shown{picture.width * factor, picture.height * factor};
    if (factor == 0) {
        shown = fit(picture, window);
        // For a window much higher than the picture's aspect, fitting may still give a whole factor.
        if (shown.width % picture.width == 0 &&
            shown.height == picture.height * (shown.width / picture.width)) {
            factor = shown.width / picture.width;
        }
    }
    return {(window.width - shown.width) / 2, (window.height - shown.height) / 2, shown.width, shown.height,
            factor};
}

Extent window_extent(Extent picture, int factor, Extent room) {
    const int fitting = std::min(factor, largest_whole_factor(picture, room));
    return fitting > 0 ? Extent{picture.width * fitting, picture.height * fitting} : fit(picture, room);
}

} // namespace host
