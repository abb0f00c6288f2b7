# SPDX-License-Identifier: MIT
"""Tests of sizes typed into the screen-mode requester: its pictures, and the sizes that it confirms."""

import pathlib
import resource
import unittest

import desktop
from desktop import MODE_TITLE, VIEWER_TITLE


def changed_part(before, after):
    """The smallest part of a picture that contains everything in which it differs from another one."""
    places = [
        (at // 3 % before.width, at // 3 // before.width)
        for at in range(0, len(before.rgb), 3)
        if before.rgb[at : at + 3] != after.rgb[at : at + 3]
    ]
    left, right = min(x for x, _ in places), max(x for x, _ in places)
    top, bottom = min(y for _, y in places), max(y for _, y in places)
    return before.part(left, top, right - left + 1, bottom - top + 1)


def contains(picture, part):
    """Whether the part is anywhere in the picture, pixel for pixel."""
    return any(
        picture.part(x, y, part.width, part.height).rgb == part.rgb
        for y in range(picture.height - part.height + 1)
        for x in range(picture.width - part.width + 1)
    )


class TypedSizes(desktop.Case):
    def setUp(self):
        super().setUp()
        # Pictures of the dialog are compared, so the cursor must not blink.
        (self.config / "gtk-3.0").mkdir(parents=True)
        (self.config / "gtk-3.0" / "settings.ini").write_text(
            "[Settings]\ngtk-cursor-blink=0\ngtk-enable-animations=0\n"
        )

    def open_requester(self):
        viewer = self.start(self.object)
        return viewer, self.display.wait_for(MODE_TITLE)

    def type_width(self, text):
        self.display.key("alt+w")
        self.display.type(text)

    def type_height(self, text):
        self.display.key("alt+h")
        self.display.type(text)

    def settled(self, window, before=None):
        """Waits until the dialog's picture differs from the one before and no longer changes; returns it."""

        def staying():
            shown = self.picture(window)
            # The picture is the last one if no other follows within this time.
            desktop.time.sleep(0.3)
            is_new = before is None or shown.rgb != before.rgb
            return shown if is_new and shown.rgb == self.picture(window).rgb else None

        return desktop.wait_until(staying, "a picture that stays")

    def address_space(self, viewer):
        """The viewer's address space, in bytes."""
        pages = int(pathlib.Path(f"/proc/{viewer.process.pid}/statm").read_text().split()[0])
        return pages * resource.getpagesize()

    def upper_part(self, window):
        """The rows of the display and the size, above the text fields."""
        return self.settled(window).rows(0, 100)

    def confirm(self, viewer, width, height):
        self.display.key("Return")
        self.display.wait_for(VIEWER_TITLE)
        self.quit(viewer)
        self.assertTrue(viewer.out().startswith(f"display parameters: 0x00000002, {width}, {height}\n"))

    def assert_refused(self, window, what):
        self.display.key("Return", "alt+o")
        self.settled(window)
        self.assertEqual(self.display.find(MODE_TITLE), window, what)

    def test_text_that_is_no_size_cannot_be_confirmed(self):
        viewer, window = self.open_requester()
        for text in ("0", "abc", "3,5", "16385", "-5"):
            self.type_width(text)
            self.assert_refused(window, text)
        self.type_width("401")
        for text in ("0", "99999"):
            self.type_height(text)
            self.assert_refused(window, text)
        self.display.key("alt+h", "BackSpace")
        self.assert_refused(window, "nothing")
        self.type_height("299")
        self.confirm(viewer, 401, 299)

    def test_the_largest_size_is_confirmed(self):
        viewer, _ = self.open_requester()
        self.type_width("16384")
        self.type_height("1")
        self.confirm(viewer, 16384, 1)

    def test_the_dialog_says_why_a_size_is_refused(self):
        viewer, window = self.open_requester()
        self.type_width("320")
        right = self.settled(window)
        self.type_width("0320")
        # The same size written differently: only the field changes.
        same = self.settled(window, right)
        self.assertIsNone(self.notice(same).difference(self.notice(right)))
        self.type_width("0")
        desktop.wait_until(lambda: self.notice(self.picture(window)).difference(self.notice(right)), "the reason")
        self.display.cancel(MODE_TITLE)
        self.display.wait_for(VIEWER_TITLE)
        self.quit(viewer)

    def notice(self, picture):
        """The line below the fields."""
        return picture.rows(185, 213)

    def test_the_list_follows_every_key(self):
        viewer, window = self.open_requester()
        self.type_width("640")
        self.type_height("48")
        other = self.upper_part(window)
        self.display.type("0")
        desktop.wait_until(lambda: self.upper_part(window).rgb != other.rgb, "the size in the list")
        self.display.type("0")
        desktop.wait_until(lambda: self.upper_part(window).rgb == other.rgb, "another size in the list")
        self.display.key("BackSpace")
        # From 640 x 480 to the next size in the list.
        self.display.key("alt+s", "Down", "alt+h")
        self.confirm(viewer, 640, 512)

    def test_sizes_keep_their_order_in_right_to_left_languages(self):
        """The picture of "320 x 256" in an English dialog must also appear in a Hebrew one."""
        viewer, window = self.open_requester()
        named = self.upper_part(window)
        self.type_width("321")
        desktop.wait_until(lambda: self.picture(window).rows(0, 100).rgb != named.rgb, "a size that is not in the list")
        size = changed_part(named, self.upper_part(window))
        viewer.process.terminate()
        self.assert_ends_well(viewer)

        viewer = self.start(self.object, **desktop.language(self.folder, "he_IL"))
        window = self.display.wait_for(MODE_TITLE)
        self.assertTrue(contains(self.upper_part(window), size))
        viewer.process.terminate()
        self.assert_ends_well(viewer)

    def test_a_size_for_which_there_is_no_memory_is_marked(self):
        viewer, window = self.open_requester()
        # Enough for the viewer and its dialogs, but not for the largest screen.
        limit = 3_000_000_000
        if self.address_space(viewer) > limit:
            self.skipTest("a sanitized viewer needs more address space than the limit")
        resource.prlimit(viewer.process.pid, resource.RLIMIT_AS, (limit, limit))
        self.type_width("320")
        self.type_height("16384")
        possible = self.settled(window)
        self.type_width("16384")
        self.type_height("16384")
        marked = self.settled(window, possible)
        self.assertIsNotNone(self.notice(marked).difference(self.notice(possible)))
        self.type_width("321")
        self.type_height("256")
        desktop.wait_until(
            lambda: self.notice(self.picture(window)).difference(self.notice(possible)) is None, "no notice any more"
        )
        self.confirm(viewer, 321, 256)


if __name__ == "__main__":
    unittest.main()
