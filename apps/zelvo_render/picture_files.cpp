// SPDX-License-Identifier: MIT
// Writes PGM by hand, since it is a line of text and the pixels, and PNG with libpng.
#include "picture_files.h"

#include "atomic_file.h"
#include "failure.h"

#include <png.h>

void write_pgm(const std::string &path, const offscreen::Picture &picture) {
    AtomicFile file(path);
    std::fprintf(file.stream(), "P5\n%d %d\n255\n", picture.width, picture.height);
    std::fwrite(picture.pixels.data(), 1, picture.pixels.size(), file.stream());
    file.complete();
}

void write_png(const std::string &path, const offscreen::Picture &picture) {
    AtomicFile file(path);
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(picture.width);
    image.height = static_cast<png_uint_32>(picture.height);
    image.format = PNG_FORMAT_RGB_COLORMAP;
    image.colormap_entries = static_cast<png_uint_32>(picture.palette.size());
    if (png_image_write_to_stdio(&image, file.stream(), 0, picture.pixels.data(), picture.width,
                                 picture.palette.data()) == 0) {
        fail("cannot write " + path + ": " + image.message);
    }
    file.complete();
}
