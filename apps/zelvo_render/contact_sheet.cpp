// SPDX-License-Identifier: MIT
// Lays pictures out in rows with a gap between them.
#include "contact_sheet.h"

#include "picture_files.h"

#include <algorithm>
#include <cstddef>

namespace {

/// The width in pixels of the gaps between and around pictures, and their brightness.
constexpr int gap = 4;
constexpr std::uint8_t gap_brightness = 48;

} // namespace

ContactSheet::ContactSheet(std::string sheet_path, int pictures_in_a_row)
    : path(std::move(sheet_path)), columns(pictures_in_a_row) {}

void ContactSheet::add(const offscreen::Picture &picture) {
    if (tiles.empty()) {
        width = picture.width;
        height = picture.height;
        palette = picture.palette;
    }
    std::vector<std::uint8_t> tile(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    const int copied = std::min(width, picture.width);
    for (std::ptrdiff_t row = 0; row < std::min(height, picture.height); ++row) {
        std::copy_n(picture.pixels.begin() + row * picture.width, copied, tile.begin() + row * width);
    }
    tiles.push_back(std::move(tile));
}

void ContactSheet::complete() const {
    if (tiles.empty()) {
        return;
    }
    const int count = static_cast<int>(tiles.size());
    const int used_columns = std::min(columns, count);
    const int rows = (count + columns - 1) / columns;
    const int sheet_width = gap + used_columns * (width + gap);
    const int sheet_height = gap + rows * (height + gap);
    std::vector<std::uint8_t> sheet(
        static_cast<std::size_t>(sheet_width) * static_cast<std::size_t>(sheet_height), gap_brightness);
    for (int i = 0; i < count; ++i) {
        const std::ptrdiff_t left = gap + std::ptrdiff_t{i % columns} * (width + gap);
        const std::ptrdiff_t top = gap + std::ptrdiff_t{i / columns} * (height + gap);
        const std::vector<std::uint8_t> &tile = tiles[static_cast<std::size_t>(i)];
        for (std::ptrdiff_t row = 0; row < height; ++row) {
            std::copy_n(tile.begin() + row * width, width, sheet.begin() + (top + row) * sheet_width + left);
        }
    }
    write_png(path, {0, sheet_width, sheet_height, sheet, palette});
}
