// SPDX-License-Identifier: MIT
// Small pictures of objects, drawn by the program itself.
import { fileNames, readFile, SESSION_SETTINGS } from './files.js';
import { begin, makeInstance } from './run.js';
import { settingsText } from './settings_text.js';

const WIDTH = 160;
const HEIGHT = 128;

// The message line has gone from the picture after this time.
const SECONDS = 3;

const SETTINGS = new TextEncoder().encode(settingsText({ width: WIDTH, height: HEIGHT }));

/** Runs the program on an object for three passes: the third shows what a mouse movement in the first did. A canvas. */
async function draw(name) {
    const canvas = document.createElement('canvas');
    canvas.width = WIDTH;
    canvas.height = HEIGHT;
    const page = {
        print() {},
        announce() {},
        openPicture() {},
        closePicture() {},
        showPicture(pixels) {
            const bytes = new Uint8ClampedArray(page.instance.HEAPU8.buffer, pixels, 4 * WIDTH * HEIGHT);
            canvas.getContext('2d').putImageData(new ImageData(bytes, WIDTH, HEIGHT), 0, 0);
        },
        askForFile: () => Promise.resolve(null),
        askForMode: () => Promise.resolve(null),
        readFile: (file) => (file === SESSION_SETTINGS ? SETTINGS : readFile(file)),
        writeFile: () => 'not from here',
    };
    page.instance = await makeInstance(page);
    await begin(page.instance, name);
    page.instance._web_move(-16, -24);
    for (let pass = 0; pass < 3; ++pass) {
        page.instance._zelvo_pass(SECONDS);
    }
    return canvas;
}

// The pictures that were drawn, or are being drawn, by the bytes of their objects.
const pictures = new WeakMap();

// The last picture that was asked for: one at a time is drawn.
let last = Promise.resolve();

/** The picture of an object, null if the program cannot show it. */
function pictureOf(name) {
    const bytes = readFile(name);
    if (!pictures.has(bytes)) {
        last = last.then(() => draw(name)).catch(() => null);
        pictures.set(bytes, last);
    }
    return pictures.get(bytes);
}

/** What can be chosen where an object is asked for. */
export function objectChoices() {
    return fileNames('').filter((name) => !name.toLowerCase().endsWith('.chunky')).map((name) => ({
        name: name.replace(/\.lwob?$/i, '').replaceAll('_', ' '),
        path: `/${name}`,
        picture: () => pictureOf(name),
    }));
}

/** What can be chosen where a texture is asked for. */
export function textureChoices() {
    return fileNames('.chunky').map((name) => ({ name, path: `/${name}`, picture: null }));
}
