// SPDX-License-Identifier: MIT
// Compares vectors with a tolerance.
#pragma once

#include "core/vec3.h"

#include <gtest/gtest.h>

/// Checks that no coordinate differs by more than the tolerance.
inline void expect_near(const Vec3 &actual, const Vec3 &expected, float tolerance) {
    EXPECT_NEAR(actual.x, expected.x, tolerance);
    EXPECT_NEAR(actual.y, expected.y, tolerance);
    EXPECT_NEAR(actual.z, expected.z, tolerance);
}
