// SPDX-License-Identifier: MIT
// Ties the toolkit's requesters to the viewer's window.
#pragma once

#include <gtk/gtk.h>

namespace host {

/// Makes the toolkit use the same kind of display as the viewer's window, because only windows on the same
/// display can be stacked. Must be called before the toolkit starts.
void choose_the_viewers_display();

/// Makes a requester that is not shown yet a dialog of the viewer's window, so that it stays above it, even
/// if the viewer is set to stay above all other windows. Does nothing if the window is closed or hidden, or
/// if the display has no such dialogs.
void put_above_viewer(GtkWindow *requester);

/// Brings an open requester to the front and gives it the focus. Used when the user goes to the viewer, which
/// can do nothing until the requester is answered. A Wayland compositor may refuse.
void bring_forward(GtkWindow *requester);

} // namespace host
