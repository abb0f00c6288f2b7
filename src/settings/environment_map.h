// SPDX-License-Identifier: MIT
// The texture file: 65536 raw bytes, 256 rows of 256 brightness levels, top row first.
#pragma once

/// The default name of the environment map, relative to the current directory.
constexpr char default_envmap_filename[] = "Zelvo_envmap.chunky";

/// Reads the state's texture file; if it cannot be opened, asks for one as choose_envmap does.
void load_envmap();

/// Asks for a texture with a file requester, stores and prints its name, and reads it. A cancelled requester
/// counts as confirmed. If the file cannot be opened, the program ends. A short file replaces only the start
/// of the texture.
void choose_envmap();
