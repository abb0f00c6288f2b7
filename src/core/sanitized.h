// SPDX-License-Identifier: MIT
// Whether this build checks itself.
#pragma once

/// Whether a sanitizer checks memory in this build, which then needs several times as much memory and time.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool is_sanitized = true;
#elif defined(__has_feature)
constexpr bool is_sanitized = __has_feature(address_sanitizer);
#else
constexpr bool is_sanitized = false;
#endif
