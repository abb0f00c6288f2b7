// SPDX-License-Identifier: MIT
// Words in the user's language, as far as the toolkit's own catalogue and the system's have them.
#pragma once

#include <string>

namespace host {

/// A word of the toolkit's catalogue in the user's language; `own` where the catalogue has no translation.
std::string toolkit_words(const char *catalogued, const char *own);

/// The same for a word that is shown as it is in the catalogue, such as "_OK".
std::string toolkit_words(const char *catalogued);

/// A word of the toolkit's catalogue that is the label of a field: without the colon at its end.
std::string label_words(const char *catalogued, const char *own);

/// What the system says about an error number, in the user's language.
std::string error_words(int error);

/// A screen's size. Its numbers come in this order in every language: where text is read from the right, they
/// would otherwise change places.
std::string size_words(int width, int height);

} // namespace host
