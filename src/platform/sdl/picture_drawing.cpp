// SPDX-License-Identifier: MIT
// Enlarges the picture by whole factors where it can, and smoothly elsewhere.
#include "platform/sdl/picture_drawing.h"

#include "platform/sdl/banner.h"

#include <SDL.h>
#include <algorithm>

namespace host {

namespace {

/// The window's renderer and the texture that holds the picture; null without a window.
SDL_Renderer *renderer = nullptr;
SDL_Texture *texture = nullptr;

/// The picture with each pixel enlarged to a square of side `enlarged_factor`. Pictures at a fractional scale
/// are made from it. Created when it is first needed.
SDL_Texture *enlarged = nullptr;
int enlarged_factor = 0;

/// Size of the picture, in pixels.
Extent picture{1, 1};

bool is_software_renderer() {
    SDL_RendererInfo info{};
    return SDL_GetRendererInfo(renderer, &info) == 0 && (info.flags & SDL_RENDERER_SOFTWARE) != 0;
}

/// A texture; null if the renderer refuses this size. It has no alpha, and neither has a window, so that the
/// software renderer need not convert its pixels.
SDL_Texture *make_texture(SDL_TextureAccess access, Extent size, SDL_ScaleMode scale_mode) {
    SDL_Texture *made = SDL_CreateTexture(renderer, SDL_PIXELFORMAT_RGB888, access, size.width, size.height);
    if (made != nullptr) {
        SDL_SetTextureScaleMode(made, scale_mode);
    }
    return made;
}

SDL_Texture *make_picture_texture() {
    return make_texture(SDL_TEXTUREACCESS_STREAMING, picture, SDL_ScaleModeNearest);
}

void black_out() {
    SDL_SetRenderDrawColor(renderer, 0, 0, 0, SDL_ALPHA_OPAQUE);
    SDL_RenderClear(renderer);
}

void destroy_textures() {
    set_banner(renderer, "");
    SDL_DestroyTexture(enlarged);
    SDL_DestroyTexture(texture);
    enlarged = nullptr;
    enlarged_factor = 0;
    texture = nullptr;
}

/// Draws the picture into `enlarged` with whole squares, at least as large as the window shows it. Null if
/// the renderer cannot hold a texture of that size.
SDL_Texture *enlarge(const Placement &placement) {
    const int factor = (placement.width + picture.width - 1) / picture.width;
    if (factor != enlarged_factor) {
        SDL_DestroyTexture(enlarged);
        enlarged = make_texture(SDL_TEXTUREACCESS_TARGET, {picture.width * factor, picture.height * factor},
                                SDL_ScaleModeLinear);
        enlarged_factor = factor;
    }
    if (enlarged == nullptr || SDL_SetRenderTarget(renderer, enlarged) != 0) {
        return nullptr;
    }
    SDL_SetTextureScaleMode(texture, SDL_ScaleModeNearest);
    SDL_RenderCopy(renderer, texture, nullptr, nullptr);
    SDL_SetRenderTarget(renderer, nullptr);
    return enlarged;
}

void draw_picture() {
    const Extent output = output_extent();
    const Placement placement = place_picture(picture, output);
    const SDL_Rect target{placement.x, placement.y, placement.width, placement.height};
    SDL_Texture *source = placement.whole_factor == 0 ? enlarge(placement) : nullptr;
    if (source == nullptr) {
        SDL_SetTextureScaleMode(texture,
                                placement.whole_factor == 0 ? SDL_ScaleModeLinear : SDL_ScaleModeNearest);
        source = texture;
    }
    // A picture that fills the window needs no black around it.
    if (placement.width < output.width || placement.height < output.height) {
        black_out();
    }
    SDL_RenderCopy(renderer, source, nullptr, &target);
}

} // namespace

bool make_renderer(SDL_Window *window, Extent picture_extent, Uint32 flags) {
    picture = picture_extent;
    renderer = SDL_CreateRenderer(window, -1, flags);
    if (renderer == nullptr) {
        return false;
    }
    texture = make_picture_texture();
    if (texture == nullptr) {
        destroy_renderer();
        return false;
    }
    return true;
}

bool change_picture_size(SDL_Window *window, Extent picture_extent) {
    picture = picture_extent;
    destroy_textures();
    texture = make_picture_texture();
    if (texture != nullptr) {
        return true;
    }
    destroy_renderer();
    return make_renderer(window, picture_extent, SDL_RENDERER_SOFTWARE);
}

void destroy_renderer() {
    destroy_textures();
    SDL_DestroyRenderer(renderer);
    renderer = nullptr;
}

bool wait_in_presenting(bool is_wanted) {
    if (!is_wanted) {
        SDL_RenderSetVSync(renderer, 0);
        return false;
    }
    return !is_software_renderer() && SDL_RenderSetVSync(renderer, 1) == 0;
}

Extent output_extent() {
    Extent output{1, 1};
    SDL_GetRendererOutputSize(renderer, &output.width, &output.height);
    return {std::max(output.width, 1), std::max(output.height, 1)};
}

void show_black() {
    black_out();
    SDL_RenderPresent(renderer);
}

void fill_picture(const BitMap &bitmap, const Palette &palette) {
    void *pixels = nullptr;
    int bytes_per_row = 0;
    if (SDL_LockTexture(texture, nullptr, &pixels, &bytes_per_row) != 0) {
        return;
    }
    expand_palette(bitmap, palette, static_cast<std::uint32_t *>(pixels), bytes_per_row);
    SDL_UnlockTexture(texture);
}

void show_text_over_picture(const std::string &text) {
    set_banner(renderer, text);
}

void show_picture() {
    if (texture != nullptr) {
        draw_picture();
        draw_banner(renderer);
        SDL_RenderPresent(renderer);
    }
}

} // namespace host
