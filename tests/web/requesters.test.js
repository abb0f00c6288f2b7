// SPDX-License-Identifier: MIT
// The program's requesters as dialogs, files that the user brings, and what is kept between visits.
import assert from 'node:assert/strict';
import { join } from 'node:path';
import { test } from 'node:test';
import { ROOT, settingsText, useBrowser, withPage } from './browser.js';

const used = useBrowser();

const sizeOf = (page) => page.tab.$eval('#picture', (canvas) => [canvas.width, canvas.height]);

async function setSize(page, width, height) {
    for (const [id, value] of [['#mode-width', width], ['#mode-height', height]]) {
        await page.tab.$eval(id, (input, text) => { input.value = text; }, String(value));
    }
}

test('"m" asks for a mode and a size, and shows what was confirmed', withPage(used, {}, async (page) => {
    await page.picture();
    await page.tab.keyboard.press('m');
    await page.tab.waitForSelector('#mode-dialog[open]');
    assert.equal(await page.tab.$('#picture:not([hidden])'), null);
    await setSize(page, 160, 128);
    await page.tab.click('#mode-dialog .primary');
    await page.picture();
    assert.deepEqual(await sizeOf(page), [160, 128]);
    assert.match(await page.tab.$eval('#log', (log) => log.textContent), /display parameters: 0x00000001, 160, 128/);
}));

test('a cancelled mode requester keeps mode and size', withPage(used, {}, async (page) => {
    await page.picture();
    await page.tab.keyboard.press('m');
    await page.tab.waitForSelector('#mode-dialog[open]');
    await page.tab.keyboard.press('Escape');
    await page.picture();
    assert.deepEqual(await sizeOf(page), [320, 256]);
    await page.tab.keyboard.press('p');
    await page.message('dots enabled');
}));

test('a size that no screen has cannot be confirmed', withPage(used, {}, async (page) => {
    await page.picture();
    await page.tab.keyboard.press('m');
    await page.tab.waitForSelector('#mode-dialog[open]');
    for (const width of ['0', '16385', '1.5', '']) {
        await setSize(page, width, 100);
        await page.tab.click('#mode-dialog .primary');
        assert.notEqual(await page.tab.$('#mode-dialog[open]'), null);
    }
    await page.tab.keyboard.press('Escape');
    await page.picture();
}));

test('a start without settings asks for a mode first', withPage(used, {}, async (page) => {
    await page.picture();
    await page.tab.evaluate(() => [...document.querySelectorAll('#drawer button')]
        .find((button) => button.textContent === 'Forget settings').click());
    await page.tab.keyboard.press('q');
    await page.end();
    await page.tab.keyboard.press('Enter');
    await page.tab.waitForSelector('#mode-dialog[open]');
    assert.deepEqual(await page.tab.$$eval('#mode-dialog input', (inputs) => inputs.map((input) => input.value)), ['320', '256']);
    await page.tab.keyboard.press('Enter');
    await page.picture();
}));

test('"t" asks for a texture, and takes a file of the user\'s', withPage(used, {}, async (page) => {
    await page.picture();
    await page.withoutTexts();
    const before = await page.pixels();
    await page.tab.keyboard.press('t');
    await page.tab.waitForSelector('#file-dialog[open]');
    assert.equal(await page.tab.$eval('#file-title', (title) => title.textContent), 'Select Zelvo_envmap.chunky file');
    await (await page.tab.$('#file-input')).uploadFile(join(ROOT, 'tests/golden/envmap.chunky'));
    await page.message('new texture loaded');
    await page.withoutTexts();
    assert.notDeepEqual(await page.pixels(), before);
    assert.match(await page.tab.$eval('#log', (log) => log.textContent), /envmap filename: \/envmap.chunky/);
}));

test('a cancelled texture requester keeps the texture', withPage(used, {}, async (page) => {
    await page.picture();
    await page.withoutTexts();
    const before = await page.pixels();
    await page.tab.keyboard.press('t');
    await page.tab.waitForSelector('#file-dialog[open]');
    await page.tab.keyboard.press('Escape');
    await page.message('new texture loaded');
    await page.withoutTexts();
    assert.deepEqual(await page.pixels(), before);
}));

test('another object from the gallery keeps the settings', withPage(used, {}, async (page) => {
    await page.picture();
    await page.tab.keyboard.press('d');
    await page.tab.keyboard.press('p');
    await page.message('dots enabled');
    await page.tab.click('#open-gallery');
    const names = await page.tab.$$eval('#file-list button', (buttons) => buttons.map((button) => button.textContent));
    assert.deepEqual(names.sort(), ['chess pawn', 'cogwheel', 'cut gem', 'letters', 'sphere', 'torus knot']);
    await page.tab.waitForFunction(() => document.querySelectorAll('#file-list canvas').length === 6);
    await page.tab.evaluate(() => [...document.querySelectorAll('#file-list button')]
        .find((button) => button.textContent === 'cogwheel').click());
    await page.tab.waitForFunction(() => location.hash.startsWith('#object=cogwheel'));
    await page.tab.waitForFunction(() => document.querySelector('[data-flag="dots"]').getAttribute('aria-pressed') === 'true');
}));

test('a run without an object ends with its message and code 20', withPage(used, {}, async (page) => {
    await page.picture();
    await page.tab.keyboard.press('q');
    await page.end();
    await page.tab.click('#start-asking');
    await page.tab.waitForSelector('#file-dialog[open]');
    assert.equal(await page.tab.$eval('#file-title', (title) => title.textContent), 'Select a LightWave Object');
    await page.tab.keyboard.press('Escape');
    const end = await page.end();
    assert.equal(end.title, 'The program has ended with code 20');
    assert.match(end.text, /No filename given$/);
    await page.tab.click('#start-asking');
    await page.tab.waitForSelector('#file-dialog[open]');
    await (await page.tab.$('#file-input')).uploadFile(join(ROOT, 'tests/golden/objects/torus.lwo'));
    await page.picture();
    assert.equal(await page.tab.$eval('#object-name', (name) => name.textContent), 'torus');
}));

/** Drops bytes on the page as a file of this name. */
const drop = (page, name, bytes) => page.tab.evaluate((fileName, content) => {
    const transfer = new DataTransfer();
    transfer.items.add(new File([new Uint8Array(content)], fileName));
    document.getElementById('stage').dispatchEvent(new DragEvent('drop', { dataTransfer: transfer, bubbles: true, cancelable: true }));
}, name, bytes);

/** A small object: a triangle; `polygons` are the words of its polygon list. */
function triangle(polygons = [3, 0, 1, 2, 1]) {
    const points = new DataView(new ArrayBuffer(12 * 3));
    [-1, -1, 0, 1, -1, 0, 0, 1, 0].forEach((value, i) => points.setFloat32(4 * i, value));
    const words = polygons.flatMap((word) => [word >> 8 & 255, word & 255]);
    const chunk = (name, bytes) => [...Buffer.from(name), ...new Uint8Array(new Uint32Array([bytes.length]).buffer).reverse(), ...bytes];
    const content = [...Buffer.from('LWOB'), ...chunk('PNTS', [...new Uint8Array(points.buffer)]), ...chunk('POLS', words)];
    return chunk('FORM', content);
}

test('a dropped object is shown, blanks in its name and all', withPage(used, {}, async (page) => {
    await page.picture();
    await drop(page, 'my own object.lwo', triangle());
    await page.tab.waitForFunction(() => document.getElementById('object-name').textContent === 'my own object');
    await page.picture();
    await page.message('Zelvo');
}));

for (const [what, bytes] of Object.entries({
    'that is no object': [...Buffer.from('This is a text and no object.')],
    'that is empty': [],
    'that is cut short': triangle().slice(0, 40),
    'that names points it does not have': triangle([3, 0, 1, 40000, 1]),
    'whose polygons go on past its end': triangle([65535, 0, 1, 2, 1]),
})) {
    test(`a dropped file ${what} gives a message or a picture, and no hang`, withPage(used, {}, async (page) => {
        await page.picture();
        await drop(page, 'hostile.lwo', bytes);
        await page.tab.waitForFunction(() => document.getElementById('object-name').textContent === 'hostile' &&
            (!document.getElementById('ended').hidden || !document.getElementById('picture').hidden));
        const isEnded = await page.tab.$('#ended:not([hidden])') !== null;
        if (isEnded) {
            assert.equal((await page.end()).title, 'The program has ended with code 20');
            await page.tab.click('#start-again');
        } else {
            await page.tab.keyboard.press('p');
            await page.message('dots enabled');
        }
    }));
}

test('a dropped texture is taken at once', withPage(used, {}, async (page) => {
    await page.picture();
    await drop(page, 'black.chunky', new Array(65536).fill(0));
    await page.message('new texture loaded');
    // What is left is the message, and then nothing.
    await page.tab.waitForFunction(() => {
        const canvas = document.getElementById('picture');
        const pixels = canvas.getContext('2d').getImageData(0, 0, canvas.width, canvas.height).data;
        return pixels.every((value, i) => value === 0 || i % 4 === 3);
    });
}));

test('settings are kept for a reload and for the next visit', withPage(used, {}, async (page) => {
    await page.picture();
    await page.tab.keyboard.press('ArrowRight');
    await page.message('rotate=0.1');
    await page.tab.keyboard.press('S');
    await page.message('saving vars to ENVARC:Zelvo.vars');
    await page.tab.reload();
    await page.picture();
    await page.tab.waitForFunction(() => document.getElementById('spin').textContent === 'Spin 0.1');
    const kept = await page.tab.evaluate(() => [
        localStorage.getItem('zelvo ENVARC:Zelvo.vars'), sessionStorage.getItem('zelvo ENV:Zelvo.vars'),
    ]);
    assert.equal(kept[0], settingsText({ rotate: '0.100000' }));
    assert.equal(kept[1], kept[0]);
    await page.tab.evaluate(() => sessionStorage.removeItem('zelvo ENV:Zelvo.vars'));
    await page.tab.reload();
    await page.picture();
    await page.tab.waitForFunction(() => document.getElementById('spin').textContent === 'Spin 0.1');
}));

for (const [what, prepare] of Object.entries({
    'forbids storage': () => {
        for (const name of ['localStorage', 'sessionStorage']) {
            Object.defineProperty(window, name, { get() { throw new DOMException('forbidden', 'SecurityError'); } });
        }
    },
    'has no room': () => {
        Storage.prototype.setItem = () => { throw new DOMException('no room', 'QuotaExceededError'); };
    },
})) {
    test(`a browser that ${what} makes a save fail and nothing else`, withPage(used, { settings: null, prepare }, async (page) => {
        await page.picture();
        await page.tab.keyboard.press('S');
        await page.message('saving vars to ENVARC:Zelvo.vars');
        await page.tab.waitForSelector('#notice:not([hidden])');
        assert.match(await page.tab.$eval('#notice', (notice) => notice.textContent), /^ENV(ARC)?:Zelvo.vars was not saved: /);
        assert.equal((await page.tab.$eval('#log', (log) => log.textContent)).match(/was not saved/g).length, 2);
        await page.tab.keyboard.press('p');
        await page.message('dots enabled');
    }));
}
