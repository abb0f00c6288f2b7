// SPDX-License-Identifier: MIT
// All golden frames in a browser, by both modules of the page.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { readFileSync } from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';
import { ROOT, useBrowser } from './browser.js';
import { goldenCases } from './golden.js';

const used = useBrowser();
const golden = join(ROOT, 'tests/golden');

/** A hash of bytes, the same here and in a browser. */
function hash(bytes) {
    let value = 0x811c9dc5;
    for (const byte of bytes) {
        value = Math.imul(value ^ byte, 0x01000193);
    }
    return value >>> 0;
}

function expectedHashes(each) {
    const pictures = execFileSync('xz', ['-dc', join(golden, `frames/${each.name}.pgm.xz`)], { maxBuffer: 1 << 30 });
    const header = `P5\n${each.width} ${each.height}\n255\n`.length;
    const size = header + each.width * each.height;
    return Array.from({ length: each.passes }, (_, i) => hash(pictures.subarray(i * size + header, (i + 1) * size)));
}

const base64 = (path) => readFileSync(path).toString('base64');

for (const preset of ['web', 'web-plain']) {
    test(`all golden frames are equal by the module of ${preset}`, async () => {
        const tab = await used.browser.newPage();
        const bin = join(ROOT, 'build', preset, 'bin');
        await tab.addScriptTag({ content: readFileSync(join(bin, 'zelvo.js'), 'utf8') });
        await tab.addScriptTag({
            type: 'module',
            content: `${readFileSync(join(ROOT, 'tests/web/golden.js'), 'utf8')}
                window.goldenFrames = goldenFrames;
                window.hash = ${hash};`,
        });
        await tab.waitForFunction(() => window.goldenFrames !== undefined);
        await tab.evaluate(async (wasm) => {
            window.bytesOf = (text) => Uint8Array.from(atob(text), (character) => character.charCodeAt(0));
            const module = await WebAssembly.compile(window.bytesOf(wasm));
            window.makeInstance = (page) => window.makeZelvo({
                page,
                instantiateWasm(imports, receive) {
                    WebAssembly.instantiate(module, imports).then(receive);
                    return {};
                },
            });
        }, base64(join(bin, 'zelvo.wasm')));
        const cases = goldenCases(readFileSync(join(golden, 'cases.txt'), 'utf8'));
        assert.ok(cases.length > 0);
        for (const each of cases) {
            const hashes = await tab.evaluate(async (what, object, texture, script) => {
                const frames = await window.goldenFrames(window.makeInstance, what, {
                    'object.lwo': window.bytesOf(object), 'Zelvo_envmap.chunky': window.bytesOf(texture), script,
                });
                return frames.map(window.hash);
            }, each, base64(join(golden, `objects/${each.object}.lwo`)), base64(join(golden, 'envmap.chunky')),
                readFileSync(join(golden, `scripts/${each.script}.txt`), 'utf8'));
            assert.deepEqual(hashes, expectedHashes(each), each.name);
        }
        await tab.close();
    });
}
