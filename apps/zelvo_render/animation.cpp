// SPDX-License-Identifier: MIT
// Writes an animation with giflib.
#include "animation.h"

#include "failure.h"

#include <algorithm>
#include <array>
#include <gif_lib.h>
#include <memory>
#include <vector>

namespace {

/// How long a picture is shown, in hundredths of a second.
constexpr int picture_delay = 2;

/// The place in the file header of the animation's size, two little-endian 16-bit numbers.
constexpr long size_position = 6;

struct FreeColourMap {
    void operator()(ColorMapObject *map) const { GifFreeMapObject(map); }
};
using ColourMap = std::unique_ptr<ColorMapObject, FreeColourMap>;

ColourMap make_colour_map(const host::Palette &palette) {
    std::array<GifColorType, 256> colours{};
    for (std::size_t i = 0; i < colours.size(); ++i) {
        colours[i] = {palette[i][0], palette[i][1], palette[i][2]};
    }
    return ColourMap(GifMakeMapObject(static_cast<int>(colours.size()), colours.data()));
}

int write_bytes(GifFileType *gif, const GifByteType *bytes, int count) {
    auto *stream = static_cast<std::FILE *>(gif->UserData);
    return static_cast<int>(std::fwrite(bytes, 1, static_cast<std::size_t>(count), stream));
}

void check(int result) {
    if (result != GIF_OK) {
        fail("cannot write the animation");
    }
}

void put_endless_loop(GifFileType *gif) {
    check(EGifPutExtensionLeader(gif, APPLICATION_EXT_FUNC_CODE));
    check(EGifPutExtensionBlock(gif, 11, "NETSCAPE2.0"));
    const std::array<GifByteType, 3> repeat_for_ever{1, 0, 0};
    check(EGifPutExtensionBlock(gif, static_cast<int>(repeat_for_ever.size()), repeat_for_ever.data()));
    check(EGifPutExtensionTrailer(gif));
}

void put_delay(GifFileType *gif) {
    GraphicsControlBlock control{};
    control.DisposalMode = DISPOSE_BACKGROUND;
    control.DelayTime = picture_delay;
    control.TransparentColor = NO_TRANSPARENT_COLOR;
    std::array<GifByteType, 4> extension{};
    EGifGCBToExtension(&control, extension.data());
    check(
        EGifPutExtension(gif, GRAPHICS_EXT_FUNC_CODE, static_cast<int>(extension.size()), extension.data()));
}

void put_little_endian(std::FILE *stream, int value) {
    std::fputc(value & 0xFF, stream);
    std::fputc(value >> 8 & 0xFF, stream);
}

} // namespace

Animation::Animation(const std::string &path) : file(path) {}

void Animation::begin(const offscreen::Picture &picture) {
    int error = 0;
    gif = EGifOpen(file.stream(), write_bytes, &error);
    if (gif == nullptr) {
        fail("no memory for the animation");
    }
    EGifSetGifVersion(gif, true);
    global_palette = picture.palette;
    check(
        EGifPutScreenDesc(gif, picture.width, picture.height, 8, 0, make_colour_map(picture.palette).get()));
    put_endless_loop(gif);
}

void Animation::add(const offscreen::Picture &picture) {
    if (gif == nullptr) {
        begin(picture);
    }
    width = std::max(width, picture.width);
    height = std::max(height, picture.height);
    put_delay(gif);
    const ColourMap own_palette =
        picture.palette == *global_palette ? nullptr : make_colour_map(picture.palette);
    // giflib forgets a picture's own palette, rather than freeing it, when the next picture has none.
    if (own_palette == nullptr && gif->Image.ColorMap != nullptr) {
        GifFreeMapObject(gif->Image.ColorMap);
        gif->Image.ColorMap = nullptr;
    }
    // giflib checks with this size whether a frame is inside the animation.
    gif->SWidth = width;
    gif->SHeight = height;
    check(EGifPutImageDesc(gif, 0, 0, picture.width, picture.height, false, own_palette.get()));
    std::vector<GifPixelType> line;
    for (int row = 0; row < picture.height; ++row) {
        const auto start = picture.pixels.begin() + std::ptrdiff_t{row} * picture.width;
        line.assign(start, start + picture.width);
        check(EGifPutLine(gif, line.data(), picture.width));
    }
}

void Animation::complete() {
    if (gif == nullptr) {
        return;
    }
    int error = 0;
    check(EGifCloseFile(gif, &error));
    std::fseek(file.stream(), size_position, SEEK_SET);
    put_little_endian(file.stream(), width);
    put_little_endian(file.stream(), height);
    file.complete();
}
