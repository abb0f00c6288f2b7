// SPDX-License-Identifier: MIT
// Keeps passes at the display's rate where presenting a picture does not wait for it.
#pragma once

namespace desktop {

/// Called once a pass after its picture was presented: waits until a refresh interval has gone by since the
/// previous call was due. Where presenting waits for the refresh by itself, small deviations from
/// the nominal rate are left alone, since the display's own beat is the better one.
void wait_for_refresh(double rate, bool presenting_waits);

} // namespace desktop
