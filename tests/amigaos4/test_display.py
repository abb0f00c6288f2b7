# SPDX-License-Identifier: MIT
"""Tests every call of a short run, in order: how the display is opened, filled, used and closed."""
from amigaos4 import ProgramTest

# Tags are numbers after TAG_USER: 23 is SA_Width, 6a is WA_IDCMP.
OPENED = """\
OpenScreenTagList 32=29004 34=1 23=140 24=100 25=8 39=1 3a=set 28=set 36=0 38=1 42=1 2b=set
  title "<Esc> to quit.", font topaz.font 8 0 1
  pens 0 1 1 2 1 3 2 0 2 1 2 1
OpenWindowTagList 89=1 86=1 6a=300418 88=1 8a=1 8e=1 70=set 8a=1 87=1
AllocScreenBuffer 1
AllocScreenBuffer 0
AllocScreenBuffer 0
InitRastPort
SetAPen 255
SetDrMd 1
LoadRGB32 256 from 0: first 00000000, last ff000000, end 0
SetPointer 16 x 2 at 0,0, 0 words not zero
"""

PASSES = """\
WriteChunkyPixels 0,0 to 319,255, 320 a row, bitmap 320 x 256
Text at 1 10: "Zelvo"
Text at 1 246: "fps:25.60 "
GetMsg: class 0x8 code 0x69 move 0 0
ReplyMsg
GetMsg: class 0x10 code 0x0 move -3 7
ReplyMsg
GetMsg: class 0x400 code 0x4e move 0 0
ReplyMsg
GetMsg: none
WriteChunkyPixels 0,0 to 319,255, 320 a row, bitmap 320 x 256
Text at 1 10: "rotate=0.1"
Text at 1 246: "fps:38.40 "
GetMsg: class 0x200000 code 0x1b move 0 0
ReplyMsg
GetMsg: none
"""

CLOSED = """\
FreeArgs
ChangeScreenBuffer
WaitTOF
WaitTOF
FreeScreenBuffer
FreeScreenBuffer
FreeScreenBuffer
CloseWindow
CloseScreen
"""

SCRIPT = """\
answer mode 0x29004 320 256
1 button right
1 move -3 7
1 rawkey 0x4E
2 key 0x1B
"""


class Display(ProgramTest):
    def test_is_opened_filled_steered_and_closed_call_by_call(self):
        run = self.run_program("cube.lwo", script=SCRIPT)
        self.assertEqual(run.code, 0)
        first = run.calls.index("FreeAslRequest") + 1
        last = run.calls.index("DropInterface asl.library")
        self.assertEqual("\n".join(run.calls[first:last]) + "\n", OPENED + PASSES + CLOSED)
        self.assertEqual(run.still_held(), [])

    def test_ends_with_the_statistics_of_the_run(self):
        run = self.run_program("cube.lwo", script=SCRIPT)
        self.assertEqual(run.output, "display parameters: 0x00029004, 320, 256\n"
                                     "number of frames: 2\n"
                                     "all time: 0.031250  average frametime: 0.015625\n"
                                     "average framerate: 64.000000 fps\n"
                                     "changescreenbuffer done\n")

    def test_is_opened_again_in_another_mode(self):
        run = self.run_program("cube.lwo", script="answer mode 1 320 256\nanswer mode 2 100 75\n"
                                                  "1 key m\n2 key t\nanswer cancel\n3 key q\n")
        self.assertEqual(run.code, 0)
        self.assertEqual([line.split()[1] for line in run.named("OpenScreenTagList")], ["32=1", "32=2"])
        self.assertEqual([line.split(",")[1] for line in run.named("WriteChunkyPixels")],
                         ["0 to 319", "0 to 99", "0 to 99"])
        self.assertEqual(run.still_held(), [])
