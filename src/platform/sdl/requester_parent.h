// SPDX-License-Identifier: MIT
// Ties the toolkit's requesters to the viewer's window.
#pragma once

#include <gtk/gtk.h>

namespace host {

/// Makes the toolkit choose the kind of display that the viewer's window has or will have: only windows of
/// one display can be above one another. To be called before the toolkit starts.
void choose_the_viewers_display();

/// Makes a requester that is not shown yet a dialog of the viewer's window, which then stays below it, even
/// one that is above all others. Nothing if the window is closed or hidden, or the display does not know such
/// dialogs.
void put_above_viewer(GtkWindow *requester);

/// Gives a requester that is open the focus and brings it to the front: the user went to the viewer, which
/// can do nothing before the requester is answered. A Wayland compositor may decide otherwise.
void bring_forward(GtkWindow *requester);

} // namespace host
