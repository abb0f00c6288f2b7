// SPDX-License-Identifier: MIT
// node screenshots.js FOLDER: takes the pictures of the page for the documents, in Chromium.
import { join, resolve } from 'node:path';
import { launch } from 'puppeteer-core';
import { BROWSERS, openPage, settingsText } from './browser.js';

const folder = resolve(process.argv[2]);
const browser = await launch({ headless: true, ...BROWSERS.chromium });

async function shoot(name, viewport, scheme, prepare = async () => {}) {
    const page = await openPage({ browser }, { settings: settingsText({ ModeID: 0 }), viewport });
    await page.tab.emulateMediaFeatures([{ name: 'prefers-color-scheme', value: scheme }]);
    await page.picture();
    await page.withoutTexts();
    await prepare(page);
    await page.tab.screenshot({ path: join(folder, `${name}.png`) });
    await page.close();
}

const showGallery = async ({ tab }) => {
    await tab.click('#open-gallery');
    await tab.waitForFunction(() => document.querySelectorAll('#file-list canvas').length === 6);
};

await shoot('page', { width: 1280, height: 800 }, 'light');
await shoot('page-gallery', { width: 1280, height: 800 }, 'dark', showGallery);
await shoot('page-phone', { width: 375, height: 812, deviceScaleFactor: 1, hasTouch: true }, 'dark', async ({ tab }) => {
    await tab.click('#more');
});
await browser.close();
