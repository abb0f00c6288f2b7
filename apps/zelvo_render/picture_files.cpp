// SPDX-License-Identifier: MIT
// Writes PGM directly, since it is only a header and the pixels, and PNG with libpng.
#include "picture_files.h"

#include "atomic_file.h"
#include "failure.h"

#include <cstddef>
#include <png.h>
#include <vector>

namespace {

void write(const std::string &path, png_image &image, const void *pixels, int row_bytes,
           const void *palette) {
    AtomicFile file(path);
    if (png_image_write_to_stdio(&image, file.stream(), 0, pixels, row_bytes, palette) == 0) {
        fail("cannot write " + path + ": " + image.message);
    }
    file.complete();
}

png_image image_like(const offscreen::Picture &picture) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(picture.width);
    image.height = static_cast<png_uint_32>(picture.height);
    return image;
}

} // namespace

void write_pgm(const std::string &path, const offscreen::Picture &picture) {
    AtomicFile file(path);
    std::fprintf(file.stream(), "P5\n%d %d\n255\n", picture.width, picture.height);
    std::fwrite(picture.pixels.data(), 1, picture.pixels.size(), file.stream());
    file.complete();
}

void write_png(const std::string &path, const offscreen::Picture &picture) {
    png_image image = image_like(picture);
    image.format = PNG_FORMAT_RGB_COLORMAP;
    image.colormap_entries = static_cast<png_uint_32>(picture.palette.size());
    write(path, image, picture.pixels.data(), picture.width, picture.palette.data());
}

void write_png(const std::string &path, const offscreen::Picture &picture,
               std::span<const std::uint8_t> opacity) {
    png_image image = image_like(picture);
    image.format = PNG_FORMAT_RGBA;
    std::vector<std::uint8_t> colours;
    colours.reserve(4 * opacity.size());
    for (std::size_t i = 0; i < opacity.size(); ++i) {
        const host::Colour &colour = picture.palette[picture.pixels[i]];
        colours.insert(colours.end(), {colour[0], colour[1], colour[2], opacity[i]});
    }
    write(path, image, colours.data(), 4 * picture.width, nullptr);
}
