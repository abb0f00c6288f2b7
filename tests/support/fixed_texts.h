// SPDX-License-Identifier: MIT
// The texts that the program prints. They never change.
#pragma once

#include <array>
#include <string>
#include <vector>

/// Printed when the screen-mode requester was confirmed with its default, and when a display is closed.
inline constexpr char default_display_line[] = "display parameters: 0x00000000, 320, 256\n";
inline constexpr char display_closed_line[] = "changescreenbuffer done\n";

/// A text for each array of an object and for the two arrays after it, in the order of their allocation.
inline const std::vector<std::string> object_array_texts{
    "Couldn't allocate PNTS chunk memory\n",   "Couldn't allocate POLS chunk memory\n",
    "Couldn't allocate *lwopoints2 memory\n",  "Couldn't allocate *lwopoints3 memory\n",
    "Couldn't allocate *lwonormals2 memory\n", "Couldn't allocate *lwonormals3 memory\n",
    "Couldn't allocate *lwofis memory\n",
};
inline const std::vector<std::string> texture_and_dot_texts{
    "Couldn't allocate envmap filebuffer memory\n",
    "Couldn't allocate 'dot' memory\n",
};

/// A text for each frame buffer, in the order of their allocation.
inline const std::vector<std::string> frame_buffer_texts{
    "Couldn't allocate *chunkybuf1 memory\n", "Couldn't allocate *chunkybuf2 memory\n",
    "Couldn't allocate *zbuf memory\n",       "Couldn't allocate *planarbuf1 memory\n",
    "Couldn't allocate *planarbuf2 memory\n",
};

/// A system library, and the text with which a start without it ends. In the order in which they are opened.
struct LibraryText {
    const char *library;
    const char *text;
};
inline constexpr std::array<LibraryText, 4> library_texts{{
    {"graphics.library", "Couldn't open Gfx V39\n"},
    {"intuition.library", "Couldn't open Intuition V39\n"},
    {"lowlevel.library", "Couldn't open LowLevel V39\n"},
    {"asl.library", "Couldn't open Asl V38\n"},
}};

inline constexpr char no_filename_text[] = "No filename given\n";
inline constexpr char no_file_text[] = "File open error\n";
inline constexpr char no_object_text[] = "This is not a(n) LW object\n";
inline constexpr char no_polygons_text[] = "nincs polygon az objektben!\n";
inline constexpr char no_texture_text[] = "envmap file open error\n";
inline constexpr char no_screen_text[] = "Couldn't open screen\n";
inline constexpr char no_window_text[] = "Couldn't open window\n";
/// Printed twice: first as a line, then without a line end as the last text.
inline constexpr char no_screen_buffer_text[] = "AllocScreenBuffer() failed";

/// The lists in sequence.
inline std::vector<std::string> joined(const std::vector<std::vector<std::string>> &lists) {
    std::vector<std::string> all;
    for (const std::vector<std::string> &list : lists) {
        all.insert(all.end(), list.begin(), list.end());
    }
    return all;
}

/// Every text that the program can end with.
inline std::vector<std::string> fatal_texts() {
    std::vector<std::string> texts =
        joined({object_array_texts,
                texture_and_dot_texts,
                frame_buffer_texts,
                {no_filename_text, no_file_text, no_object_text, no_polygons_text, no_texture_text,
                 no_screen_text, no_window_text, no_screen_buffer_text}});
    for (const LibraryText &library : library_texts) {
        texts.emplace_back(library.text);
    }
    return texts;
}
