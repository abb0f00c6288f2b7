// SPDX-License-Identifier: MIT
// Passes every frame and picture to the writers that need it.
#include "outputs.h"

#include "failure.h"
#include "picture_files.h"
#include "picture_name.h"

#include <filesystem>

namespace {

constexpr char frame_name[] = "/%05d.pgm";

} // namespace

Outputs::Outputs(const Options &chosen) : options(chosen) {
    if (options.has_progress) {
        progress.emplace(options.passes, "pass");
    }
    if (options.chunky_folder) {
        std::error_code error;
        std::filesystem::create_directories(*options.chunky_folder, error);
        if (error) {
            fail("cannot make the folder " + *options.chunky_folder + ": " + error.message());
        }
    }
    if (options.is_transparent) {
        coverage.emplace();
    }
    if (options.gif) {
        animation.emplace(*options.gif);
    }
    if (options.sheet) {
        sheet.emplace(*options.sheet, options.sheet_columns);
    }
    if (options.video) {
        video.emplace(*options.video);
    }
}

void Outputs::take_frame(const offscreen::Picture &frame) {
    if (progress) {
        progress->advance_to(frame.pass);
    }
    if (coverage) {
        coverage->advance();
    }
    if (options.chunky_folder) {
        write_pgm(*options.chunky_folder + picture_name(frame_name, frame.pass), frame);
    }
    if (!options.has_texts) {
        write(frame);
    }
}

void Outputs::take_picture(const offscreen::Picture &picture) {
    if (options.has_texts) {
        write(picture);
    }
}

void Outputs::write(const offscreen::Picture &picture) {
    if (picture.pass < options.from || (picture.pass - options.from) % options.every != 0) {
        return;
    }
    if (options.png_pattern) {
        const std::string name = picture_name(*options.png_pattern, picture.pass);
        if (coverage) {
            write_png(name, picture, coverage->opacity(picture));
        } else {
            write_png(name, picture);
        }
    }
    if (animation) {
        animation->add(picture);
    }
    if (sheet) {
        sheet->add(picture);
    }
    if (video) {
        video->add(picture);
    }
}

void Outputs::complete() {
    if (progress) {
        progress->clear();
    }
    if (animation) {
        animation->complete();
    }
    if (sheet) {
        sheet->complete();
    }
    if (video) {
        video->complete();
    }
}
