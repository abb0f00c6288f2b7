// SPDX-License-Identifier: MIT
// Reads a LightWave object file (IFF form LWOB) into the model.
#pragma once

#include <cstdio>

/// Reads the points and polygons of an open object file, closes it, and allocates the model arrays. Every
/// failure ends the program with its message. Numbers are big-endian in the file and have the processor's
/// byte order in memory. If the file ends inside a chunk, the rest of the chunk is zeros.
void read_object(std::FILE *file);
