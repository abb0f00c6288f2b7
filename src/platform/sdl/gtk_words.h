// SPDX-License-Identifier: MIT
// Words in the user's language, where the catalogues of the toolkit or of the system have them.
#pragma once

#include <string>

namespace host {

/// A word of the toolkit's catalogue in the user's language; `own` where the catalogue has no translation.
std::string toolkit_words(const char *catalogued, const char *own);

/// The same for a word that is shown as it is in the catalogue, such as "_OK".
std::string toolkit_words(const char *catalogued);

/// A field's label from the toolkit's catalogue, without the colon at its end.
std::string label_words(const char *catalogued, const char *own);

/// What the system says about an error number, in the user's language.
std::string error_words(int error);

/// A path as the toolkit can show it, whatever bytes it has.
std::string path_words(const std::string &path);

/// A screen's size, width first in every language. Without the marks around it, languages that are read from
/// right to left would swap the two numbers.
std::string size_words(int width, int height);

} // namespace host
