// SPDX-License-Identifier: MIT
// The picture in the page, and the clock of passes that the page paces.
#include "platform/window/picture_window.h"

#include "platform/shared/real_clock.h"
#include "platform/web/page.h"
#include "platform/web/passes.h"

#include <array>
#include <chrono>
#include <utility>
#include <vector>

namespace host {

namespace {

using Clock = std::chrono::steady_clock;

/// Red, green, blue and 255 for each pixel of the picture. Sized when a picture is opened.
std::vector<std::uint32_t> true_colour;

/// When the last pass ended; where the clock starts before the first. Written by note_end_of_pass.
Clock::time_point end_of_pass;

/// Seconds of waiting that the present pass has still to count. Written by note_start_of_pass and
/// present_picture.
double wait_to_count = 0.0;

} // namespace

bool open_picture_window(Extent picture, const DisplayMode &mode, const std::string &) {
    true_colour.assign(static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height),
                       0xFF000000U);
    page_open_picture(picture.width, picture.height, mode.is_full_screen ? 0 : mode.factor);
    return true;
}

void close_picture_window() {
    page_close_picture();
    std::vector<std::uint32_t>().swap(true_colour);
}

void disconnect_display() {}

void present_picture(const BitMap &bitmap, const Palette &palette) {
    // The page takes the bytes in the order red, green, blue, which is the other one in a word.
    Palette reversed = palette;
    for (Colour &colour : reversed) {
        std::swap(colour[0], colour[2]);
    }
    expand_palette(bitmap, reversed, true_colour.data(), bitmap.width * 4);
    page_show_picture(true_colour.data(), bitmap.pixels.data(), palette.front().data());
    // The wait for the display is over here, where other hosts wait.
    clock_lag -= std::exchange(wait_to_count, 0.0);
}

void wait_for_display() {}

void make_room_for_requester() {}

void return_from_requester() {}

} // namespace host

extern "C" {

/// Called by the page: where a picture is in a room of this size, both in the display's own pixels, and 1 if
/// each of its pixels is a whole square. With a factor its pixels have that size where the room is large
/// enough, and with 0 the picture takes the room.
const int *web_place_picture(int width, int height, int factor, int room_width, int room_height) {
    static std::array<int, 5> place;
    const host::Extent picture{width, height};
    const host::Extent room{room_width, room_height};
    const host::Extent window = factor == 0 ? room : host::window_extent(picture, factor, room);
    const host::Placement in_window = host::place_picture(picture, window);
    place = {in_window.x + (room.width - window.width) / 2, in_window.y + (room.height - window.height) / 2,
             in_window.width, in_window.height, in_window.whole_factor};
    return place.data();
}
}

void web::note_start_of_pass(double waited) {
    const std::chrono::duration<double> since_last_pass = host::Clock::now() - host::end_of_pass;
    host::clock_lag += since_last_pass.count();
    host::wait_to_count = waited;
}

void web::note_end_of_pass() {
    host::end_of_pass = host::Clock::now();
}
