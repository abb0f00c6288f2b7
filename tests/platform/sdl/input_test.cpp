// SPDX-License-Identifier: MIT
// Tests of the events that the desktop's input becomes, with SDL's driver that has no display.
#include "platform/sdl/input.h"

#include "platform/sdl/keyboard.h"
#include "platform/sdl/sdl_window.h"
#include "platform/window/display_modes.h"
#include "platform/window/picture_window.h"
#include "platform/window/windowed_host.h"
#include "support/temporary_files.h"

#include <SDL.h>
#include <array>
#include <gtest/gtest.h>

namespace {

constexpr Uint16 nothing = KMOD_NONE;

class Input : public testing::Test {
protected:
    void SetUp() override {
        setenv("SDL_VIDEODRIVER", "dummy", 1);
        ASSERT_TRUE(host::open_picture_window({320, 256}, *host::find_display_mode(1), "input"));
        take();
        // The window gets the focus when it opens. The tests begin long after that.
        now = SDL_GetTicks() + 10'000;
        press(SDL_SCANCODE_LSHIFT, SDLK_LSHIFT, nothing);
        taken.clear();
    }

    void TearDown() override {
        host::close_picture_window();
        host::disconnect_display();
        host::quit_requested = 0;
    }

    /// Adds the event to SDL's queue with the test's time, which SDL_PushEvent would overwrite.
    void add(SDL_Event event) {
        event.common.timestamp = now;
        ASSERT_EQ(SDL_PeepEvents(&event, 1, SDL_ADDEVENT, 0, 0), 1);
    }

    void take() {
        std::deque<IntuiMessage> messages;
        host::take_input(messages);
        for (const IntuiMessage &message : messages) {
            taken.push_back(message);
        }
    }

    void press(SDL_Scancode place, SDL_Keycode symbol, Uint16 modifiers, Uint8 repeat = 0) {
        SDL_Event event{};
        event.type = SDL_KEYDOWN;
        event.key.keysym = {place, symbol, modifiers, 0};
        event.key.repeat = repeat;
        add(event);
        take();
    }

    void release(SDL_Scancode place, SDL_Keycode symbol, Uint16 modifiers) {
        SDL_Event event{};
        event.type = SDL_KEYUP;
        event.key.keysym = {place, symbol, modifiers, 0};
        add(event);
        take();
    }

    /// Presses a key and sends its text.
    void type(SDL_Scancode place, SDL_Keycode symbol, Uint16 modifiers, const char *text) {
        press(place, symbol, modifiers);
        SDL_Event event{};
        event.type = SDL_TEXTINPUT;
        SDL_strlcpy(event.text.text, text, sizeof event.text.text);
        add(event);
        take();
    }

    void click(Uint8 button, Uint8 clicks = 1, Uint32 mouse = 0) {
        SDL_Event event{};
        event.type = SDL_MOUSEBUTTONDOWN;
        event.button.button = button;
        event.button.clicks = clicks;
        event.button.which = mouse;
        add(event);
        event.type = SDL_MOUSEBUTTONUP;
        add(event);
        take();
    }

    void send_window_event(SDL_WindowEventID kind) {
        SDL_Event event{};
        event.type = SDL_WINDOWEVENT;
        event.window.event = static_cast<Uint8>(kind);
        add(event);
        take();
    }

    bool is_full_screen() const {
        return (SDL_GetWindowFlags(host::picture_window()) & SDL_WINDOW_FULLSCREEN) != 0;
    }

    /// The codes of all messages of this class.
    std::vector<int> codes(ULONG message_class) const {
        std::vector<int> result;
        for (const IntuiMessage &message : taken) {
            if (message.Class == message_class) {
                result.push_back(message.Code);
            }
        }
        return result;
    }

    std::vector<int> characters() const { return codes(IDCMP_VANILLAKEY); }
    std::vector<int> raw_keys() const { return codes(IDCMP_RAWKEY); }
    std::vector<int> buttons() const { return codes(IDCMP_MOUSEBUTTONS); }

    std::vector<IntuiMessage> taken;
    Uint32 now = 0;
};

using Codes = std::vector<int>;

TEST_F(Input, KeysOfTheHostAreNoCommandsOfTheProgram) {
    using host::HostCommand;
    struct HostKey {
        SDL_Scancode place;
        SDL_Keycode symbol;
        Uint16 modifiers;
        HostCommand command;
    };
    const std::array<HostKey, 7> keys{{
        {SDL_SCANCODE_F1, SDLK_F1, nothing, HostCommand::show_keys},
        {SDL_SCANCODE_F12, SDLK_F12, nothing, HostCommand::save_picture},
        {SDL_SCANCODE_O, SDLK_o, KMOD_LCTRL, HostCommand::open_object},
        {SDL_SCANCODE_PAGEDOWN, SDLK_PAGEDOWN, nothing, HostCommand::open_next},
        {SDL_SCANCODE_PAGEUP, SDLK_PAGEUP, nothing, HostCommand::open_previous},
        {SDL_SCANCODE_KP_3, SDLK_KP_3, nothing, HostCommand::open_next},
        {SDL_SCANCODE_KP_9, SDLK_KP_9, nothing, HostCommand::open_previous},
    }};
    for (const HostKey &key : keys) {
        SDL_KeyboardEvent event{};
        event.keysym = {key.place, key.symbol, key.modifiers, 0};
        EXPECT_EQ(host::host_command(event), key.command) << key.symbol;
        EXPECT_FALSE(host::key_message(event)) << key.symbol;
        event.repeat = 1;
        EXPECT_FALSE(host::host_command(event)) << key.symbol;
        event.repeat = 0;
        event.keysym.mod = KMOD_LALT;
        EXPECT_FALSE(host::host_command(event)) << key.symbol;
    }
    SDL_KeyboardEvent digit{};
    digit.keysym = {SDL_SCANCODE_KP_3, SDLK_KP_3, KMOD_NUM, 0};
    EXPECT_FALSE(host::host_command(digit));
    digit.keysym = {SDL_SCANCODE_O, SDLK_o, nothing, 0};
    EXPECT_FALSE(host::host_command(digit));
}

TEST_F(Input, AFileThatIsDroppedIsOpenedInAnotherRun) {
    const TemporaryFiles files;
    const std::string object = files.write("a.lwo", "FORM    LWOB");
    const auto drop = [this](const std::string &path) {
        SDL_Event event{};
        event.type = SDL_DROPFILE;
        event.drop.file = SDL_strdup(path.c_str());
        add(event);
    };
    drop(object);
    drop(files.write("b.lwo", "FORM    LWOB"));
    take();
    EXPECT_EQ(host::next_object, object);
    EXPECT_EQ(host::quit_requested, 1);
    EXPECT_TRUE(taken.empty());
    host::next_object.clear();
    host::quit_requested = 0;
    drop(object);
    host::drop_input();
    take();
    EXPECT_EQ(host::next_object, "");
}

TEST_F(Input, LetterArrivesOnceAsItsCharacter) {
    type(SDL_SCANCODE_P, SDLK_p, nothing, "p");
    EXPECT_EQ(characters(), Codes{'p'});
    EXPECT_EQ(taken.size(), 1U);
}

TEST_F(Input, CharactersOfLatin1ArriveAndOthersDoNot) {
    type(SDL_SCANCODE_2, SDLK_2, nothing, "\u00E9");
    type(SDL_SCANCODE_3, SDLK_3, nothing, "\u00FF");
    type(SDL_SCANCODE_4, SDLK_4, nothing, "\u0100");
    type(SDL_SCANCODE_E, SDLK_e, nothing, "\u20AC");
    type(SDL_SCANCODE_6, SDLK_6, nothing, "\U0001F600");
    EXPECT_EQ(characters(), (Codes{0xE9, 0xFF}));
}

TEST_F(Input, AllCharactersOfATextArriveInOrder) {
    type(SDL_SCANCODE_E, SDLK_e, nothing, "^\u00E9q");
    EXPECT_EQ(characters(), (Codes{'^', 0xE9, 'q'}));
}

TEST_F(Input, LettersWithDesktopModifiersAreNoCommands) {
    for (const Uint16 modifier :
         {KMOD_LCTRL, KMOD_RCTRL, KMOD_LALT, KMOD_RALT, KMOD_LGUI, KMOD_RGUI, KMOD_MODE}) {
        type(SDL_SCANCODE_P, SDLK_p, modifier, "p");
    }
    EXPECT_EQ(characters(), Codes{});
    type(SDL_SCANCODE_P, SDLK_p, KMOD_LSHIFT, "P");
    EXPECT_EQ(characters(), Codes{'P'});
}

TEST_F(Input, CursorKeysAreRawKeysAndRepeat) {
    press(SDL_SCANCODE_UP, SDLK_UP, nothing);
    press(SDL_SCANCODE_DOWN, SDLK_DOWN, nothing);
    press(SDL_SCANCODE_RIGHT, SDLK_RIGHT, nothing);
    press(SDL_SCANCODE_LEFT, SDLK_LEFT, nothing);
    press(SDL_SCANCODE_LEFT, SDLK_LEFT, nothing, 1);
    EXPECT_EQ(raw_keys(), (Codes{0x4C, 0x4D, 0x4E, 0x4F, 0x4F}));
}

TEST_F(Input, KeypadHasCursorKeysWithoutNumLockAndDigitsWithIt) {
    press(SDL_SCANCODE_KP_8, SDLK_KP_8, nothing);
    press(SDL_SCANCODE_KP_2, SDLK_KP_2, nothing);
    press(SDL_SCANCODE_KP_6, SDLK_KP_6, nothing);
    press(SDL_SCANCODE_KP_4, SDLK_KP_4, nothing);
    press(SDL_SCANCODE_KP_5, SDLK_KP_5, nothing);
    EXPECT_EQ(raw_keys(), (Codes{0x4C, 0x4D, 0x4E, 0x4F}));
    EXPECT_EQ(characters(), Codes{});
    taken.clear();
    type(SDL_SCANCODE_KP_8, SDLK_KP_8, KMOD_NUM, "8");
    type(SDL_SCANCODE_KP_4, SDLK_KP_4, KMOD_LSHIFT, "4");
    EXPECT_EQ(raw_keys(), Codes{});
    EXPECT_EQ(characters(), (Codes{'8', '4'}));
}

TEST_F(Input, EscapeArrivesAsItsCharacter) {
    press(SDL_SCANCODE_ESCAPE, SDLK_ESCAPE, nothing);
    EXPECT_EQ(characters(), Codes{27});
}

TEST_F(Input, OnlyControlQIsARequestToQuit) {
    press(SDL_SCANCODE_Q, SDLK_q, KMOD_LALT);
    press(SDL_SCANCODE_Q, SDLK_q, KMOD_LCTRL | KMOD_LALT);
    press(SDL_SCANCODE_W, SDLK_w, KMOD_LCTRL);
    press(SDL_SCANCODE_Q, SDLK_q, nothing);
    press(SDL_SCANCODE_Q, SDLK_q, KMOD_LSHIFT);
    EXPECT_EQ(host::quit_requested, 0);
    press(SDL_SCANCODE_Q, SDLK_q, KMOD_RCTRL);
    EXPECT_EQ(host::quit_requested, 1);
    EXPECT_TRUE(taken.empty());
}

TEST_F(Input, F11AndAltEnterDoNotRepeat) {
    press(SDL_SCANCODE_F11, SDLK_F11, nothing);
    EXPECT_TRUE(is_full_screen());
    press(SDL_SCANCODE_F11, SDLK_F11, nothing, 1);
    EXPECT_TRUE(is_full_screen());
    press(SDL_SCANCODE_RETURN, SDLK_RETURN, KMOD_LALT);
    EXPECT_FALSE(is_full_screen());
    press(SDL_SCANCODE_RETURN, SDLK_RETURN, KMOD_LALT, 1);
    EXPECT_FALSE(is_full_screen());
    press(SDL_SCANCODE_KP_ENTER, SDLK_KP_ENTER, KMOD_RALT);
    EXPECT_TRUE(is_full_screen());
    press(SDL_SCANCODE_RETURN, SDLK_RETURN, nothing);
    EXPECT_TRUE(is_full_screen());
    EXPECT_TRUE(taken.empty());
}

TEST_F(Input, OnlyLeftAndRightButtonsAreCommands) {
    click(SDL_BUTTON_LEFT);
    click(SDL_BUTTON_MIDDLE);
    click(SDL_BUTTON_RIGHT);
    click(SDL_BUTTON_X1);
    EXPECT_EQ(buttons(), (Codes{SELECTDOWN, MENUDOWN}));
}

TEST_F(Input, DoubleClickIsTwoClicks) {
    click(SDL_BUTTON_RIGHT);
    click(SDL_BUTTON_RIGHT, 2);
    EXPECT_EQ(buttons(), (Codes{MENUDOWN, MENUDOWN}));
}

TEST_F(Input, ClicksWithDesktopModifiersAreNoCommands) {
    struct Modifier {
        SDL_Scancode place;
        SDL_Keycode symbol;
        Uint16 mask;
    };
    for (const Modifier &key : {Modifier{SDL_SCANCODE_LCTRL, SDLK_LCTRL, KMOD_LCTRL},
                                Modifier{SDL_SCANCODE_LALT, SDLK_LALT, KMOD_LALT},
                                Modifier{SDL_SCANCODE_RALT, SDLK_RALT, KMOD_RALT},
                                Modifier{SDL_SCANCODE_LGUI, SDLK_LGUI, KMOD_LGUI}}) {
        press(key.place, key.symbol, key.mask);
        click(SDL_BUTTON_LEFT);
        click(SDL_BUTTON_RIGHT);
        EXPECT_EQ(buttons(), Codes{}) << key.symbol;
        release(key.place, key.symbol, nothing);
        click(SDL_BUTTON_LEFT);
        EXPECT_EQ(buttons(), Codes{SELECTDOWN}) << key.symbol;
        taken.clear();
    }
    press(SDL_SCANCODE_LSHIFT, SDLK_LSHIFT, KMOD_LSHIFT);
    click(SDL_BUTTON_LEFT);
    EXPECT_EQ(buttons(), Codes{SELECTDOWN});
}

TEST_F(Input, ModifierMayBeReleasedWhileARequesterIsOpen) {
    press(SDL_SCANCODE_LALT, SDLK_LALT, KMOD_LALT);
    SDL_Event event{};
    event.type = SDL_KEYUP;
    event.key.keysym = {SDL_SCANCODE_LALT, SDLK_LALT, nothing, 0};
    add(event);
    host::drop_input();
    click(SDL_BUTTON_LEFT);
    EXPECT_EQ(buttons(), Codes{SELECTDOWN});
}

TEST_F(Input, TapIsNoClick) {
    click(SDL_BUTTON_LEFT, 1, SDL_TOUCH_MOUSEID);
    EXPECT_EQ(buttons(), Codes{});
}

TEST_F(Input, ClickOrDoubleClickThatGivesTheFocusIsNoCommand) {
    send_window_event(SDL_WINDOWEVENT_FOCUS_LOST);
    click(SDL_BUTTON_LEFT);
    send_window_event(SDL_WINDOWEVENT_FOCUS_GAINED);
    now += 5;
    click(SDL_BUTTON_LEFT);
    now += 300;
    click(SDL_BUTTON_LEFT, 2);
    // The third click comes too late to be part of a double click.
    now += 300;
    click(SDL_BUTTON_LEFT, 3);
    EXPECT_EQ(buttons(), Codes{});
    now += 300;
    click(SDL_BUTTON_LEFT);
    EXPECT_EQ(buttons(), Codes{SELECTDOWN});
}

TEST_F(Input, SlowDoubleClickThatGivesTheFocusIsNoCommand) {
    send_window_event(SDL_WINDOWEVENT_FOCUS_GAINED);
    now += 200;
    click(SDL_BUTTON_LEFT);
    now += 400;
    click(SDL_BUTTON_LEFT, 2);
    EXPECT_EQ(buttons(), Codes{});
}

TEST_F(Input, SecondClickIsNoCommandIfTheDesktopTookTheFirst) {
    send_window_event(SDL_WINDOWEVENT_FOCUS_LOST);
    send_window_event(SDL_WINDOWEVENT_FOCUS_GAINED);
    now += 450;
    click(SDL_BUTTON_LEFT);
    EXPECT_EQ(buttons(), Codes{});
}

TEST_F(Input, SecondHalfOfADoubleClickThatClosedARequesterIsNoCommand) {
    now = SDL_GetTicks() + 100;
    host::ignore_what_is_held();
    click(SDL_BUTTON_LEFT);
    EXPECT_EQ(buttons(), Codes{});
    host::ignore_what_is_held();
    now += 900;
    click(SDL_BUTTON_LEFT, 2);
    EXPECT_EQ(buttons(), Codes{});
    now += 1000;
    click(SDL_BUTTON_LEFT);
    EXPECT_EQ(buttons(), Codes{SELECTDOWN});
}

TEST_F(Input, CloseButtonIsARequestToQuit) {
    send_window_event(SDL_WINDOWEVENT_CLOSE);
    EXPECT_EQ(host::quit_requested, 1);
}

TEST_F(Input, InputWhileARequesterIsOpenIsDropped) {
    SDL_Event event{};
    event.type = SDL_KEYDOWN;
    event.key.keysym = {SDL_SCANCODE_ESCAPE, SDLK_ESCAPE, nothing, 0};
    add(event);
    event = {};
    event.type = SDL_MOUSEBUTTONDOWN;
    event.button.button = SDL_BUTTON_LEFT;
    add(event);
    host::drop_input();
    EXPECT_EQ(host::quit_requested, 0);
    take();
    EXPECT_TRUE(taken.empty());
}

TEST_F(Input, CloseButtonWorksWhileARequesterIsOpen) {
    SDL_Event event{};
    event.type = SDL_WINDOWEVENT;
    event.window.event = SDL_WINDOWEVENT_CLOSE;
    add(event);
    host::drop_input();
    EXPECT_EQ(host::quit_requested, 1);
}

TEST_F(Input, MotionCountsOnlyWhileThePointerIsHeld) {
    SDL_Event event{};
    event.type = SDL_MOUSEMOTION;
    event.motion.xrel = 5;
    event.motion.yrel = -7;
    add(event);
    take();
    EXPECT_TRUE(taken.empty());
    SDL_SetRelativeMouseMode(SDL_TRUE);
    add(event);
    event.motion.xrel = 100'000;
    event.motion.yrel = -100'000;
    add(event);
    take();
    ASSERT_EQ(taken.size(), 2U);
    EXPECT_EQ(taken[0].Class, IDCMP_MOUSEMOVE);
    EXPECT_EQ(taken[0].MouseX, 5);
    EXPECT_EQ(taken[0].MouseY, -7);
    EXPECT_EQ(taken[1].MouseX, 32767);
    EXPECT_EQ(taken[1].MouseY, -32768);
}

} // namespace
