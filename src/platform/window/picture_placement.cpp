// SPDX-License-Identifier: MIT
// Scales by whole factors where that makes good use of the window, by fractions elsewhere.
#include "platform/window/picture_placement.h"

#include <algorithm>
#include <cstdint>

namespace host {

namespace {

int largest_whole_factor(Extent picture, Extent window) {
    return std::min(window.width / picture.width, window.height / picture.height);
}

/// The largest extent of the picture's aspect inside the window, at least one pixel each way.
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
        // Fitting may come out at a whole factor after all, if the picture is much wider than the window.
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
