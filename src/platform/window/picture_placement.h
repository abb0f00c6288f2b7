// SPDX-License-Identifier: MIT
// Where a picture is in its window.
#pragma once

namespace host {

/// Width and height in pixels, both at least 1.
struct Extent {
    int width;
    int height;
};

/// A picture's place inside a window. The rest of the window is black.
struct Placement {
    int x;
    int y;
    int width;
    int height;
    /// How many window pixels a picture pixel is wide and high; 0 if the scale is a fraction.
    int whole_factor;
};

/// Centres a picture, scaled by the largest whole factor that fits. Where the window is smaller than the
/// picture, or a whole factor would leave more than a third of the window's height unused, the picture is
/// scaled to fit instead, with its aspect kept.
Placement place_picture(Extent picture, Extent window);

/// The size of a new window in which picture pixels are `factor` wide and high. If that does not fit the
/// room, the largest whole factor that fits is used, and if none does, the picture is scaled to fit.
Extent window_extent(Extent picture, int factor, Extent room);

} // namespace host
