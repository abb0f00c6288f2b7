// SPDX-License-Identifier: MIT
// Mesa's llvmpipe through OSMesa, on one thread, with client-side vertex arrays of projected points.
#include "peers/peer.h"

#include "display/frame_buffers.h"
#include "main_68k/viewer_state.h"
#include "pipeline/lighting.h"
#include "raster/texture_map.h"

#include <GL/gl.h>
#include <GL/osmesa.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <vector>

namespace {

struct Corner {
    float x;
    float y;
    float z;
    float u;
    float v;
    std::array<GLubyte, 4> colour;
};

OSMesaContext context = nullptr;
std::vector<std::uint32_t> canvas;
std::vector<Corner> corners;
GLuint texture = 0;

void open(int width, int height) {
    if (context == nullptr) {
        // llvmpipe reads this variable when its first context is made.
        setenv("LP_NUM_THREADS", "0", 1);
        setenv("GALLIUM_DRIVER", "llvmpipe", 1);
        context = OSMesaCreateContextExt(OSMESA_RGBA, 24, 0, 0, nullptr);
    }
    canvas.assign(frame_pixels(), 0);
    if (context == nullptr ||
        OSMesaMakeCurrent(context, canvas.data(), GL_UNSIGNED_BYTE, width, height) == GL_FALSE) {
        std::abort();
    }
    glViewport(0, 0, width, height);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(0.0, width, height, 0.0, -256.0, 256.0);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LESS);
    glDisable(GL_DITHER);
    if (texture == 0) {
        glGenTextures(1, &texture);
        glBindTexture(GL_TEXTURE_2D, texture);
        glTexImage2D(GL_TEXTURE_2D, 0, GL_LUMINANCE8, 256, 256, 0, GL_LUMINANCE, GL_UNSIGNED_BYTE,
                     envmap.get());
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
        glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_REPLACE);
    }
}

/// Depths grow toward the viewer, as the z of eye space does.
Corner corner(std::uint16_t point, float grey) {
    const Vec3 &p = lwopoints3[point];
    const auto level = static_cast<GLubyte>(grey);
    return {p.x, p.y, p.z, 0.0F, 0.0F, {level, level, level, 255}};
}

void submit(bool is_mapped) {
    glVertexPointer(3, GL_FLOAT, sizeof(Corner), &corners.data()->x);
    glEnableClientState(GL_VERTEX_ARRAY);
    if (is_mapped) {
        glEnable(GL_TEXTURE_2D);
        glDisableClientState(GL_COLOR_ARRAY);
        glTexCoordPointer(2, GL_FLOAT, sizeof(Corner), &corners.data()->u);
        glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    } else {
        glDisable(GL_TEXTURE_2D);
        glDisableClientState(GL_TEXTURE_COORD_ARRAY);
        glColorPointer(4, GL_UNSIGNED_BYTE, sizeof(Corner), corners.data()->colour.data());
        glEnableClientState(GL_COLOR_ARRAY);
    }
    glDrawArrays(GL_TRIANGLES, 0, static_cast<GLsizei>(corners.size()));
    glFinish();
}

void draw_lit(bool flat) {
    glShadeModel(flat ? GL_FLAT : GL_SMOOTH);
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
    submit(false);
}

void draw_mapped(const HeapArray<Vec3> &records) {
    for_each_visible_triangle([](const Vec3 &, const Vec3 &, const Vec3 &) {},
                              [&records](std::uint16_t a, std::uint16_t b, std::uint16_t c) {
                                  for (const std::uint16_t point : {a, b, c}) {
                                      Corner v = corner(point, 255.0F);
                                      v.u = (records[point].x + 128.0F) / 256.0F;
                                      v.v = (records[point].y + 128.0F) / 256.0F;
                                      corners.push_back(v);
                                  }
                              });
    submit(true);
}

void draw(int mode) {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
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
}

std::size_t drawn_pixels() {
    return static_cast<std::size_t>(std::count_if(
        canvas.begin(), canvas.end(), [](std::uint32_t pixel) { return (pixel & 0xFFFFFFU) != 0; }));
}

} // namespace

const Peer osmesa_peer{"llvmpipe", "32-bit colour, 24-bit depth", open, draw, drawn_pixels};
