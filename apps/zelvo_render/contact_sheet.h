// SPDX-License-Identifier: MIT
// Several pictures side by side in one picture.
#pragma once

#include "platform/offscreen/host.h"

#include <string>
#include <vector>

/// Collects pictures of one size, row by row; its palette is the first one's.
class ContactSheet {
public:
    ContactSheet(std::string sheet_path, int pictures_in_a_row);

    /// Adds a picture. If it is larger than the first it is cut; if it is smaller the rest is black.
    void add(const offscreen::Picture &picture);

    /// Writes the sheet as a PNG, or nothing if there are no pictures.
    void complete() const;

private:
    std::string path;
    int columns;
    int width = 0;
    int height = 0;
    host::Palette palette{};
    std::vector<std::vector<std::uint8_t>> tiles;
};
