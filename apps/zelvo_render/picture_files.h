// SPDX-License-Identifier: MIT
// Single pictures as files.
#pragma once

#include "platform/offscreen/host.h"

#include <cstdint>
#include <span>
#include <string>

/// Writes a picture's palette indices as a binary PGM of maximum 255.
void write_pgm(const std::string &path, const offscreen::Picture &picture);

/// Writes a picture as a PNG of 8-bit palette indices with its 256-entry palette.
void write_png(const std::string &path, const offscreen::Picture &picture);

/// Writes a picture as a PNG of 8-bit red, green, blue and opacity; `opacity` has one value per pixel.
void write_png(const std::string &path, const offscreen::Picture &picture,
               std::span<const std::uint8_t> opacity);
