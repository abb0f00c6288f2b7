// SPDX-License-Identifier: MIT
// What the page shows is what the program draws.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { test } from 'node:test';
import { ROOT, STILL, settingsText, useBrowser, withPage } from './browser.js';

const used = useBrowser();

/** The grey levels that the offscreen host's screen gets for these settings in its third pass. */
function drawnOffscreen(object, settings) {
    const folder = mkdtempSync(join(tmpdir(), 'zelvo-web-'));
    writeFileSync(join(folder, 'Zelvo.vars'), settings);
    execFileSync(join(ROOT, 'build/release/bin/zelvo-render'), [
        join(ROOT, `data/${object}.lwo`), '--envmap', join(ROOT, 'data/Zelvo_envmap.chunky'), '--env', folder,
        '--passes', '3', '--chunky', folder,
    ]);
    const names = execFileSync('ls', [folder], { encoding: 'utf8' }).split('\n').filter((name) => name.endsWith('.pgm'));
    const pgm = readFileSync(join(folder, names.sort().at(-1)));
    rmSync(folder, { recursive: true });
    const header = /^P5\n\d+ \d+\n255\n/.exec(pgm.toString('latin1'))[0];
    return pgm.subarray(header.length);
}

const grey = (pixels) => pixels.filter((_, i) => i % 4 === 0);

for (const [mode, name] of ['envmap', 'texturemap', 'lightsourced', 'phong', 'z-light', 'dots'].entries()) {
    const settings = settingsText({ 'obj style': mode + 1 });
    test(`the picture of mode ${name} is the offscreen host's`, withPage(used, { settings, link: '#object=cogwheel' },
        async (page) => {
            await page.picture();
            await page.withoutTexts();
            assert.ok(grey(await page.pixels()).equals(drawnOffscreen('cogwheel', settings)));
        }));
}

test('the plain forms draw the same picture', withPage(used, { link: '#object=sphere&forms=plain' }, async (page) => {
    await page.picture();
    await page.withoutTexts();
    assert.ok(grey(await page.pixels()).equals(drawnOffscreen('sphere', STILL)));
}));

test('a first visit shows a spinning object at once', withPage(used, { settings: null }, async (page) => {
    await page.picture();
    await page.withoutTexts();
    const first = await page.pixels();
    await page.passes();
    assert.notDeepEqual(await page.pixels(), first);
    assert.equal(await page.tab.evaluate(() => location.hash), '#object=torus_knot&mode=envmap&size=320x256');
}));

test('a link carries object, mode and size', withPage(used,
    { settings: null, link: '#object=cut_gem&mode=phong&size=200x100' }, async (page) => {
        await page.picture();
        await page.tab.waitForFunction(() => document.getElementById('mode').textContent === 'Mode: phong');
        assert.equal(await page.tab.$eval('#object-name', (name) => name.textContent), 'cut gem');
        assert.deepEqual(await page.tab.$eval('#picture', (canvas) => [canvas.width % 200, canvas.height % 100]), [0, 0]);
    }));

test('a picture pixel is a square of whole pixels of the display', withPage(used,
    { viewport: { width: 1000, height: 800, deviceScaleFactor: 2 }, settings: settingsText({ ModeID: 0 }) }, async (page) => {
        await page.picture();
        const shown = await page.tab.$eval('#picture', (canvas) => {
            const box = canvas.getBoundingClientRect();
            return { rendering: canvas.style.imageRendering, width: box.width * 2, left: (box.left * 2) % 1 };
        });
        assert.equal(shown.rendering, 'pixelated');
        assert.equal(shown.width % 320, 0);
        assert.ok(shown.width >= 320 * 3);
        assert.equal(shown.left, 0);
    }));
