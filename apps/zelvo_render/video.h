// SPDX-License-Identifier: MIT
// A stream of uncompressed pictures, as video encoders read it.
#pragma once

#include "atomic_file.h"
#include "platform/offscreen/host.h"

#include <optional>
#include <string>
#include <vector>

/// Writes YUV4MPEG2: 50 pictures per second, no subsampling, BT.601 in the limited range. All pictures have
/// the size of the first.
class Video {
public:
    /// The name "-" means standard output. What the program prints then goes to standard error.
    explicit Video(const std::string &video_path);

    void add(const offscreen::Picture &picture);

    /// Finishes the file; one without a picture is not kept.
    void complete();

private:
    std::string path;
    std::optional<AtomicFile> file;
    std::FILE *stream;
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> planes;
};
