// SPDX-License-Identifier: MIT
// Tests of the offscreen host's screens, pictures and events.
#include "platform/intuition.h"
#include "platform/offscreen/host.h"

#include <gtest/gtest.h>

#include <array>
#include <optional>

namespace {

using Lines = std::vector<std::string>;
using Bytes = std::vector<std::uint8_t>;

/// A picture as it was delivered.
struct Seen {
    int pass;
    int width;
    int height;
    Bytes pixels;
    host::Palette palette;
};

class OffscreenDisplay : public testing::Test {
protected:
    OffscreenDisplay() {
        setup.records_calls = true;
        setup.on_frame = [this](const offscreen::Picture &picture) { keep(frames, picture); };
        setup.on_picture = [this](const offscreen::Picture &picture) { keep(pictures, picture); };
    }
    ~OffscreenDisplay() override { offscreen::set_up({}); }

    static void keep(std::vector<Seen> &list, const offscreen::Picture &picture) {
        list.push_back({picture.pass, picture.width, picture.height,
                        Bytes(picture.pixels.begin(), picture.pixels.end()), picture.palette});
    }

    static Screen *open_screen(std::int32_t width, std::int32_t height) {
        const std::array<TagItem, 3> tags{
            {{SA_Width, static_cast<ULONG>(width)}, {SA_Height, static_cast<ULONG>(height)}, {TAG_DONE, 0}}};
        return OpenScreenTagList(nullptr, tags.data());
    }

    /// Starts the host with a screen of 4 x 3 and a context that draws into the screen's bitmap.
    void start() {
        offscreen::set_up(setup);
        screen = open_screen(4, 3);
        buffer = AllocScreenBuffer(screen, nullptr, SB_SCREEN_BITMAP);
        InitRastPort(&context);
        context.BitMap = buffer->sb_BitMap;
    }

    /// Writes a whole frame of one brightness.
    void write_frame(std::uint8_t value) {
        const Bytes pixels(12, value);
        WriteChunkyPixels(&context, 0, 0, 3, 2, pixels.data(), 4);
    }

    /// The codes of all waiting messages. Replies to them.
    static std::string codes_waiting() {
        std::string codes;
        while (Message *message = GetMsg(nullptr)) {
            codes += static_cast<char>(reinterpret_cast<IntuiMessage *>(message)->Code);
            ReplyMsg(message);
        }
        return codes;
    }

    void add_key(int pass, char character) {
        offscreen::Event event;
        event.pass = pass;
        event.message.Class = IDCMP_VANILLAKEY;
        event.message.Code = static_cast<UWORD>(character);
        setup.events.push_back(event);
    }

    offscreen::Setup setup;
    std::vector<Seen> frames;
    std::vector<Seen> pictures;
    Screen *screen = nullptr;
    ScreenBuffer *buffer = nullptr;
    RastPort context{};
};

using OffscreenEvents = OffscreenDisplay;

} // namespace

TEST_F(OffscreenDisplay, ScreensHaveFrom1To16384PixelsEachWay) {
    offscreen::set_up(setup);
    EXPECT_EQ(open_screen(0, 256), nullptr);
    EXPECT_EQ(open_screen(320, 0), nullptr);
    EXPECT_EQ(open_screen(-320, 256), nullptr);
    EXPECT_EQ(open_screen(16385, 1), nullptr);
    EXPECT_EQ(open_screen(1, 16385), nullptr);
    EXPECT_EQ(offscreen::held(), Lines{});
    EXPECT_NE(open_screen(1, 16384), nullptr);
    EXPECT_NE(open_screen(16384, 1), nullptr);
    EXPECT_EQ(offscreen::held(), (Lines{"screen", "screen"}));
}

TEST_F(OffscreenDisplay, TagsAreRecordedByNameAndValue) {
    offscreen::set_up(setup);
    const UWORD pens[] = {0, 3, 0xFFFF};
    const TextAttr font{"topaz.font", 8, 0, 1};
    const std::array<TagItem, 6> tags{{{SA_Width, 320},
                                       {SA_Title, tag_pointer("a title")},
                                       {SA_Pens, tag_pointer(pens)},
                                       {SA_Font, tag_pointer(&font)},
                                       {0x80001234, 5},
                                       {TAG_DONE, 0}}};
    OpenScreenTagList(nullptr, tags.data());
    EXPECT_EQ(offscreen::calls(), Lines{"OpenScreenTagList(SA_Width=320, SA_Title=\"a title\", SA_Pens=0 3, "
                                        "SA_Font=topaz.font/8/0/1, 0x80001234=5)"});
}

TEST_F(OffscreenDisplay, ListsWhatIsOpenUntilItIsClosed) {
    start();
    const std::array<TagItem, 2> tags{{{WA_CustomScreen, tag_pointer(screen)}, {TAG_DONE, 0}}};
    Window *window = OpenWindowTagList(nullptr, tags.data());
    ASSERT_NE(window, nullptr);
    EXPECT_NE(window->RPort->BitMap, nullptr);
    EXPECT_EQ(offscreen::held(), (Lines{"screen", "screen buffer", "window"}));
    FreeScreenBuffer(screen, buffer);
    CloseWindow(window);
    CloseScreen(screen);
    EXPECT_EQ(offscreen::held(), Lines{});
}

TEST_F(OffscreenDisplay, RefusedOpensReturnNull) {
    setup.refused = {"OpenScreenTagList#2", "OpenWindowTagList", "AllocScreenBuffer#2"};
    start();
    EXPECT_EQ(open_screen(320, 256), nullptr);
    const std::array<TagItem, 2> tags{{{WA_CustomScreen, tag_pointer(screen)}, {TAG_DONE, 0}}};
    EXPECT_EQ(OpenWindowTagList(nullptr, tags.data()), nullptr);
    EXPECT_EQ(AllocScreenBuffer(screen, nullptr, 0), nullptr);
    EXPECT_EQ(offscreen::held(), (Lines{"screen", "screen buffer"}));
}

TEST_F(OffscreenDisplay, FramesAreDeliveredExactlyAsWritten) {
    start();
    Bytes pixels;
    for (std::uint8_t value = 1; value <= 12; ++value) {
        pixels.push_back(value);
    }
    WriteChunkyPixels(&context, 0, 0, 3, 2, pixels.data(), 4);
    ASSERT_EQ(frames.size(), 1U);
    EXPECT_EQ(frames[0].pass, 1);
    EXPECT_EQ(frames[0].width, 4);
    EXPECT_EQ(frames[0].height, 3);
    EXPECT_EQ(frames[0].pixels, pixels);
    EXPECT_EQ(offscreen::current_pass(), 1);
}

TEST_F(OffscreenDisplay, FrameLargerThanTheScreenIsDeliveredWholeAndShownClipped) {
    start();
    Bytes pixels(6 * 5);
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        pixels[i] = static_cast<std::uint8_t>(i);
    }
    WriteChunkyPixels(&context, 0, 0, 5, 4, pixels.data(), 6);
    codes_waiting();
    EXPECT_EQ(frames[0].pixels, pixels);
    EXPECT_EQ(frames[0].width, 6);
    EXPECT_EQ(frames[0].height, 5);
    EXPECT_EQ(pictures[0].pixels, (Bytes{0, 1, 2, 3, 6, 7, 8, 9, 12, 13, 14, 15}));
}

TEST_F(OffscreenDisplay, PictureIsDeliveredOncePerPassWithTheTextsOverTheFrame) {
    start();
    codes_waiting();
    EXPECT_TRUE(pictures.empty()) << "there is nothing to show before the first frame";
    write_frame(5);
    SetAPen(&context, 9);
    SetDrMd(&context, JAM2);
    // The cell's second row is in the screen's first row. The cell's first two columns are black.
    Move(&context, -4, 5);
    Text(&context, "I", 1);
    codes_waiting();
    codes_waiting();
    ASSERT_EQ(pictures.size(), 1U);
    EXPECT_EQ(pictures[0].pass, 1);
    EXPECT_EQ(pictures[0].width, 4);
    EXPECT_EQ(pictures[0].height, 3);
    EXPECT_EQ(frames[0].pixels, Bytes(12, 5));
    EXPECT_NE(pictures[0].pixels, Bytes(12, 5));
    write_frame(6);
    codes_waiting();
    ASSERT_EQ(pictures.size(), 2U);
    EXPECT_EQ(pictures[1].pass, 2);
    EXPECT_EQ(pictures[1].pixels, Bytes(12, 6));
}

TEST_F(OffscreenDisplay, PictureHasTheScreensPalette) {
    start();
    const std::array<ULONG, 5> table{1U << 16 | 5, 0x10000000, 0x20000000, 0x30000000, 0};
    LoadRGB32(&screen->ViewPort, table.data());
    write_frame(5);
    codes_waiting();
    EXPECT_EQ(frames[0].palette[5], (host::Colour{0x10, 0x20, 0x30}));
    EXPECT_EQ(pictures[0].palette[5], (host::Colour{0x10, 0x20, 0x30}));
}

TEST_F(OffscreenDisplay, PictureShowsTheScreensCurrentBuffer) {
    start();
    ScreenBuffer *second = AllocScreenBuffer(screen, nullptr, 0);
    ASSERT_NE(second->sb_BitMap, buffer->sb_BitMap);
    write_frame(5);
    EXPECT_NE(ChangeScreenBuffer(screen, second), 0U);
    codes_waiting();
    EXPECT_EQ(pictures[0].pixels, Bytes(12)) << "the second buffer starts black";
    ChangeScreenBuffer(screen, buffer);
    write_frame(6);
    codes_waiting();
    EXPECT_EQ(pictures[1].pixels, Bytes(12, 6));
}

TEST_F(OffscreenEvents, ArriveInTheInputStepOfTheirPassInOrder) {
    add_key(1, 'a');
    add_key(1, 'b');
    add_key(3, 'c');
    start();
    write_frame(0);
    EXPECT_EQ(codes_waiting(), "ab");
    write_frame(0);
    EXPECT_EQ(codes_waiting(), "");
    write_frame(0);
    EXPECT_EQ(codes_waiting(), "c");
}

TEST_F(OffscreenEvents, EscapeFollowsTheOtherEventsOfTheLastPassOnce) {
    add_key(2, 'a');
    add_key(2, 'b');
    setup.last_pass = 2;
    start();
    write_frame(0);
    EXPECT_EQ(codes_waiting(), "");
    write_frame(0);
    EXPECT_EQ(codes_waiting(), "ab\x1B");
    EXPECT_EQ(codes_waiting(), "");
}

TEST_F(OffscreenEvents, WithoutALastPassNoEscapeArrives) {
    start();
    for (int pass = 0; pass < 5; ++pass) {
        write_frame(0);
        EXPECT_EQ(codes_waiting(), "");
    }
}

TEST_F(OffscreenEvents, RequestedQuitArrivesInTheNextInputStep) {
    setup.last_pass = 100;
    start();
    write_frame(0);
    EXPECT_EQ(codes_waiting(), "");
    offscreen::request_quit();
    EXPECT_EQ(codes_waiting(), "\x1B");
}

TEST_F(OffscreenEvents, QuitRequestedInAnEarlierRunIsForgotten) {
    start();
    offscreen::request_quit();
    start();
    write_frame(0);
    EXPECT_EQ(codes_waiting(), "");
}

TEST_F(OffscreenEvents, ProgramThatIgnoresEscapeIsEnded) {
    setup.last_pass = 1;
    start();
    write_frame(0);
    EXPECT_EQ(codes_waiting(), "\x1B");
    EXPECT_DEATH(write_frame(0), "the program goes on after Esc");
}

TEST_F(OffscreenEvents, AreListedUntilTheyAreRepliedTo) {
    add_key(1, 'a');
    start();
    write_frame(0);
    Message *message = GetMsg(nullptr);
    EXPECT_EQ(offscreen::held(), (Lines{"screen", "screen buffer", "message"}));
    ReplyMsg(message);
    EXPECT_EQ(offscreen::held(), (Lines{"screen", "screen buffer"}));
}
