// SPDX-License-Identifier: MIT
// An endless GIF animation, written picture by picture.
#pragma once

#include "atomic_file.h"
#include "platform/offscreen/host.h"

#include <optional>
#include <string>

struct GifFileType;

/// Opens its file at once. Size and palette may change from picture to picture.
class Animation {
public:
    explicit Animation(const std::string &path);

    /// Adds a picture, shown for a fiftieth of a second.
    void add(const offscreen::Picture &picture);

    /// Finishes the file, or removes it if it has no picture.
    void complete();

private:
    void begin(const offscreen::Picture &picture);

    AtomicFile file;
    GifFileType *gif = nullptr;
    std::optional<host::Palette> global_palette;
    int width = 0;
    int height = 0;
};
