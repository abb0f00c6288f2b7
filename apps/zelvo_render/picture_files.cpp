// SPDX-License-Identifier: MIT
// Writes PGM by hand, since it is a line of text and the pixels, and PNG with libpng.
#include "picture_files.h"

#include "output_file.h"

#include <csetjmp>
#include <png.h>

void write_pgm(const std::string &path, const offscreen::Picture &picture) {
    OutputFile file(path);
    std::fprintf(file.stream(), "P5\n%d %d\n255\n", picture.width, picture.height);
    std::fwrite(picture.pixels.data(), 1, picture.pixels.size(), file.stream());
    file.complete();
}

void write_png(const std::string &path, const offscreen::Picture &picture) {
    OutputFile file(path);
    std::array<png_color, 256> colours{};
    for (std::size_t i = 0; i < colours.size(); ++i) {
        const host::Colour &colour = picture.palette[i];
        colours[i] = {colour[0], colour[1], colour[2]};
    }
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png != nullptr ? png_create_info_struct(png) : nullptr;
    if (info == nullptr) {
        give_up("no memory for " + path);
    }
    // libpng reports errors by jumping here.
    if (setjmp(png_jmpbuf(png)) != 0) {
        give_up_on(path);
    }
    png_init_io(png, file.stream());
    png_set_IHDR(png, info, static_cast<png_uint_32>(picture.width), static_cast<png_uint_32>(picture.height),
                 8, PNG_COLOR_TYPE_PALETTE, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    png_set_PLTE(png, info, colours.data(), static_cast<int>(colours.size()));
    png_write_info(png, info);
    for (int row = 0; row < picture.height; ++row) {
        const std::size_t start = static_cast<std::size_t>(row) * static_cast<std::size_t>(picture.width);
        png_write_row(png, picture.pixels.data() + start);
    }
    png_write_end(png, info);
    png_destroy_write_struct(&png, &info);
    file.complete();
}
