// SPDX-License-Identifier: MIT
// What the page brings along: compressed, as text, in elements of its own.
import { unpackObject } from './object_packing.js';

/** The files of the data folder that are in the page. */
export const OBJECTS = ['torus_knot', 'chess_pawn', 'cogwheel', 'cut_gem', 'letters', 'sphere'];
export const TEXTURE = 'Zelvo_envmap.chunky';

/** The bytes of one of the page's data elements. */
export async function pageData(name) {
    const text = atob(document.getElementById(`data-${name}`).textContent);
    const compressed = Uint8Array.from(text, (character) => character.charCodeAt(0));
    const stream = new Blob([compressed]).stream().pipeThrough(new DecompressionStream('gzip'));
    return new Uint8Array(await new Response(stream).arrayBuffer());
}

/** The objects and the texture, by their names. */
export async function dataFiles() {
    const files = new Map();
    await Promise.all([
        ...OBJECTS.map(async (name) => files.set(`${name}.lwo`, unpackObject(await pageData(name)))),
        pageData('texture').then((bytes) => files.set(TEXTURE, bytes)),
    ]);
    return files;
}
