// SPDX-License-Identifier: MIT
// What the libraries of a desktop miss in a bare session, and what they are told so that they do not complain
// of it on standard error.
#pragma once

namespace host {

/// Sets variables of the environment for the toolkit, unless the user has set them: without the session's
/// service for settings, or where nothing can be saved, settings are kept in memory; without that for
/// accessibility none is looked for; and where the folder of the user's data cannot be written, what the
/// toolkit wants to keep there goes with the session. To be called before the toolkit starts.
void prepare_for_toolkit();

/// The same for OpenGL, which the toolkit looks for as well: without a driver the software renderer draws,
/// and that is no error.
void prepare_for_opengl();

} // namespace host
