// SPDX-License-Identifier: MIT
// node golden_frames.js BIN FRAMES [CASE...]: compares every frame that the page's module in the folder BIN draws with the
// golden ones, whose pictures are unpacked in the folder FRAMES. Prints how many are equal.
import { readFileSync } from 'node:fs';
import { createRequire } from 'node:module';
import { dirname, join, resolve } from 'node:path';
import { fileURLToPath } from 'node:url';
import { goldenCases, goldenFrames } from './golden.js';

const [bin, frames, ...wanted] = process.argv.slice(2).map((word, i) => (i < 2 ? resolve(word) : word));
const golden = join(dirname(fileURLToPath(import.meta.url)), '../golden');
const make = createRequire(import.meta.url)(join(bin, 'zelvo.js'));
const wasmBinary = readFileSync(join(bin, 'zelvo.wasm'));
const makeInstance = (page) => make({ page, wasmBinary, print() {}, printErr: console.error });

let compared = 0;
for (const each of goldenCases(readFileSync(join(golden, 'cases.txt'), 'utf8'))) {
    if (wanted.length > 0 && !wanted.includes(each.name)) {
        continue;
    }
    const drawn = await goldenFrames(makeInstance, each, {
        'object.lwo': readFileSync(join(golden, 'objects', `${each.object}.lwo`)),
        'Zelvo_envmap.chunky': readFileSync(join(golden, 'envmap.chunky')),
        script: readFileSync(join(golden, 'scripts', `${each.script}.txt`), 'utf8'),
    });
    const header = Buffer.from(`P5\n${each.width} ${each.height}\n255\n`);
    const expected = readFileSync(join(frames, `${each.name}.pgm`));
    const actual = Buffer.concat(drawn.flatMap((pixels) => [header, pixels]));
    if (Buffer.compare(actual, expected) !== 0) {
        const at = actual.findIndex((byte, i) => byte !== expected[i]);
        const bytes = header.length + each.width * each.height;
        console.error(`${each.name} differs first in pass ${Math.floor(at / bytes) + 1}`);
        process.exit(1);
    }
    compared += drawn.length;
}
console.log(compared);
