// SPDX-License-Identifier: MIT
// A stream of uncompressed pictures for video encoders.
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
    /// The name "-" means standard output. The program's output then goes to standard error.
    explicit Video(const std::string &video_path);

    void add(const offscreen::Picture &picture);

    /// Finishes the file, or removes it if it has no picture.
    void complete();

private:
    std::string path;
    std::optional<AtomicFile> file;
    std::FILE *stream;
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> planes;
};
