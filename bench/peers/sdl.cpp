// SPDX-License-Identifier: MIT
// SDL 2's software renderer: SDL_RenderGeometry onto a surface in memory. It has no depth test, but a convex
// object is still drawn correctly, because its hidden faces are culled.
#include "peers/peer.h"

#include "display/frame_buffers.h"
#include "main_68k/viewer_state.h"
#include "pipeline/lighting.h"
#include "raster/texture_map.h"

#include <SDL.h>

#include <cstdlib>
#include <vector>

namespace {

SDL_Surface *canvas = nullptr;
SDL_Renderer *renderer = nullptr;
SDL_Texture *texture = nullptr;
std::vector<SDL_Vertex> corners;

void open(int width, int height) {
    if (renderer != nullptr) {
        SDL_DestroyTexture(texture);
        SDL_DestroyRenderer(renderer);
        SDL_FreeSurface(canvas);
    }
    canvas = SDL_CreateRGBSurfaceWithFormat(0, width, height, 32, SDL_PIXELFORMAT_ARGB8888);
    renderer = canvas != nullptr ? SDL_CreateSoftwareRenderer(canvas) : nullptr;
    SDL_Surface *map = SDL_CreateRGBSurfaceWithFormat(0, 256, 256, 32, SDL_PIXELFORMAT_ARGB8888);
    if (renderer == nullptr || map == nullptr) {
        std::abort();
    }
    auto *texels = static_cast<Uint32 *>(map->pixels);
    for (std::size_t i = 0; i < envmap_bytes; ++i) {
        texels[i] = 0xFF000000U | envmap[i] * 0x010101U;
    }
    texture = SDL_CreateTextureFromSurface(renderer, map);
    SDL_FreeSurface(map);
    SDL_SetTextureBlendMode(texture, SDL_BLENDMODE_NONE);
    SDL_SetRenderDrawBlendMode(renderer, SDL_BLENDMODE_NONE);
}

SDL_Vertex corner(std::uint16_t point, float grey) {
    const Vec3 &p = lwopoints3[point];
    const auto level = static_cast<Uint8>(grey);
    return {{p.x, p.y}, {level, level, level, 255}, {0.0F, 0.0F}};
}

void draw_lit(bool flat) {
    float colour = 0.0F;
    for_each_visible_triangle(
        [&colour, flat](const Vec3 &p, const Vec3 &q, const Vec3 &r) {
            if (flat) {
                colour = face_light(p, q, r);
            }
        },
        [&colour, flat](std::uint16_t a, std::uint16_t b, std::uint16_t c) {
            for (const std::uint16_t point : {a, b, c}) {
                corners.push_back(corner(point, flat ? colour : colour_of_point(point, vertex_light)));
            }
        });
    SDL_RenderGeometry(renderer, nullptr, corners.data(), static_cast<int>(corners.size()), nullptr, 0);
}

void draw_mapped(const HeapArray<Vec3> &records) {
    for_each_visible_triangle(
        [](const Vec3 &, const Vec3 &, const Vec3 &) {},
        [&records](std::uint16_t a, std::uint16_t b, std::uint16_t c) {
            for (const std::uint16_t point : {a, b, c}) {
                SDL_Vertex v = corner(point, 255.0F);
                v.tex_coord = {(records[point].x + 128.0F) / 256.0F, (records[point].y + 128.0F) / 256.0F};
                corners.push_back(v);
            }
        });
    SDL_RenderGeometry(renderer, texture, corners.data(), static_cast<int>(corners.size()), nullptr, 0);
}

void draw(int mode) {
    SDL_SetRenderDrawColor(renderer, 0, 0, 0, 255);
    SDL_RenderClear(renderer);
    corners.clear();
    switch (mode) {
    case mode_envmap:
        draw_mapped(lwonormals3);
        break;
    case mode_texturemap:
        draw_mapped(lwopoints2);
        break;
    case mode_lightsourced:
        draw_lit(true);
        break;
    default:
        draw_lit(false);
        break;
    }
    SDL_RenderFlush(renderer);
}

std::size_t drawn_pixels() {
    std::size_t pixels = 0;
    for (int y = 0; y < canvas->h; ++y) {
        const auto *row =
            reinterpret_cast<const Uint32 *>(static_cast<const char *>(canvas->pixels) + y * canvas->pitch);
        for (int x = 0; x < canvas->w; ++x) {
            pixels += (row[x] & 0xFFFFFFU) != 0 ? 1U : 0U;
        }
    }
    return pixels;
}

} // namespace

const Peer sdl_peer{"SDL 2", "no depth test, 32-bit colour", open, draw, drawn_pixels};
