# SPDX-License-Identifier: MIT
"""Tests every command with real keys, motion and buttons: the window must show the offscreen host's pictures."""

import subprocess
import unittest

import desktop

# Passes between two commands of the rehearsal. After this many every picture is still, even with a blur.
SPACING = 60


class Step:
    """A command, as a line of an input script and as words for xdotool."""

    def __init__(self, script, *words):
        self.script = script
        self.words = words


def key(character, name=None):
    return Step(f"key {character}", "key", name or character)


def cursor(name, code):
    return Step(f"rawkey {code}", "key", name)


def button(name, number):
    return Step(f"button {name}", "click", number)


def move(dx, dy):
    return Step(f"move {dx} {dy}", "mousemove_relative", "--", dx, dy)


UP, DOWN = cursor("Up", "0x4C"), cursor("Down", "0x4D")
RIGHT, LEFT = cursor("Right", "0x4E"), cursor("Left", "0x4F")
RIGHT_BUTTON = button("right", 3)


class Commands(desktop.Case):
    def follow(self, steps, **settings):
        """Carries out steps, each after the picture of the one before has appeared, and compares the settings
        afterwards."""
        self.write_settings(**settings)
        lines = [f"{SPACING * (i + 1)} {step.script}" for i, step in enumerate(steps)]
        last = SPACING * (len(steps) + 1)
        lines.append(f"{last} key s")
        expected = self.rehearse("\n".join(lines), last, 2 * SPACING - 1, SPACING)
        settings_expected = self.rehearsed_settings
        self.assertEqual(len(expected), len(steps))

        viewer, window = self.start_viewing()
        self.wait_until_clicks_count(window)
        for number, (step, picture) in enumerate(zip(steps, expected)):
            self.display.xdotool(*step.words)
            self.assert_shows(window, picture, f"step {number + 1}, {step.script}")
        self.display.key("s", "q")
        self.assert_ends_well(viewer)
        self.assertEqual(self.env_file.read_text(), settings_expected)

    def test_gamma_keys_change_the_palette(self):
        self.follow([key(c) for c in "1223334456660"])

    def test_gamma_keys_stop_at_their_limits(self):
        self.follow([key(c) for c in "111444"], gammas="0.050000 1.000000 1.000000")

    def test_right_button_cycles_through_the_modes(self):
        self.follow([RIGHT_BUTTON] * 7, obj_style=5)

    def test_e_shows_the_effect_and_the_right_button_leaves_it(self):
        self.follow([key("e"), move(12, 5), RIGHT_BUTTON])

    def test_mouse_motion_tilts_the_object(self):
        self.follow([move(25, 0), move(0, 40), move(-60, -15), move(1, 1), move(-1, 0)])

    def test_light_rotating_turns_the_light_by_mouse(self):
        self.follow([key("l"), move(30, 10), key("l"), move(5, 5)], obj_style=3)

    def test_flip_and_doubleside_toggle(self):
        self.follow([key("i"), key("d"), key("i"), key("d")], obj_style=4)

    def test_dots_and_their_brightness_on_cleared_frames(self):
        self.follow([key("p"), UP, UP, DOWN, key("p")])

    def test_blur_styles_and_dots_in_them(self):
        self.follow([key("p"), key("b"), UP, UP, DOWN, key("b"), DOWN, key("b"), key("b"), key("p")])

    def test_conversion_toggle_shows_its_message(self):
        self.follow([key("c"), key("c")])

    def test_r_stops_the_spin_and_shift_r_resets(self):
        reset = Step("key R\n180 key f", "key", "R", "f")
        self.follow([key("r"), key("4"), reset], obj_style=6, dots=1, dot_lum=70000)

    def test_keys_without_a_meaning_do_nothing(self):
        quiet = [Step("key z", "key", name) for name in ("z", "Tab", "Return", "F5", "ctrl+c", "alt+b", "Alt_R+b", "super+b")]
        self.follow([key("d"), *quiet])

    def test_several_keys_within_a_pass_are_all_handled(self):
        burst = Step("key d\n60 key b\n60 key b\n60 key 4\n60 key i", "key", "--delay", "0", *"dbb4i")
        self.follow([burst])


class Spin(desktop.Case):
    """While the object spins, only the parts of a picture that do not move can be compared."""

    TEXT_ROWS = (0, 14)

    def assert_message(self, window, script, what):
        expected = self.rehearse(script, 20, 20)[0].rows(*self.TEXT_ROWS)
        desktop.wait_until(
            lambda: self.picture(window).rows(*self.TEXT_ROWS).rgb == expected.rgb, "the message of " + what, 5.0
        )

    def test_cursor_keys_change_the_spin(self):
        self.write_settings()
        viewer, window = self.start_viewing()
        self.display.key("Right", "Right")
        self.assert_message(window, "2 rawkey 0x4E\n2 rawkey 0x4E", "two cursor rights")
        before = self.picture(window)
        desktop.wait_until(lambda: self.picture(window).difference(before), "the object to turn")
        self.display.key("Left", "Left", "Left")
        self.assert_message(window, "2 rawkey 0x4F", "three cursor lefts")
        self.display.key("s", "r", "S")
        self.quit(viewer)
        self.assertEqual(self.envarc_file.read_text(), desktop.settings())

    def test_shift_r_shows_its_message(self):
        self.write_settings(obj_style=6)
        viewer, window = self.start_viewing()
        self.display.key("R")
        self.assert_message(window, "2 key R", "the reset")
        self.quit(viewer)

    def test_a_held_key_repeats(self):
        self.write_settings()
        viewer, window = self.start_viewing()
        self.display.xdotool("keydown", "Right")
        desktop.wait_for_different(
            lambda: self.picture(window).rows(*self.TEXT_ROWS).rgb, 10, "the messages of ten different spins"
        )
        self.display.xdotool("keyup", "Right")
        self.display.key("s")
        self.quit(viewer)
        rotate = float(self.env_file.read_text().split("rotate: ")[1].split()[0])
        self.assertGreater(rotate, 0.5)

    def test_f_shows_and_hides_the_frame_rate(self):
        self.write_settings()
        viewer, window = self.start_viewing()
        text_rows = (256 - 10 - 6, 256 - 10 + 2)
        self.assertTrue(self.picture(window).rows(*text_rows).is_black())
        self.display.key("f")
        desktop.wait_until(lambda: not self.picture(window).rows(*text_rows).is_black(), "the frame rate")
        self.display.key("f")
        desktop.wait_until(lambda: self.picture(window).rows(*text_rows).is_black(), "no frame rate")
        self.quit(viewer)


# Keys by their X keycodes, which do not depend on the layout.
KEY_1, KEY_P, KEY_S, KEY_B, SCROLL_LOCK = 10, 33, 39, 56, 78
KEYPAD_UP, KEYPAD_RIGHT = 80, 85


class Layout(desktop.Case):
    def set_layout(self, *words):
        subprocess.run(["setxkbmap", *words], env=self.display.environment, check=True)

    def wait_for_settings(self, path, **expected):
        desktop.wait_until(
            lambda: path.exists() and path.read_text() == desktop.settings(**expected), f"{expected} in {path.name}"
        )

    def press_letters_by_place(self):
        """"p", "b", "1", "s" and "S", as on a US keyboard."""
        self.display.key(KEY_P, KEY_B, KEY_1, KEY_S, f"shift+{KEY_S}")
        expected = {"dots": 1, "clear_style": 1, "gammas": "0.900000 1.000000 1.000000"}
        self.wait_for_settings(self.env_file, **expected)
        self.wait_for_settings(self.envarc_file, **expected)

    def test_letters_count_by_place_on_layouts_without_latin_letters(self):
        for layout in ("ru", "gr", "il", "ara", "th"):
            with self.subTest(layout):
                self.set_layout(layout)
                self.write_settings()
                viewer, _ = self.start_viewing()
                self.press_letters_by_place()
                self.quit(viewer)

    def test_caps_lock_and_shift_count_by_place(self):
        self.set_layout("ru")
        self.write_settings()
        viewer, _ = self.start_viewing()
        # Shift with a digit's key is not a digit. With Caps Lock "s" is "S", which saves for good.
        self.display.key(f"shift+{KEY_1}", "Caps_Lock", KEY_S, "Caps_Lock")
        self.wait_for_settings(self.envarc_file)
        self.quit(viewer)

    def test_letters_count_by_place_while_a_second_layout_is_active(self):
        self.set_layout("-layout", "us,ru", "-option", "grp:sclk_toggle")
        self.write_settings()
        viewer, _ = self.start_viewing()
        self.display.key(KEY_P, KEY_S)
        self.wait_for_settings(self.env_file, dots=1)
        self.display.key(SCROLL_LOCK, KEY_P, KEY_S)
        self.wait_for_settings(self.env_file, dots=0)
        self.display.key(SCROLL_LOCK, KEY_P, KEY_S)
        self.wait_for_settings(self.env_file, dots=1)
        self.quit(viewer)

    def test_letters_count_by_character_on_latin_layouts(self):
        """On a Dvorak keyboard "p" is at the place of the US layout's "r"."""
        self.set_layout("us", "dvorak")
        self.write_settings()
        viewer, _ = self.start_viewing()
        self.display.key("p", "s")
        self.wait_for_settings(self.env_file, dots=1)
        self.quit(viewer)

    def test_the_keypad_has_cursor_keys_without_num_lock(self):
        self.write_settings()
        viewer, _ = self.start_viewing()
        self.display.key(KEYPAD_UP, KEYPAD_RIGHT, "s")
        self.wait_for_settings(self.env_file, dot_lum=26624, rotate="0.100000")
        self.display.key("Num_Lock", KEYPAD_UP, KEYPAD_RIGHT, "Num_Lock", "s")
        self.wait_for_settings(self.env_file, dot_lum=26624, rotate="0.100000", gammas="1.000000 1.000000 1.100000")
        self.quit(viewer)

    def test_commands_are_characters_on_every_keyboard(self):
        """A French keyboard has digits with Shift, and dead keys that wait for another key."""
        subprocess.run(["setxkbmap", "fr"], env=self.display.environment, check=True)
        self.write_settings()
        dimmed, dotted = self.rehearse("60 key 1\n120 key p", 130, 70, 60)
        viewer, window = self.start_viewing()
        self.display.key("1")
        self.assert_shows(window, dimmed, "a digit")
        self.display.key("dead_circumflex", "e", "p")
        self.assert_shows(window, dotted, "the key after an accented letter")
        self.display.key("q")
        self.assert_ends_well(viewer)


if __name__ == "__main__":
    unittest.main()
