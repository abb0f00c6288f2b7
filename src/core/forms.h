// SPDX-License-Identifier: MIT
// The choice between the two forms of every costly stage. Namespace plain is the readable scalar
// implementation; namespace fast computes bit-identical results on vectors.
#pragma once

/// Whether frames are drawn by the fast forms. True from the start; set by tests and measurements, which
/// compare the two.
extern bool draws_fast;

namespace plain {}

// ZELVO_SIMD is 1 if the fast forms are built. Otherwise both names mean the plain forms, so that the same
// code chooses a stage in every build.
#if ZELVO_SIMD
namespace fast {}
#else
namespace fast = plain;
#endif
