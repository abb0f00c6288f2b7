// SPDX-License-Identifier: MIT
// The text of a settings file, as the program reads it.

/** The settings in which every object looks well and stands still, with other values for some of their names. */
export function settingsText(changes = {}) {
    const settings = {
        gammas: '1.000000 1.000000 1.000000', rotate: '0.000000', 'obj style': 1, 'clear style': 0, fps: 0, dots: 0,
        'dot lum': 25600, 'dot lum in blur': 2560, 'internal c2p enabled': 0, 'envmap filename': 'Zelvo_envmap.chunky',
        ModeID: 0, width: 320, height: 256, ...changes,
    };
    const lines = Object.entries(settings).map(([name, value]) => `${name}: ${value}`);
    return [...lines, "*** Please don't edit this file! ***"].join('\n');
}
