// SPDX-License-Identifier: MIT
// Keeps passes at the display's rate when presenting a picture does not wait for the refresh.
#pragma once

namespace host {

/// Called once per pass, after its picture was presented. Waits until one refresh interval after the previous
/// call was due. If presenting itself waits for the refresh, small deviations from the nominal rate are
/// ignored, because the display is more exact.
void wait_for_refresh(double rate, bool presenting_waits);

} // namespace host
