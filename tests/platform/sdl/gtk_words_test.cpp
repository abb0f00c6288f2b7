// SPDX-License-Identifier: MIT
// Tests of words and sizes as the toolkit shows them.
#include "platform/sdl/gtk_words.h"

#include <gtest/gtest.h>
#include <pango/pangocairo.h>

/// Read by LeakSanitizer: the fonts' library keeps its data until the process ends.
extern "C" const char *__lsan_default_suppressions() {
    return "leak:libfontconfig\n";
}

namespace {

/// Where the toolkit's text engine draws the character at this index, in a dialog that is read from right to
/// left.
int place_from_the_left(const std::string &text, std::size_t index) {
    PangoContext *context = pango_font_map_create_context(pango_cairo_font_map_get_default());
    pango_context_set_base_dir(context, PANGO_DIRECTION_RTL);
    PangoLayout *layout = pango_layout_new(context);
    pango_layout_set_text(layout, text.c_str(), -1);
    PangoRectangle place{};
    pango_layout_index_to_pos(layout, static_cast<int>(index), &place);
    g_object_unref(layout);
    g_object_unref(context);
    return place.x;
}

bool is_width_left_of_height(const std::string &text) {
    return place_from_the_left(text, text.find("320")) < place_from_the_left(text, text.find("256"));
}

} // namespace

TEST(SizeWords, KeepTheirOrderInTextFromRightToLeft) {
    EXPECT_TRUE(is_width_left_of_height(host::size_words(320, 256)));
    EXPECT_FALSE(is_width_left_of_height("320 \u00D7 256"));
}

TEST(ToolkitWords, AreTheHostsOwnWithoutATranslation) {
    EXPECT_EQ(host::toolkit_words("no such word", "own"), "own");
    EXPECT_EQ(host::toolkit_words("no such word"), "no such word");
}

TEST(LabelWords, HaveNoColon) {
    EXPECT_EQ(host::label_words("no such word", "Width:"), "Width");
    EXPECT_EQ(host::label_words("no such word", "Largeur\u00A0:"), "Largeur");
    EXPECT_EQ(host::label_words("no such word", "\u5E45(_W)\uFF1A"), "\u5E45(_W)");
}
