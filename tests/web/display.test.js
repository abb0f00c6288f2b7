// SPDX-License-Identifier: MIT
// Full screen, light and dark colours, and the page without a mouse.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { BROWSER, settingsText, useBrowser, withPage } from './browser.js';

const used = useBrowser();

const isFullScreen = (page, wanted) => page.tab.waitForFunction(
    (is) => (document.fullscreenElement !== null) === is, { polling: 50 }, wanted,
);

const pictureBox = (page) => page.tab.$eval('#picture', (canvas) => {
    const { width, height } = canvas.getBoundingClientRect();
    return { width, height };
});

test('the button shows the picture alone on the screen, and Esc brings the page back without quitting', withPage(used,
    { settings: settingsText({ ModeID: 1 }) }, async (page) => {
        await page.picture();
        await page.message('Zelvo');
        const before = await pictureBox(page);
        await page.tab.click('#full-screen');
        await isFullScreen(page, true);
        assert.equal(await page.tab.evaluate(() => document.fullscreenElement.id), 'stage');
        await page.tab.waitForFunction((width) => document.getElementById('picture').getBoundingClientRect().width > width,
            { polling: 50 }, before.width);
        await page.tab.keyboard.press('p');
        await page.message('dots enabled');
        // A real Esc never reaches the page; the browser leaves full screen by itself. A key that a test sends does.
        await page.tab.keyboard.press('Escape');
        await page.tab.evaluate(() => document.fullscreenElement && document.exitFullscreen());
        await isFullScreen(page, false);
        assert.equal(await page.tab.$('#ended:not([hidden])'), null);
        await page.tab.waitForFunction((width) => document.getElementById('picture').getBoundingClientRect().width === width,
            { polling: 50 }, before.width);
    }));

test('Alt and Enter show the full screen and leave it', withPage(used, {}, async (page) => {
    await page.picture();
    await page.tab.click('h1');
    for (const wanted of [true, false]) {
        await page.tab.keyboard.down('Alt');
        await page.tab.keyboard.press('Enter');
        await page.tab.keyboard.up('Alt');
        await isFullScreen(page, wanted);
    }
}));

/** The ratio of two colours' luminances as the Web Content Accessibility Guidelines define it: 1 .. 21. */
function contrast(...colours) {
    const luminances = colours.map((colour) => {
        const [red, green, blue] = colour.match(/[0-9.]+/g).slice(0, 3).map((level) => {
            const part = Number(level) / 255;
            return part <= 0.04045 ? part / 12.92 : ((part + 0.055) / 1.055) ** 2.4;
        });
        return 0.2126 * red + 0.7152 * green + 0.0722 * blue;
    });
    return (Math.max(...luminances) + 0.05) / (Math.min(...luminances) + 0.05);
}

const cannotChoose = BROWSER === 'firefox' && 'puppeteer cannot choose the colours of this browser';

test('text can be read in light and in dark colours', { skip: cannotChoose }, withPage(used, {}, async (page) => {
    await page.picture();
    const grounds = [];
    for (const scheme of ['light', 'dark']) {
        await page.tab.emulateMediaFeatures([{ name: 'prefers-color-scheme', value: scheme }]);
        const colours = await page.tab.evaluate(() => ['h1', '#object-name', '#mode', '#spin', '#more'].map((name) => {
            const element = document.querySelector(name);
            let ground = element;
            while (ground !== document.documentElement && /^(transparent|rgba\(.*, 0\))$/.test(getComputedStyle(ground).backgroundColor)) {
                ground = ground.parentElement;
            }
            return { name, text: getComputedStyle(element).color, ground: getComputedStyle(ground).backgroundColor };
        }));
        for (const { name, text, ground } of colours) {
            assert.ok(contrast(text, ground) >= 4.5, `${name} in ${scheme}: ${text} on ${ground}`);
        }
        grounds.push(colours[0].ground);
    }
    assert.ok(contrast(...grounds) > 10);
}));

test('the page can be used by the keyboard alone', withPage(used, {}, async (page) => {
    await page.picture();
    await page.tab.focus('#open-gallery');
    await page.tab.keyboard.press('Enter');
    await page.tab.waitForSelector('#file-dialog[open]');
    await page.tab.keyboard.press('Escape');
    await page.tab.waitForSelector('#file-dialog:not([open])');
    assert.equal(await page.tab.evaluate(() => document.activeElement.id), 'picture');
    const reached = new Set();
    for (let i = 0; i < 10; ++i) {
        await page.tab.keyboard.press('Tab');
        reached.add(await page.tab.evaluate(() => document.activeElement.id || document.activeElement.dataset.command));
    }
    for (const id of ['open-gallery', 'mode', 'spin-down', 'spin', 'spin-up', 'full-screen', 'more']) {
        assert.ok(reached.has(id), `Tab does not reach ${id}`);
    }
    assert.equal(await page.tab.$('#ended:not([hidden])'), null);
}));
