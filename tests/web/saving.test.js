// SPDX-License-Identifier: MIT
// Pictures and animations that the page saves.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { settingsText, useBrowser, withPage } from './browser.js';

const used = useBrowser();

/** Keeps what the page offers as a file where the test finds it. */
const keepSaved = () => {
    const make = URL.createObjectURL;
    URL.createObjectURL = (blob) => {
        window.saved = blob;
        return make.call(URL, blob);
    };
};

const press = (page, label) => page.tab.evaluate((text) => [...document.querySelectorAll('#drawer button')]
    .find((button) => button.textContent === text).click(), label);

async function savedBytes(page) {
    await page.tab.waitForFunction(() => window.saved !== undefined);
    return Buffer.from(await page.tab.evaluate(async () => {
        const bytes = new Uint8Array(await window.saved.arrayBuffer());
        return btoa(Array.from(bytes, (value) => String.fromCharCode(value)).join(''));
    }), 'base64');
}

test('a saved picture has the pixels that are shown', withPage(used, { prepare: keepSaved }, async (page) => {
    await page.picture();
    await page.withoutTexts();
    const shown = await page.pixels();
    await press(page, 'Save picture');
    const png = await savedBytes(page);
    assert.equal(png.toString('latin1', 1, 4), 'PNG');
    const read = await page.tab.evaluate(async () => {
        const picture = await createImageBitmap(window.saved);
        const canvas = new OffscreenCanvas(picture.width, picture.height);
        const context = canvas.getContext('2d');
        context.drawImage(picture, 0, 0);
        const { data } = context.getImageData(0, 0, canvas.width, canvas.height);
        return btoa(Array.from(data, (value) => String.fromCharCode(value)).join(''));
    });
    assert.ok(Buffer.from(read, 'base64').equals(shown));
}));

test('a recorded animation is a GIF of the picture\'s size', withPage(used,
    { prepare: keepSaved, settings: settingsText({ rotate: '2.000000', width: 100, height: 80 }) }, async (page) => {
        await page.picture();
        await press(page, 'Record animation');
        await page.passes();
        await press(page, 'Record animation');
        const gif = await savedBytes(page);
        assert.equal(gif.toString('latin1', 0, 6), 'GIF89a');
        assert.deepEqual([gif.readUInt16LE(6), gif.readUInt16LE(8)], [100, 80]);
        assert.equal(gif.at(-1), 0x3b);
        // Each frame has a control extension with its delay of 2/100 seconds.
        const delays = gif.toString('latin1').split('\x21\xf9\x04').slice(1).map((part) => part.charCodeAt(1));
        assert.ok(delays.length >= 2);
        assert.ok(delays.every((delay) => delay === 2));
    }));
