// SPDX-License-Identifier: MIT
// node bundle.js FAST PLAIN DATA ICON OUTPUT [SITE]: makes the page, one file, of the sources in page/, the two modules (the
// folders FAST and PLAIN), the objects and the texture in the folder DATA, and ICON, an SVG. Also makes a folder SITE to
// publish.
import { build } from 'esbuild';
import { execFileSync } from 'node:child_process';
import { createHash } from 'node:crypto';
import { mkdirSync, readFileSync, writeFileSync } from 'node:fs';
import { dirname, join, resolve } from 'node:path';
import { fileURLToPath } from 'node:url';
import { gzipSync } from 'node:zlib';
import { OBJECTS, TEXTURE } from './page/data.js';
import { packObject, unpackObject } from './page/object_packing.js';

const [fast, plain, data, icon, output, site] = process.argv.slice(2).map((path) => resolve(path));
const page = join(dirname(fileURLToPath(import.meta.url)), 'page');

function packed(object) {
    const bytes = packObject(object);
    if (Buffer.compare(unpackObject(bytes), object) !== 0) {
        throw new Error('an object does not survive its packing');
    }
    return bytes;
}

function dataElement(name, bytes) {
    const text = gzipSync(bytes, { level: 9 }).toString('base64');
    return `<script type="application/octet-stream" id="data-${name}">${text}</script>`;
}

async function bundled(file, options) {
    const result = await build({ entryPoints: [join(page, file)], bundle: true, minify: true, write: false, ...options });
    return result.outputFiles[0].text.trim();
}

const hashOf = (text) => `'sha256-${createHash('sha256').update(text).digest('base64')}'`;

const style = await bundled('page.css', { target: ['chrome100', 'firefox113', 'safari16.4'] });
const script = await bundled('main.js', {
    format: 'esm',
    target: ['chrome100', 'firefox113', 'safari16.4'],
    // Only in node the modules ask for these.
    external: ['fs', 'path', 'crypto'],
    alias: { 'zelvo-fast': join(fast, 'zelvo.js'), 'zelvo-plain': join(plain, 'zelvo.js') },
});
if (script.includes('</script')) {
    throw new Error('the script would end early');
}
const licence = readFileSync(join(dirname(page), 'node_modules/gifenc/LICENSE.md'), 'utf8').trim();
const elements = [
    dataElement('fast', readFileSync(join(fast, 'zelvo.wasm'))),
    dataElement('plain', readFileSync(join(plain, 'zelvo.wasm'))),
    dataElement('texture', readFileSync(join(data, TEXTURE))),
    ...OBJECTS.map((name) => dataElement(name, packed(new Uint8Array(readFileSync(join(data, `${name}.lwo`)))))),
];

/** The page; `head` is added to its head, and `rules` to what it may load. */
function makePage(head, rules) {
    const policy = [
        "default-src 'none'", `script-src ${hashOf(script)} 'wasm-unsafe-eval'`, `style-src ${hashOf(style)}`,
        "base-uri 'none'", "form-action 'none'", ...rules,
    ].join('; ');
    const parts = {
        '<meta charset="utf-8">': `<meta charset="utf-8">\n<meta http-equiv="Content-Security-Policy" content="${policy}">`,
        '<link rel="icon" href="data:,">': head,
        '<link rel="stylesheet" href="page.css">': `<style>${style}</style>`,
        '<!-- data -->': [`<!--\nGIFs are made by gifenc.\n\n${licence}\n-->`, ...elements].join('\n'),
        '<script src="main.js"></script>': `<script type="module">${script}</script>`,
    };
    let html = readFileSync(join(page, 'page.html'), 'utf8');
    for (const [place, part] of Object.entries(parts)) {
        if (!html.includes(place)) {
            throw new Error(`page.html has no ${place}`);
        }
        html = html.replace(place, () => part);
    }
    return html;
}

const iconText = readFileSync(icon).toString('base64');
mkdirSync(dirname(output), { recursive: true });
writeFileSync(output, makePage(`<link rel="icon" href="data:image/svg+xml;base64,${iconText}">`, ['img-src data:']));

if (site !== undefined) {
    mkdirSync(site, { recursive: true });
    const icons = [192, 512].map((side) => ({ src: `icon-${side}.png`, sizes: `${side}x${side}`, type: 'image/png' }));
    for (const { src, sizes } of icons) {
        execFileSync('rsvg-convert', ['--width', parseInt(sizes, 10), '--output', join(site, src), icon]);
    }
    writeFileSync(join(site, 'manifest.webmanifest'), JSON.stringify({
        name: 'Zelvo', short_name: 'Zelvo', description: 'A small, exact 3D object viewer that draws everything in software.',
        start_url: './', display: 'standalone', background_color: '#131313', theme_color: '#131313', icons,
    }, null, 4));
    const html = makePage(
        `<link rel="icon" href="${icons[0].src}">\n<link rel="manifest" href="manifest.webmanifest">`,
        ["img-src 'self' data:", "manifest-src 'self'", "worker-src 'self'"],
    );
    writeFileSync(join(site, 'index.html'), html);
    writeFileSync(join(site, 'service_worker.js'), await bundled('service_worker.js', {
        define: {
            VERSION: JSON.stringify(createHash('sha256').update(html).digest('hex').slice(0, 16)),
            FILES: JSON.stringify(['manifest.webmanifest', ...icons.map(({ src }) => src)]),
        },
    }));
}
