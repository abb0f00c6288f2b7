// SPDX-License-Identifier: MIT
// The program's commands: what the user sees of each, and the key that stands for it. The drawer's buttons and the list
// of keys are made of it.
export const ESCAPE = 27;

/** Raw codes of the cursor keys, by their names in keyboard events. */
export const CURSOR_KEYS = { ArrowUp: 0x4c, ArrowDown: 0x4d, ArrowRight: 0x4e, ArrowLeft: 0x4f };

/** Names of the modes, by their numbers. */
export const MODES = ['effect', 'envmap', 'texturemap', 'lightsourced', 'phong', 'z-light', 'dots'];

/** The numbers that zelvo_state returns, in their order. */
export const STATE = ['mode', 'clear', 'spin', 'dots', 'fps', 'flip', 'doubleside', 'light'];

// A command has a character, a raw key or, for the next mode, the right button. `flag` names what makes its button pressed.
export const COMMANDS = [
    { id: 'next-mode', keys: ['right button'], label: 'Next mode', help: 'next render mode, 1 to 6', button: true },
    { id: 'spin-up', keys: ['→'], label: 'Spin faster', raw: 0x4e, help: 'spin faster, up to 4.0' },
    { id: 'spin-down', keys: ['←'], label: 'Spin slower', raw: 0x4f, help: 'spin slower, and the other way round, down to -4.0' },
    { id: 'spin-stop', character: 'r', label: 'Stop', help: 'stop the spin' },

    { id: 'effect', group: 'Drawing', character: 'e', label: 'Effect', help: 'the dots effect, mode 0' },
    { id: 'clear', group: 'Drawing', character: 'b', label: 'Blur', help: 'how a frame begins: cleared, faded, blurred, blurred and rising' },
    { id: 'dots', group: 'Drawing', character: 'p', label: 'Dots', flag: 'dots', help: "glowing dots at the object's points" },
    { id: 'brighter', group: 'Drawing', keys: ['↑'], raw: 0x4c, label: 'Brighter dots', help: 'brighter dots' },
    { id: 'darker', group: 'Drawing', keys: ['↓'], raw: 0x4d, label: 'Darker dots', help: 'darker dots' },
    { id: 'flip', group: 'Drawing', character: 'i', label: 'Flip', flag: 'flip', help: 'flip the polygons, for objects whose faces point inwards' },
    { id: 'doubleside', group: 'Drawing', character: 'd', label: 'Both sides', flag: 'doubleside', help: 'show both sides of every polygon' },
    { id: 'light', group: 'Drawing', character: 'l', label: 'Move the light', flag: 'light', help: 'the mouse turns the light instead of the object (lightsourced and phong)' },
    { id: 'fps', group: 'Drawing', character: 'f', label: 'Frame rate', flag: 'fps', help: 'frame-rate counter on and off' },
    { id: 'c2p', character: 'c', label: 'Conversion', help: 'announces another pixel conversion, and changes nothing' },

    { id: 'red-down', group: 'Colour', character: '1', label: 'Red −', help: 'red gamma down' },
    { id: 'red-up', group: 'Colour', character: '4', label: 'Red +', help: 'red gamma up' },
    { id: 'green-down', group: 'Colour', character: '2', label: 'Green −', help: 'green gamma down' },
    { id: 'green-up', group: 'Colour', character: '5', label: 'Green +', help: 'green gamma up' },
    { id: 'blue-down', group: 'Colour', character: '3', label: 'Blue −', help: 'blue gamma down' },
    { id: 'blue-up', group: 'Colour', character: '6', label: 'Blue +', help: 'blue gamma up' },
    { id: 'grey', group: 'Colour', character: '0', label: 'Grey', help: 'all gammas back to 1.0' },

    { id: 'texture', group: 'Program', character: 't', label: 'Texture', help: 'choose another texture' },
    { id: 'screen', group: 'Program', character: 'm', label: 'Screen mode', help: 'choose another screen mode' },
    { id: 'save', group: 'Program', character: 'S', label: 'Keep settings', help: 'save the settings for good' },
    { id: 'load', group: 'Program', character: 'W', label: 'Load settings', help: 'load the settings that were saved for good' },
    { id: 'save-session', character: 's', label: 'Keep for now', help: 'save the settings for this visit' },
    { id: 'load-session', character: 'w', label: 'Load those', help: 'load the settings of this visit' },
    { id: 'reset', group: 'Program', character: 'R', label: 'Defaults', help: 'settings back to their defaults' },
    { id: 'quit', group: 'Program', keys: ['Esc', 'q', 'x', 'left button'], code: ESCAPE, label: 'Quit', help: 'quit; the left button once the picture has the pointer' },
];
