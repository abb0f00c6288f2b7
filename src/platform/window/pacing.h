// SPDX-License-Identifier: MIT
// Keeps passes at the display's rate where presenting a picture does not wait for it.
#pragma once

namespace host {

/// Called once per pass, after its picture was presented: waits until a refresh interval has gone by since
/// the previous call was due. Where presenting waits for the refresh by itself, small deviations from the
/// nominal rate are ignored, since the display itself is more exact.
void wait_for_refresh(double rate, bool presenting_waits);

} // namespace host
