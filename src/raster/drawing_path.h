// SPDX-License-Identifier: MIT
// The choice between the two forms of every costly stage: namespace plain holds the algorithm as it reads,
// namespace fast the same results on vectors.
#pragma once

/// Whether frames are drawn by the fast forms. True from the start where they were built; set by whoever
/// compares the two. Where they were not built, fast and plain are the same code.
extern bool draws_fast;

/// Whether the fast forms were built.
extern const bool has_fast_path;
