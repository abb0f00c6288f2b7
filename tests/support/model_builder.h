// SPDX-License-Identifier: MIT
// Small models and displays for unit tests, without a file or a screen.
#pragma once

#include "main_68k/viewer_state.h"

#include <cstdint>
#include <string>
#include <vector>

/// Resets the whole program state to its start values, with no model and no buffers.
void reset_program_state();

/// Makes these the model's points and polygon list, with work arrays allocated and `lwopoints2` a copy of the
/// points.
void set_model(const std::vector<Vec3> &points, const std::vector<std::uint16_t> &polygon_words);

/// Allocates zeroed frame buffers of this size, a zeroed dot sprite and a zeroed texture.
void set_frame(int width, int height);

/// An object file of form LWOB with these points and polygon words.
std::string object_file(const std::vector<Vec3> &points, const std::vector<std::uint16_t> &polygon_words);

/// A chunk of an object file: identifier, size and data.
std::string chunk(const std::string &identifier, const std::string &data);

/// This many chunks that the viewer skips.
std::string skipped_chunks(int count);

/// A chunk whose header claims this size, even if its data has another.
std::string claiming(const std::string &identifier, std::uint32_t size, const std::string &data);

/// The data of a chunk of points, and of a polygon list.
std::string point_data(const std::vector<Vec3> &points);
std::string word_data(const std::vector<std::uint16_t> &words);

/// A form of this type with these chunks.
std::string form(const std::string &type, const std::string &chunks);

/// Big-endian numbers as an object file has them.
std::string big_endian_16(std::uint16_t value);
std::string big_endian_32(std::uint32_t value);
std::string big_endian_float(float value);
