// SPDX-License-Identifier: MIT
// Several pictures side by side in one.
#pragma once

#include "platform/offscreen/host.h"

#include <string>
#include <vector>

/// Collects pictures of one size, row by row; its palette is the first one's.
class ContactSheet {
public:
    ContactSheet(std::string sheet_path, int pictures_in_a_row);

    /// Adds a picture; one of another size than the first is cut or leaves black.
    void add(const offscreen::Picture &picture);

    /// Writes the sheet as a PNG; nothing if there is no picture.
    void complete() const;

private:
    std::string path;
    int columns;
    int width = 0;
    int height = 0;
    host::Palette palette{};
    std::vector<std::vector<std::uint8_t>> tiles;
};
