// SPDX-License-Identifier: MIT
// node page.js: how long a pass takes in this machine's own code (zelvo-render of the preset release, with vectors), and in
// node by the two modules of the page (presets web and web-plain). The times are those that the program itself prints:
// render, write, overlay and input together. The table has the least average of several runs in turn, in microseconds.
import { execFileSync } from 'node:child_process';
import { mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { createRequire } from 'node:module';
import { tmpdir } from 'node:os';
import { dirname, join } from 'node:path';
import { fileURLToPath } from 'node:url';
import { settingsText } from '../apps/zelvo_web/page/settings_text.js';

const ROOT = join(dirname(fileURLToPath(import.meta.url)), '..');
const PASSES = 40;
const RUNS = 25;

/** A sphere as a LightWave object: an octahedron's sides cut into a grid, `cuts` along each edge. */
function sphere(cuts) {
    const numbers = new Map();
    const points = [];
    const numberOf = (point) => {
        const name = point.join();
        if (!numbers.has(name)) {
            numbers.set(name, points.push(point.map((value) => value / Math.hypot(...point))) - 1);
        }
        return numbers.get(name);
    };
    const triangles = [];
    for (const [x, y, z] of [[1, 1, 1], [-1, -1, 1], [-1, 1, -1], [1, -1, -1], [-1, 1, 1], [1, -1, 1], [1, 1, -1], [-1, -1, -1]]) {
        const at = (i, j) => numberOf([x * i, y * j, z * (cuts - i - j)]);
        const isMirrored = x * y * z < 0;
        const add = (a, b, c) => triangles.push(isMirrored ? [3, a, b, c, 1] : [3, a, c, b, 1]);
        for (let i = 0; i < cuts; ++i) {
            for (let j = 0; i + j < cuts; ++j) {
                add(at(i, j), at(i + 1, j), at(i, j + 1));
                if (i + j < cuts - 1) {
                    add(at(i + 1, j), at(i + 1, j + 1), at(i, j + 1));
                }
            }
        }
    }
    const bytes = (size, values, write) => {
        const all = Buffer.alloc(size * values.length);
        values.forEach((value, i) => all[write](value, size * i));
        return all;
    };
    const chunk = (name, ...parts) => {
        const content = Buffer.concat(parts);
        return Buffer.concat([Buffer.from(name), bytes(4, [content.length], 'writeUInt32BE'), content]);
    };
    const object = chunk('FORM', Buffer.from('LWOB'), chunk('PNTS', bytes(4, points.flat(), 'writeFloatBE')),
        chunk('POLS', bytes(2, triangles.flat(), 'writeUInt16BE')));
    return { object, triangles: triangles.length };
}

const settings = (mode, width, height) => settingsText({ rotate: '2.000000', 'obj style': mode, width, height });

const microseconds = (printed) => Number(/average frametime: ([0-9.]+)/.exec(printed)[1]) * 1e6;

function native(object, text) {
    const folder = mkdtempSync(join(tmpdir(), 'zelvo-page-'));
    writeFileSync(join(folder, 'object.lwo'), object);
    writeFileSync(join(folder, 'Zelvo.vars'), text);
    const printed = execFileSync(join(ROOT, 'build/release/bin/zelvo-render'), [
        join(folder, 'object.lwo'), '--envmap', join(ROOT, 'data/Zelvo_envmap.chunky'), '--env', folder, '--clock', 'real',
        '--passes', String(PASSES),
    ], { encoding: 'utf8' });
    rmSync(folder, { recursive: true });
    return microseconds(printed);
}

const require = createRequire(import.meta.url);

async function inNode(preset, object, text) {
    const bin = join(ROOT, 'build', preset, 'bin');
    let printed = '';
    const instance = await require(join(bin, 'zelvo.js'))({
        wasmBinary: readFileSync(join(bin, 'zelvo.wasm')),
        quit(_, end) { throw end; },
        print(line) { printed += `${line}\n`; },
        page: {
            announce() {},
            openPicture() {},
            closePicture() {},
            showPicture() {},
            readFile: (name) => ({
                'ENV:Zelvo.vars': Buffer.from(text), 'object.lwo': object,
                'Zelvo_envmap.chunky': readFileSync(join(ROOT, 'data/Zelvo_envmap.chunky')),
            })[name] ?? null,
        },
    });
    instance._zelvo_begin(instance.allocateUTF8('object.lwo'));
    for (let pass = 0; pass < PASSES; ++pass) {
        instance._zelvo_pass(0);
    }
    try {
        instance._zelvo_end();
    } catch (end) {
        if (end.name !== 'ExitStatus') {
            throw end;
        }
    }
    return microseconds(printed);
}

// 8 * 51 * 51 = 20,808 triangles.
const ball = sphere(51);
console.log('| object | size | mode | native, vectors | page, vectors | page, plain | page / native | plain / vectors |');
console.log('|---|---|--:|--:|--:|--:|--:|--:|');
for (const [name, object] of [
    ['torus knot', readFileSync(join(ROOT, 'data/torus_knot.lwo'))], [`sphere of ${ball.triangles}`, ball.object],
]) {
    for (const [width, height] of [[320, 256], [640, 480]]) {
        for (const mode of [1, 3]) {
            const text = settings(mode, width, height);
            const least = [Infinity, Infinity, Infinity];
            for (let run = 0; run < RUNS; ++run) {
                const times = [native(object, text), await inNode('web', object, text), await inNode('web-plain', object, text)];
                times.forEach((time, i) => { least[i] = Math.min(least[i], time); });
            }
            const [own, fast, plain] = least;
            console.log(`| ${name} | ${width} x ${height} | ${mode} | ${least.map((time) => time.toFixed(0)).join(' | ')} | ${
                (fast / own).toFixed(2)} | ${(plain / fast).toFixed(2)} |`);
        }
    }
}
