// SPDX-License-Identifier: MIT
// Allegro 4: z-buffered triangles on an 8-bit bitmap in memory.
#include "peers/peer.h"

#include "display/frame_buffers.h"
#include "main_68k/viewer_state.h"
#include "pipeline/lighting.h"
#include "raster/texture_map.h"

#define ALLEGRO_NO_MAGIC_MAIN
#include <allegro.h>

#include <algorithm>
#include <cstdlib>

namespace {

BITMAP *canvas = nullptr;
BITMAP *texture = nullptr;
ZBUFFER *depths = nullptr;

void open(int width, int height) {
    if (canvas == nullptr) {
        if (install_allegro(SYSTEM_NONE, &errno, std::atexit) != 0) {
            std::abort();
        }
        set_color_depth(8);
        texture = create_bitmap_ex(8, 256, 256);
        for (int y = 0; y < 256; ++y) {
            std::copy_n(envmap.get() + y * 256, 256, texture->line[y]);
        }
    } else {
        destroy_zbuffer(depths);
        destroy_bitmap(canvas);
    }
    canvas = create_bitmap_ex(8, width, height);
    depths = create_zbuffer(canvas);
    set_zbuffer(depths);
}

V3D_f corner(std::uint16_t point) {
    const Vec3 &p = lwopoints3[point];
    return {p.x, p.y, eye_distance_of(p.z), 0.0F, 0.0F, 0};
}

void draw_lit(int type, bool flat) {
    int colour = 0;
    for_each_visible_triangle(
        [&colour, flat](const Vec3 &p, const Vec3 &q, const Vec3 &r) {
            if (flat) {
                colour = static_cast<int>(face_light(p, q, r));
            }
        },
        [&colour, type, flat](std::uint16_t a, std::uint16_t b, std::uint16_t c) {
            V3D_f corners[3] = {corner(a), corner(b), corner(c)};
            corners[0].c = flat ? colour : static_cast<int>(colour_of_point(a, vertex_light));
            corners[1].c = flat ? colour : static_cast<int>(colour_of_point(b, vertex_light));
            corners[2].c = flat ? colour : static_cast<int>(colour_of_point(c, vertex_light));
            triangle3d_f(canvas, type, nullptr, &corners[0], &corners[1], &corners[2]);
        });
}

void draw_mapped(const HeapArray<Vec3> &records) {
    for_each_visible_triangle([](const Vec3 &, const Vec3 &, const Vec3 &) {},
                              [&records](std::uint16_t a, std::uint16_t b, std::uint16_t c) {
                                  V3D_f corners[3] = {corner(a), corner(b), corner(c)};
                                  const std::uint16_t points[3] = {a, b, c};
                                  for (int i = 0; i < 3; ++i) {
                                      corners[i].u = records[points[i]].x + 128.0F;
                                      corners[i].v = records[points[i]].y + 128.0F;
                                  }
                                  triangle3d_f(canvas, POLYTYPE_ATEX | POLYTYPE_ZBUF, texture, &corners[0],
                                               &corners[1], &corners[2]);
                              });
}

void draw(int mode) {
    clear_bitmap(canvas);
    ::clear_zbuffer(depths, 0.0F);
    switch (mode) {
    case mode_envmap:
        draw_mapped(lwonormals3);
        break;
    case mode_texturemap:
        draw_mapped(lwopoints2);
        break;
    case mode_lightsourced:
        draw_lit(POLYTYPE_FLAT | POLYTYPE_ZBUF, true);
        break;
    default:
        draw_lit(POLYTYPE_GCOL | POLYTYPE_ZBUF, false);
        break;
    }
}

std::size_t drawn_pixels() {
    std::size_t pixels = 0;
    for (int y = 0; y < canvas->h; ++y) {
        pixels += static_cast<std::size_t>(
            std::count_if(canvas->line[y], canvas->line[y] + canvas->w, [](unsigned char c) { return c; }));
    }
    return pixels;
}

} // namespace

const Peer allegro_peer{"Allegro 4.4", "float depth, clipped", open, draw, drawn_pixels};
