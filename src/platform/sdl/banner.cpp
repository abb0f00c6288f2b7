// SPDX-License-Identifier: MIT
// A picture of the text in the font of all hosts, enlarged as far as it fits.
#include "platform/sdl/banner.h"

#include "platform/shared/bitmap.h"
#include "platform/shared/font_8x8.h"

#include <algorithm>

namespace host {

namespace {

/// Pixels around the text, and the part of the window's height that a pixel of the text is.
constexpr int margin = 4;
constexpr int pixels_of_height = 400;

/// The text's picture, and its size; null without a text.
SDL_Texture *banner = nullptr;
int width = 0;
int height = 0;

/// White text on black.
Palette greys() {
    Palette palette{};
    for (std::size_t level = 0; level < palette.size(); ++level) {
        palette[level].fill(static_cast<std::uint8_t>(level));
    }
    return palette;
}

BitMap drawn(const std::string &text) {
    BitMap bitmap(static_cast<int>(text.size()) * glyph_width + 2 * margin, glyph_height + 2 * margin);
    RastPort context{};
    initialise_context(context);
    context.BitMap = &bitmap;
    context.cp_x = margin;
    context.cp_y = margin + glyph_baseline;
    draw_text(context, text.c_str(), text.size());
    return bitmap;
}

} // namespace

void set_banner(SDL_Renderer *renderer, const std::string &text) {
    SDL_DestroyTexture(banner);
    banner = nullptr;
    if (renderer == nullptr || text.empty()) {
        return;
    }
    const BitMap bitmap = drawn(text);
    width = bitmap.width;
    height = bitmap.height;
    banner =
        SDL_CreateTexture(renderer, SDL_PIXELFORMAT_ARGB8888, SDL_TEXTUREACCESS_STREAMING, width, height);
    void *pixels = nullptr;
    int bytes_per_row = 0;
    if (banner != nullptr && SDL_LockTexture(banner, nullptr, &pixels, &bytes_per_row) == 0) {
        expand_palette(bitmap, greys(), static_cast<std::uint32_t *>(pixels), bytes_per_row);
        SDL_UnlockTexture(banner);
    }
}

void draw_banner(SDL_Renderer *renderer) {
    int output_width = 0;
    int output_height = 0;
    if (banner == nullptr || SDL_GetRendererOutputSize(renderer, &output_width, &output_height) != 0) {
        return;
    }
    const int factor = std::max(std::min(output_width / width, output_height / pixels_of_height), 1);
    const SDL_Rect target{0, output_height - height * factor, width * factor, height * factor};
    SDL_RenderCopy(renderer, banner, nullptr, &target);
}

} // namespace host
