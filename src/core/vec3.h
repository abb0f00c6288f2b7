// SPDX-License-Identifier: MIT
// Three coordinates.
#pragma once

/// Three single-precision coordinates, as the model arrays hold them.
struct Vec3 {
    float x;
    float y;
    float z;
};
