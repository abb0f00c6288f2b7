// SPDX-License-Identifier: MIT
// Reads PNG with libpng, GIF with giflib, and PGM by hand.
#include "picture_reading.h"

#include <csetjmp>
#include <cstdio>
#include <cstring>
#include <gif_lib.h>
#include <gtest/gtest.h>
#include <memory>
#include <png.h>

namespace {

struct CloseFile {
    void operator()(std::FILE *file) const { std::fclose(file); }
};

std::vector<host::Colour> colours_of(const ColorMapObject *map) {
    std::vector<host::Colour> colours;
    for (int i = 0; map != nullptr && i < map->ColorCount; ++i) {
        const GifColorType &colour = map->Colors[i];
        colours.push_back({colour.Red, colour.Green, colour.Blue});
    }
    return colours;
}

/// The number of repetitions, if this is an animation's loop extension.
void find_repetitions(const ExtensionBlock *blocks, int count, int &repetitions) {
    for (int i = 0; i + 1 < count; ++i) {
        const ExtensionBlock &name = blocks[i];
        const ExtensionBlock &data = blocks[i + 1];
        if (name.Function == APPLICATION_EXT_FUNC_CODE && name.ByteCount == 11 &&
            std::memcmp(name.Bytes, "NETSCAPE2.0", 11) == 0 && data.ByteCount == 3 && data.Bytes[0] == 1) {
            repetitions = data.Bytes[1] | data.Bytes[2] << 8;
        }
    }
}

template <typename Picture>
Picture read_transparent_png(const std::string &path, png_uint_32 format) {
    Picture picture;
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_file(&image, path.c_str()) == 0 || image.format != format) {
        ADD_FAILURE() << path << " is not a PNG with opacity";
        png_image_free(&image);
        return picture;
    }
    picture.width = static_cast<int>(image.width);
    picture.height = static_cast<int>(image.height);
    picture.pixels.resize(std::size_t{image.width} * image.height);
    EXPECT_NE(png_image_finish_read(&image, nullptr, picture.pixels.data(), 0, nullptr), 0) << path;
    return picture;
}

} // namespace

IndexedPicture read_png(const std::string &path) {
    IndexedPicture picture;
    const std::unique_ptr<std::FILE, CloseFile> file(std::fopen(path.c_str(), "rb"));
    if (file == nullptr) {
        ADD_FAILURE() << "no file " << path;
        return picture;
    }
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    if (setjmp(png_jmpbuf(png)) != 0) {
        ADD_FAILURE() << path << " is not a sound PNG";
        png_destroy_read_struct(&png, &info, nullptr);
        return {};
    }
    png_init_io(png, file.get());
    png_read_png(png, info, PNG_TRANSFORM_IDENTITY, nullptr);
    EXPECT_EQ(png_get_color_type(png, info), PNG_COLOR_TYPE_PALETTE) << path;
    EXPECT_EQ(png_get_bit_depth(png, info), 8) << path;
    picture.width = static_cast<int>(png_get_image_width(png, info));
    picture.height = static_cast<int>(png_get_image_height(png, info));
    png_colorp colours = nullptr;
    int colour_count = 0;
    png_get_PLTE(png, info, &colours, &colour_count);
    for (int i = 0; i < colour_count; ++i) {
        picture.palette.push_back({colours[i].red, colours[i].green, colours[i].blue});
    }
    png_bytepp rows = png_get_rows(png, info);
    for (int y = 0; y < picture.height; ++y) {
        picture.pixels.insert(picture.pixels.end(), rows[y], rows[y] + picture.width);
    }
    png_destroy_read_struct(&png, &info, nullptr);
    return picture;
}

ColourPicture read_colour_png(const std::string &path) {
    return read_transparent_png<ColourPicture>(path, PNG_FORMAT_RGBA);
}

GreyPicture read_grey_png(const std::string &path) {
    return read_transparent_png<GreyPicture>(path, PNG_FORMAT_GA);
}

AnimationFile read_gif(const std::string &path) {
    AnimationFile animation;
    int error = 0;
    GifFileType *gif = DGifOpenFileName(path.c_str(), &error);
    if (gif == nullptr || DGifSlurp(gif) != GIF_OK) {
        ADD_FAILURE() << path << " is not a sound GIF";
        return animation;
    }
    animation.width = gif->SWidth;
    animation.height = gif->SHeight;
    for (int i = 0; i < gif->ImageCount; ++i) {
        const SavedImage &saved = gif->SavedImages[i];
        find_repetitions(saved.ExtensionBlocks, saved.ExtensionBlockCount, animation.repetitions);
        const GifImageDesc &place = saved.ImageDesc;
        AnimationPicture next;
        next.left = place.Left;
        next.top = place.Top;
        next.has_own_palette = place.ColorMap != nullptr;
        GraphicsControlBlock control{};
        if (DGifSavedExtensionToGCB(gif, i, &control) == GIF_OK) {
            next.delay = control.DelayTime;
            next.is_cleared_afterwards = control.DisposalMode == DISPOSE_BACKGROUND;
            next.has_transparency = control.TransparentColor != NO_TRANSPARENT_COLOR;
        }
        next.picture = {place.Width,
                        place.Height,
                        colours_of(next.has_own_palette ? place.ColorMap : gif->SColorMap),
                        {saved.RasterBits, saved.RasterBits + place.Width * place.Height}};
        animation.pictures.push_back(std::move(next));
    }
    find_repetitions(gif->ExtensionBlocks, gif->ExtensionBlockCount, animation.repetitions);
    DGifCloseFile(gif, &error);
    return animation;
}

IndexedPicture read_pgm(const std::string &bytes) {
    IndexedPicture picture;
    int header = 0;
    if (std::sscanf(bytes.c_str(), "P5\n%d %d\n255%n", &picture.width, &picture.height, &header) != 2 ||
        header == 0 || bytes[static_cast<std::size_t>(header)] != '\n') {
        ADD_FAILURE() << "not a PGM";
        return {};
    }
    picture.pixels.assign(bytes.begin() + header + 1, bytes.end());
    EXPECT_EQ(picture.pixels.size(), static_cast<std::size_t>(picture.width * picture.height));
    return picture;
}
