// SPDX-License-Identifier: MIT
// The texture file: 65536 raw bytes, 256 rows of 256 brightness levels, top row first.
#pragma once

/// The default name of the environment map, relative to the current directory.
constexpr char default_envmap_filename[] = "Zelvo_envmap.chunky";

/// Reads the file that the state names into the texture; if it cannot be opened, goes on as choose_envmap.
void load_envmap();

/// Asks for a texture with a file requester, keeps and prints its name, and reads it. A cancelled requester
/// is taken as if it had been confirmed. A file that cannot be opened ends the program. A short file replaces
/// the start of the texture alone.
void choose_envmap();
