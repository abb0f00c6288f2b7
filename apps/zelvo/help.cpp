// SPDX-License-Identifier: MIT
// The options and the keys on one page.
#include "help.h"

const char help_text[] = R"(Usage: zelvo [OPTION...] [OBJECT]
Shows a LightWave object (IFF form LWOB), or asks for one.

  --fullscreen       full screen, without asking for a screen mode
  --window[=FACTOR]  window, each pixel a square of FACTOR pixels: 1 to 4 (2)
  --size WxH         size of the picture, without asking (320x256)
  --env DIR, --envarc DIR  folders of the session's and of lasting settings
  --envmap FILE      texture to open instead of "Zelvo_envmap.chunky"
  --import           convert a model of another format first (zelvo-convert)
  --record FILE      writes the run as an input script for zelvo-render
  -h, --help         this help
  --version          the version (and ? the template of the program)
  -- OBJECT          an object whose name may look like an option

  mouse         tilt                 b  how a frame begins   r    stop the spin
  right button  next mode            d  both sides           R    defaults
  left button, Esc, q, x  quit       e  dots effect          s w  save, load
  right, left   spin                 f  frame rate           S W  same for good
  up, down      brighter dots        i  flip polygons        t    texture
  1 2 3, 4 5 6  gamma; 0 resets it   l  mouse turns light    m    screen mode
  F11           full screen          p  dots over faces      c    conversion
  F12           save the picture     F1 lists all keys       Alt  frees pointer
  Ctrl+O, Page Down, Page Up  open an object, next, previous in the folder
)";
