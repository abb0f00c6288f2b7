// SPDX-License-Identifier: MIT
// Where a picture is in its window.
#pragma once

namespace host {

/// Width and height in pixels, both at least 1.
struct Extent {
    int width;
    int height;
};

/// A picture's place inside a window; black around it.
struct Placement {
    int x;
    int y;
    int width;
    int height;
    /// Each picture pixel is a square of this many window pixels; 0 when it is scaled by a fraction.
    int whole_factor;
};

/// Centres a picture, scaled by the largest whole factor that fits. Where the window is smaller than the
/// picture, or a whole factor would leave more than a third of the window's height unused, the picture is
/// scaled to fit instead, with its aspect kept.
Placement place_picture(Extent picture, Extent window);

/// The size of a new window for a picture whose pixels are squares of `factor`: less where the display has
/// not enough room, by whole factors as long as one fits, and at most the room itself.
Extent window_extent(Extent picture, int factor, Extent room);

} // namespace host
