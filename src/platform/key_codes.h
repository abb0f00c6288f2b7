// SPDX-License-Identifier: MIT
// The keys that the program knows by their codes.
#pragma once

#include "platform/exec.h"

/// The translated key that ends the program.
constexpr UWORD escape_character = 27;

/// Raw keys, as the system's keyboards number them.
constexpr UWORD cursor_up = 0x4C;
constexpr UWORD cursor_down = 0x4D;
constexpr UWORD cursor_right = 0x4E;
constexpr UWORD cursor_left = 0x4F;
