// SPDX-License-Identifier: MIT
// Tests of the program's system calls on the desktop host, with SDL's driver that has no display.
#include "platform/dos.h"
#include "platform/intuition.h"
#include "platform/sdl/host.h"
#include "platform/sdl/sdl_window.h"
#include "platform/shared/hooks.h"
#include "platform/window/picture_window.h"
#include "platform/window/windowed_host.h"
#include "support/temporary_files.h"

#include <SDL.h>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

/// Larger than the smallest window, so that the picture fills it.
constexpr int width = 160;
constexpr int height = 120;

class Calls : public testing::Test {
protected:
    void SetUp() override {
        setenv("SDL_VIDEODRIVER", "dummy", 1);
        setenv("SDL_RENDER_DRIVER", "software", 1);
        host::state = {};
        library = OpenLibrary("intuition.library", 39);
    }

    void TearDown() override {
        close();
        CloseLibrary(library);
        host::quit_requested = 0;
        host::settings_path.clear();
        host::state = {};
        unsetenv("SDL_RENDER_DRIVER");
    }

    static Screen *open_screen(ULONG mode, int screen_width, int screen_height) {
        const std::array<TagItem, 4> tags{{
            {SA_DisplayID, mode},
            {SA_Width, static_cast<TagData>(screen_width)},
            {SA_Height, static_cast<TagData>(screen_height)},
            {TAG_DONE, 0},
        }};
        return OpenScreenTagList(nullptr, tags.data());
    }

    void open(ULONG mode = 1) {
        screen = open_screen(mode, width, height);
        ASSERT_NE(screen, nullptr);
        const std::array<TagItem, 2> tags{{{WA_CustomScreen, tag_pointer(screen)}, {TAG_DONE, 0}}};
        window = OpenWindowTagList(nullptr, tags.data());
        ASSERT_NE(window, nullptr);
        std::vector<ULONG> table{256U << 16};
        for (ULONG level = 0; level < 256; ++level) {
            table.insert(table.end(), {level << 24, (255 - level) << 24, 9U << 24});
        }
        table.push_back(0);
        LoadRGB32(&screen->ViewPort, table.data());
    }

    void close() {
        if (window != nullptr) {
            CloseWindow(window);
            window = nullptr;
        }
        if (screen != nullptr) {
            CloseScreen(screen);
            screen = nullptr;
        }
    }

    /// Writes a frame of one brightness into a bitmap.
    static void write_frame(BitMap *bitmap, UBYTE level) {
        const std::vector<UBYTE> frame(std::size_t{width} * height, level);
        RastPort context{};
        InitRastPort(&context);
        context.BitMap = bitmap;
        WriteChunkyPixels(&context, 0, 0, width - 1, height - 1, frame.data(), width);
    }

    void write_frame(UBYTE level) { write_frame(window->RPort->BitMap, level); }

    /// The class and the code of each message that arrives in this pass.
    std::vector<std::pair<ULONG, int>> messages() {
        std::vector<std::pair<ULONG, int>> taken;
        while (Message *message = GetMsg(window->UserPort)) {
            const auto *event = reinterpret_cast<const IntuiMessage *>(message);
            taken.emplace_back(event->Class, event->Code);
            ReplyMsg(message);
        }
        return taken;
    }

    static SDL_Renderer *renderer() { return SDL_GetRenderer(host::picture_window()); }

    /// The window's top left pixel, as 0xRRGGBB.
    static std::uint32_t shown() {
        const SDL_Rect corner{0, 0, 1, 1};
        std::uint32_t colour = 0;
        EXPECT_EQ(SDL_RenderReadPixels(renderer(), &corner, SDL_PIXELFORMAT_ARGB8888, &colour, sizeof colour),
                  0);
        return colour & 0xFFFFFF;
    }

    static std::uint32_t colour_of(UBYTE level) {
        return std::uint32_t{level} << 16 | static_cast<std::uint32_t>(255 - level) << 8 | 9U;
    }

    static void paint_over(std::uint32_t colour) {
        SDL_SetRenderDrawColor(renderer(), static_cast<Uint8>(colour >> 16), static_cast<Uint8>(colour >> 8),
                               static_cast<Uint8>(colour), SDL_ALPHA_OPAQUE);
        SDL_RenderClear(renderer());
    }

    static void add(Uint32 type, SDL_WindowEventID kind = SDL_WINDOWEVENT_NONE) {
        SDL_Event event{};
        event.type = type;
        event.window.event = static_cast<Uint8>(type == SDL_WINDOWEVENT ? kind : 0);
        ASSERT_EQ(SDL_PeepEvents(&event, 1, SDL_ADDEVENT, 0, 0), 1);
    }

    static void add_key(SDL_Keycode symbol) {
        SDL_Event event{};
        event.type = SDL_KEYDOWN;
        event.key.keysym.sym = symbol;
        ASSERT_EQ(SDL_PeepEvents(&event, 1, SDL_ADDEVENT, 0, 0), 1);
    }

    static void drop_events() { SDL_FlushEvents(SDL_FIRSTEVENT, SDL_LASTEVENT); }

    static double seconds_since(Uint64 start) {
        return static_cast<double>(SDL_GetPerformanceCounter() - start) /
               static_cast<double>(SDL_GetPerformanceFrequency());
    }

    Library *library = nullptr;
    Screen *screen = nullptr;
    Window *window = nullptr;
};

using Events = std::vector<std::pair<ULONG, int>>;
const Events escape{{IDCMP_VANILLAKEY, 27}};

TEST_F(Calls, WrittenFrameIsShownInItsColours) {
    open();
    write_frame(200);
    messages();
    EXPECT_EQ(shown(), colour_of(200));
}

TEST_F(Calls, FrameIsShownOnce) {
    open();
    write_frame(200);
    messages();
    paint_over(0x123456);
    messages();
    EXPECT_EQ(shown(), 0x123456U);
    write_frame(200);
    messages();
    EXPECT_EQ(shown(), colour_of(200));
}

TEST_F(Calls, UnshownFrameIsForgottenWithItsScreen) {
    open();
    write_frame(200);
    close();
    open();
    paint_over(0x123456);
    messages();
    EXPECT_EQ(shown(), 0x123456U);
}

TEST_F(Calls, FirstScreenBufferIsTheScreensAndOthersAreSeparate) {
    open();
    ScreenBuffer *first = AllocScreenBuffer(screen, nullptr, SB_SCREEN_BITMAP);
    ScreenBuffer *second = AllocScreenBuffer(screen, nullptr, 0);
    ScreenBuffer *third = AllocScreenBuffer(screen, nullptr, 0);
    EXPECT_EQ(first->sb_BitMap, window->RPort->BitMap);
    EXPECT_NE(second->sb_BitMap, first->sb_BitMap);
    EXPECT_NE(third->sb_BitMap, first->sb_BitMap);
    EXPECT_NE(third->sb_BitMap, second->sb_BitMap);
    for (ScreenBuffer *buffer : {first, second, third}) {
        FreeScreenBuffer(screen, buffer);
    }
}

TEST_F(Calls, CurrentScreenBufferIsShown) {
    open();
    ScreenBuffer *first = AllocScreenBuffer(screen, nullptr, SB_SCREEN_BITMAP);
    ScreenBuffer *second = AllocScreenBuffer(screen, nullptr, 0);
    write_frame(first->sb_BitMap, 100);
    write_frame(second->sb_BitMap, 200);
    EXPECT_NE(ChangeScreenBuffer(screen, second), 0U);
    messages();
    EXPECT_EQ(shown(), colour_of(200));
    ChangeScreenBuffer(screen, first);
    write_frame(first->sb_BitMap, 100);
    messages();
    EXPECT_EQ(shown(), colour_of(100));
    FreeScreenBuffer(screen, second);
    FreeScreenBuffer(screen, first);
}

TEST_F(Calls, RequestToQuitArrivesAsOneEscape) {
    open();
    host::request_quit();
    write_frame(0);
    EXPECT_EQ(messages(), escape);
    write_frame(0);
    EXPECT_EQ(messages(), Events{});
}

TEST_F(Calls, EndOfTheDisplayServerIsARequestToQuit) {
    open();
    add(SDL_QUIT);
    write_frame(0);
    EXPECT_EQ(messages(), escape);
}

TEST_F(Calls, ClosingTheWindowDropsWaitingAndHeldEvents) {
    open();
    write_frame(0);
    messages();
    add_key(SDLK_UP);
    add_key(SDLK_DOWN);
    write_frame(0);
    EXPECT_NE(GetMsg(window->UserPort), nullptr);
    close();
    EXPECT_EQ(host::state.messages.size(), 0U);
    open();
    EXPECT_EQ(messages(), Events{});
}

TEST_F(Calls, RequesterIsCancelledByARequestToQuitAndByTheEndOfTheDisplayServer) {
    open();
    drop_events();
    EXPECT_EQ(host::order_to_requester(), host::Order::wait);
    add(SDL_QUIT);
    EXPECT_EQ(host::order_to_requester(), host::Order::cancel);
    host::quit_requested = 0;
    EXPECT_EQ(host::order_to_requester(), host::Order::wait);
    host::request_quit();
    add(SDL_WINDOWEVENT, SDL_WINDOWEVENT_FOCUS_GAINED);
    EXPECT_EQ(host::order_to_requester(), host::Order::cancel);
}

TEST_F(Calls, RequesterComesForwardOnceWhenTheViewerGetsTheFocus) {
    open();
    drop_events();
    add(SDL_WINDOWEVENT, SDL_WINDOWEVENT_FOCUS_GAINED);
    add(SDL_WINDOWEVENT, SDL_WINDOWEVENT_MOVED);
    EXPECT_EQ(host::order_to_requester(), host::Order::come_forward);
    EXPECT_EQ(host::order_to_requester(), host::Order::wait);
}

TEST_F(Calls, ModeRequesterBeginsWithTheLastScreen) {
    open(3);
    const ScreenModeRequester initial = host::hooks.initial_mode();
    EXPECT_EQ(initial.sm_DisplayID, 3U);
    EXPECT_EQ(initial.sm_DisplayWidth, 160U);
    EXPECT_EQ(initial.sm_DisplayHeight, 120U);
    close();
    testing::internal::CaptureStderr();
    EXPECT_EQ(open_screen(9, 320, 256), nullptr);
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(host::hooks.initial_mode().sm_DisplayID, 3U);
}

TEST_F(Calls, ImpossibleValuesOfAScreenAreNamed) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(open_screen(9, 0, 16385), nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "zelvo: no display mode 9\n"
              "zelvo: no screen has a width of 0, only of 1 to 16384\n"
              "zelvo: no screen has a height of 16385, only of 1 to 16384\n");
}

TEST_F(Calls, DisplayIsDisconnectedWithTheLastLibrary) {
    Library *other = OpenLibrary("graphics.library", 39);
    open();
    close();
    CloseLibrary(other);
    EXPECT_NE(SDL_WasInit(SDL_INIT_VIDEO), 0U);
    CloseLibrary(library);
    EXPECT_EQ(SDL_WasInit(SDL_INIT_VIDEO), 0U);
    library = OpenLibrary("intuition.library", 39);
}

TEST_F(Calls, DrawingContextKeepsPenModeAndPlace) {
    RastPort context{};
    InitRastPort(&context);
    SetAPen(&context, 7);
    SetDrMd(&context, 3);
    Move(&context, 11, 22);
    EXPECT_EQ(context.FgPen, 7);
    EXPECT_EQ(context.BgPen, 0);
    EXPECT_EQ(context.DrawMode, 3);
    EXPECT_EQ(context.cp_x, 11);
    EXPECT_EQ(context.cp_y, 22);
    Text(&context, "abc", 2);
    EXPECT_EQ(context.cp_x, 11 + 2 * 8);
}

TEST_F(Calls, NameOfTheObjectHasNoBlanks) {
    sdl::set_up({{"my objects/a%20b.lwo"}, {}});
    std::array<ArgumentSlot, 1> slots{};
    RDArgs *arguments = ReadArgs("FILE/A", slots.data(), nullptr);
    ASSERT_NE(arguments, nullptr);
    EXPECT_STREQ(reinterpret_cast<const char *>(slots[0]), "my%20objects/a%2520b.lwo");
    FreeArgs(arguments);
}

TEST_F(Calls, OnlyALoadedSettingsFileIsRemembered) {
    const TemporaryFiles files;
    const std::filesystem::path folder(files.folder());
    setenv("XDG_CONFIG_HOME", folder.c_str(), 1);
    std::filesystem::create_directory(folder / "zelvo");
    const std::string settings = (folder / "zelvo" / "Zelvo.vars").string();
    const std::string texture = (folder / "texture").string();
    std::ofstream{texture} << "x";

    std::FILE *file = open_file("ENVARC:Zelvo.vars", "w");
    ASSERT_NE(file, nullptr);
    std::fclose(file);
    EXPECT_EQ(host::settings_path, "");
    for (const char *name : {"ENVARC:Zelvo.vars", texture.c_str()}) {
        file = open_file(name, "r");
        ASSERT_NE(file, nullptr);
        std::fclose(file);
        EXPECT_EQ(host::settings_path, settings);
    }
    unsetenv("XDG_CONFIG_HOME");
}

TEST_F(Calls, ScreenSaverMayStartWhileTheViewerRuns) {
    open();
    EXPECT_EQ(SDL_IsScreenSaverEnabled(), SDL_TRUE);
}

TEST_F(Calls, PassesAndWaitsKeepToTheDisplaysRate) {
    // At most 60 per second, even on a slow machine. The first two need not wait.
    open();
    const Uint64 start = SDL_GetPerformanceCounter();
    for (int pass = 0; pass < 12; ++pass) {
        write_frame(0);
        messages();
    }
    EXPECT_GE(seconds_since(start), 10 / 60.0 - 0.001);
    const Uint64 middle = SDL_GetPerformanceCounter();
    for (int wait = 0; wait < 12; ++wait) {
        WaitTOF();
    }
    EXPECT_GE(seconds_since(middle), 10 / 60.0 - 0.001);
}

TEST_F(Calls, PassOfAHiddenWindowIsNotShownAndTakesAQuarterOfASecond) {
    open();
    write_frame(0);
    messages();
    paint_over(0x123456);
    SDL_HideWindow(host::picture_window());
    // A waiting event would end the wait early.
    SDL_PumpEvents();
    drop_events();
    const Uint64 start = SDL_GetPerformanceCounter();
    write_frame(200);
    messages();
    // SDL counts whole milliseconds.
    EXPECT_GE(seconds_since(start), 0.24);
    EXPECT_EQ(shown(), 0x123456U);
}

bool is_hidden() {
    return (SDL_GetWindowFlags(host::picture_window()) & SDL_WINDOW_HIDDEN) != 0;
}

TEST_F(Calls, FullScreenMakesRoomForARequesterAndAWindowStays) {
    for (const ULONG mode : {0, 1}) {
        open(mode);
        EXPECT_FALSE(is_hidden());
        host::make_room_for_requester();
        EXPECT_EQ(is_hidden(), mode == 0);
        host::return_from_requester();
        EXPECT_FALSE(is_hidden());
        close();
    }
}

} // namespace
