// SPDX-License-Identifier: MIT
// The choice between the two forms of every costly stage. Namespace plain is the readable scalar
// implementation; namespace fast computes bit-identical results on vectors.
#pragma once

/// Whether frames are drawn by the fast forms. True from the start; set by tests and measurements, which
/// compare the two.
extern bool draws_fast;

namespace plain {}

// ZELVO_SIMD is 1 where the fast forms are built. Elsewhere both names mean the plain forms, so that a stage
// is chosen by the same code everywhere.
#if ZELVO_SIMD
namespace fast {}
#else
namespace fast = plain;
#endif
