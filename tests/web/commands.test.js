// SPDX-License-Identifier: MIT
// Every command of the program by real keys and buttons.
import assert from 'node:assert/strict';
import { describe, test } from 'node:test';
import { settingsText, useBrowser, withPage } from './browser.js';

const used = useBrowser();

// Keys in the order in which one run is given them, each with the program's answer.
const KEYS = [
    ['ArrowRight', 'rotate=0.1'], ['ArrowLeft', 'rotate=0.0'], ['ArrowUp', 'dotlum=0.812500'], ['ArrowDown', 'dotlum=0.781250'],
    ['b', 'blurmode: 1'], ['c', 'internal c2p enabled'], ['c', 'system c2p enabled'], ['d', 'doubleside on'],
    ['d', 'doubleside off'], ['f', 'fps-counter enabled'], ['f', 'fps-counter disabled'], ['i', 'polygons flipped'],
    ['i', 'polygons flipped back'], ['l', 'lightsource rotating mode on'], ['l', 'lightsource rotating mode off'],
    ['p', 'dots enabled'], ['p', 'dots disabled'], ['r', 'rotate off'], ['s', 'saving vars to ENV:Zelvo.vars'],
    ['w', 'loading vars from ENV:Zelvo.vars'], ['S', 'saving vars to ENVARC:Zelvo.vars'],
    ['W', 'loading vars from ENVARC:Zelvo.vars'], ['e', 'hmm... little effect :)'], ['R', 'resetting variables to default'],
];

test('each key is its command', withPage(used, {}, async (page) => {
    await page.picture();
    for (const [key, message] of KEYS) {
        await page.tab.keyboard.press(key);
        await page.message(message);
    }
}));

test('gamma keys change the colours, each its own', withPage(used, {}, async (page) => {
    await page.picture();
    await page.withoutTexts();
    const pixels = await page.pixels();
    const at = pixels.findIndex((value, i) => i % 4 === 0 && value > 64 && value < 192);
    const colour = async () => [...(await page.pixels()).subarray(at, at + 3)];
    const [grey] = await colour();
    for (const [key, message, channel, direction] of [
        ['1', 'R-gamma:0.90 G-gamma:1.00 B-gamma:1.00', 0, -1], ['4', 'R-gamma:1.10 G-gamma:1.00 B-gamma:1.00', 0, 1],
        ['2', 'R-gamma:1.00 G-gamma:0.90 B-gamma:1.00', 1, -1], ['5', 'R-gamma:1.00 G-gamma:1.10 B-gamma:1.00', 1, 1],
        ['3', 'R-gamma:1.00 G-gamma:1.00 B-gamma:0.90', 2, -1], ['6', 'R-gamma:1.00 G-gamma:1.00 B-gamma:1.10', 2, 1],
    ]) {
        await page.tab.keyboard.press(key);
        await page.message(message);
        await page.passes();
        const changed = await colour();
        assert.equal(Math.sign(changed[channel] - grey), direction);
        assert.deepEqual(changed.filter((_, i) => i !== channel), [grey, grey]);
        await page.tab.keyboard.press('0');
        await page.message('R-gamma:1.00 G-gamma:1.00 B-gamma:1.00');
        await page.passes();
        assert.deepEqual(await colour(), [grey, grey, grey]);
    }
}));

describe('the run ends', () => {
    for (const key of ['q', 'x', 'Escape']) {
        test(`with ${key}, its statistics and a start again`, withPage(used, {}, async (page) => {
            await page.picture();
            await page.tab.keyboard.press(key);
            const end = await page.end();
            assert.equal(end.title, 'The run has ended');
            assert.match(end.text, /^number of frames: \d+\nall time: .*\naverage framerate: .* fps\n/);
            await page.tab.keyboard.press('Enter');
            await page.picture();
            await page.message('Zelvo');
        }));
    }
});

test('keys with Ctrl or Alt are not the program\'s', withPage(used, {}, async (page) => {
    await page.picture();
    await page.message('Zelvo');
    await page.tab.keyboard.down('Alt');
    await page.tab.keyboard.press('d');
    await page.tab.keyboard.up('Alt');
    await page.tab.keyboard.press('p');
    await page.message('dots enabled');
    await page.tab.keyboard.press('d');
    await page.message('doubleside on');
}));

test('every button of the page is its command', withPage(used, {}, async (page) => {
    await page.picture();
    await page.tab.click('#more');
    for (const [id, message] of [
        ['next-mode', 'mode: texturemap'], ['spin-up', 'rotate=0.1'], ['spin-down', 'rotate=0.0'], ['spin-stop', 'rotate off'],
        ['clear', 'blurmode: 1'], ['dots', 'dots enabled'], ['brighter', 'dotlum=0.085938'], ['darker', 'dotlum=0.078125'],
        ['flip', 'polygons flipped'], ['doubleside', 'doubleside on'], ['light', 'lightsource rotating mode on'],
        ['fps', 'fps-counter enabled'], ['save', 'saving vars to ENVARC:Zelvo.vars'],
        ['load', 'loading vars from ENVARC:Zelvo.vars'], ['effect', 'hmm... little effect :)'],
        ['reset', 'resetting variables to default'],
    ]) {
        await page.tab.click(`[data-command="${id}"]`);
        await page.message(message);
    }
    await page.tab.click('[data-command="quit"]');
    assert.equal((await page.end()).title, 'The run has ended');
}));

test('the first click takes the pointer and is no command; then the buttons are commands', withPage(used, {}, async (page) => {
    await page.picture();
    await page.message('Zelvo');
    const box = await (await page.tab.$('#picture')).boundingBox();
    await page.tab.mouse.click(box.x + 100, box.y + 100);
    await page.tab.waitForFunction(() => document.pointerLockElement !== null);
    await page.withoutTexts();
    const before = await page.pixels();
    await page.tab.mouse.move(box.x + 140, box.y + 130, { steps: 4 });
    await page.passes();
    assert.notDeepEqual(await page.pixels(), before);
    await page.tab.mouse.click(box.x + 140, box.y + 130, { button: 'right' });
    await page.message('mode: texturemap');
    await page.tab.mouse.click(box.x + 140, box.y + 130);
    await page.end();
    assert.equal(await page.tab.evaluate(() => document.pointerLockElement), null);
}));

test('Esc frees the pointer, and only the next one quits', withPage(used, {}, async (page) => {
    await page.picture();
    await page.tab.click('#picture');
    await page.tab.waitForFunction(() => document.pointerLockElement !== null);
    await page.tab.keyboard.press('Escape');
    await page.tab.waitForFunction(() => document.pointerLockElement === null);
    await page.tab.keyboard.press('p');
    await page.message('dots enabled');
    await page.tab.keyboard.press('Escape');
    await page.end();
}));

test('on a phone a finger tilts the object and taps do everything else', withPage(used,
    { viewport: { width: 375, height: 812, deviceScaleFactor: 2, hasTouch: true, isMobile: false } }, async (page) => {
        await page.picture();
        await page.withoutTexts();
        const before = await page.pixels();
        const box = await (await page.tab.$('#picture')).boundingBox();
        const touch = await page.tab.touchscreen.touchStart(box.x + 80, box.y + 80);
        await touch.move(box.x + 120, box.y + 110);
        await touch.end();
        await page.passes();
        assert.notDeepEqual(await page.pixels(), before);
        assert.equal(await page.tab.$('#ended:not([hidden])'), null);
        await page.tab.tap('#mode');
        await page.message('mode: texturemap');
        await page.tab.tap('#more');
        await page.tab.tap('[data-command="doubleside"]');
        await page.message('doubleside on');
        await page.tab.tap('[data-command="quit"]');
        await page.end();
    }));

test('the program rests while the page is hidden', withPage(used, { settings: settingsText({ rotate: '2.000000' }) },
    async (page) => {
        await page.picture();
        await page.withoutTexts();
        const other = await page.tab.browserContext().newPage();
        await other.bringToFront();
        await page.tab.waitForFunction(() => document.hidden, { polling: 100 });
        const resting = await page.pixels();
        await new Promise((resolve) => { setTimeout(resolve, 500); });
        assert.deepEqual(await page.pixels(), resting);
        await page.tab.bringToFront();
        await page.passes();
        assert.notDeepEqual(await page.pixels(), resting);
        await other.close();
    }));
