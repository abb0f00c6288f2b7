// SPDX-License-Identifier: MIT
// The page's icon: the knot, drawn by the program.
import { readFileSync } from 'node:fs';
import { createRequire } from 'node:module';
import { join } from 'node:path';
import { deflateSync } from 'node:zlib';

/** The checksum of a PNG's chunk. */
function crc(bytes) {
    let value = 0xffffffff;
    for (const byte of bytes) {
        value ^= byte;
        for (let bit = 0; bit < 8; ++bit) {
            value = value >>> 1 ^ (value & 1 ? 0xedb88320 : 0);
        }
    }
    return ~value >>> 0;
}

function chunk(name, data) {
    const bytes = Buffer.concat([Buffer.from(name), data]);
    const result = Buffer.alloc(bytes.length + 8);
    result.writeUInt32BE(data.length, 0);
    bytes.copy(result, 4);
    result.writeUInt32BE(crc(bytes), bytes.length + 4);
    return result;
}

/** A PNG of a square of grey levels. */
function png(levels, side) {
    const header = Buffer.alloc(13);
    header.writeUInt32BE(side, 0);
    header.writeUInt32BE(side, 4);
    header[8] = 8;
    const rows = Buffer.alloc((side + 1) * side);
    for (let y = 0; y < side; ++y) {
        rows.set(levels.subarray(y * side, (y + 1) * side), y * (side + 1) + 1);
    }
    return Buffer.concat([
        Buffer.from([0x89, 0x50, 0x4e, 0x47, 0x0d, 0x0a, 0x1a, 0x0a]),
        chunk('IHDR', header), chunk('IDAT', deflateSync(rows, { level: 9 })), chunk('IEND', Buffer.alloc(0)),
    ]);
}

/** The icon as a PNG with sides of so many pixels, by the module in the folder `bin` and the files of the folder `data`. */
export async function makeIcon(bin, data, side) {
    const make = createRequire(import.meta.url)(join(bin, 'zelvo.js'));
    const instance = await make({
        wasmBinary: readFileSync(join(bin, 'zelvo.wasm')),
        print() {},
        page: {
            announce() {},
            openPicture() {},
            closePicture() {},
            showPicture() {},
            askForMode: () => Promise.resolve([0, side, side]),
            readFile(name) {
                return name.startsWith('ENV') ? null : readFileSync(join(data, name));
            },
        },
    });
    instance._zelvo_begin(instance.allocateUTF8('torus_knot.lwo'));
    await instance.Asyncify.whenDone();
    instance._zelvo_pass(0);
    instance._zelvo_pass(0);
    const at = instance._zelvo_frame();
    return png(instance.HEAPU8.slice(at, at + side * side), side);
}
