// SPDX-License-Identifier: MIT
// Browsers for the tests: the page of scripts/web in Debian's Chromium or Firefox, without a screen. The environment names
// the browser (BROWSER, chromium by default) and the page (PAGE, a file).
import assert from 'node:assert/strict';
import { after, before } from 'node:test';
import { dirname, join } from 'node:path';
import { fileURLToPath, pathToFileURL } from 'node:url';
import { launch } from 'puppeteer-core';
import { settingsText as textOf } from '../../apps/zelvo_web/page/settings_text.js';

export const ROOT = join(dirname(fileURLToPath(import.meta.url)), '../..');
export const PAGE = pathToFileURL(process.env.PAGE ?? join(ROOT, 'build/web/zelvo.html')).href;
export const BROWSER = process.env.BROWSER ?? 'chromium';

// A guard against hangs; a test waits for conditions.
const TIMEOUT = 60000;

export const BROWSERS = {
    chromium: { browser: 'chrome', executablePath: '/usr/bin/chromium', args: ['--no-sandbox', '--disable-gpu'] },
    firefox: { browser: 'firefox', executablePath: '/usr/bin/firefox-esr' },
};

/** Settings of a test's page: the object stands still in a window, and the picture is without texts once the message is gone. */
export const settingsText = (changes) => textOf({ ModeID: 1, ...changes });

export const STILL = settingsText({});

/** A browser for the tests of a file. */
export function useBrowser() {
    const used = { browser: null };
    before(async () => {
        used.browser = await launch({ headless: true, ...BROWSERS[BROWSER] });
    });
    after(() => used.browser?.close());
    return used;
}

/**
 * Opens the page in a profile of its own. `settings` is what ENV: holds, null for a first visit; `prepare` runs in the page
 * before its own script. Errors in the page and requests to anywhere fail the test when it closes the page.
 */
export async function openPage(used, { settings = STILL, link = '', prepare = null, viewport = { width: 1000, height: 800 } } = {}) {
    const context = await used.browser.createBrowserContext();
    const tab = await context.newPage();
    const faults = [];
    tab.setDefaultTimeout(TIMEOUT);
    tab.on('pageerror', (error) => faults.push(String(error.stack ?? error)));
    tab.on('console', (message) => message.type() === 'error' && faults.push(message.text()));
    tab.on('request', (request) => /^(file|data|blob):/.test(request.url()) || faults.push(request.url()));
    await tab.setViewport(viewport);
    if (settings !== null) {
        await tab.evaluateOnNewDocument((text) => {
            // Before the page there are documents without storage.
            if (/^(file|http):$/.test(location.protocol) && sessionStorage.getItem('test') === null) {
                sessionStorage.setItem('test', 'begun');
                sessionStorage.setItem('zelvo ENV:Zelvo.vars', text);
            }
        }, settings);
    }
    if (prepare !== null) {
        await tab.evaluateOnNewDocument(prepare);
    }
    await tab.goto(PAGE + link);
    return {
        tab,
        /** Waits until the program shows its picture. */
        picture: () => tab.waitForSelector('#picture:not([hidden])'),
        /** Waits until the program's message is this one. */
        message: (text) => tab.waitForFunction(
            (wanted) => document.getElementById('announcement').textContent === wanted, {}, text,
        ).catch(async (error) => {
            throw new Error(`no message "${text}", but "${await tab.$eval('#announcement', (each) => each.textContent)}"`,
                { cause: error });
        }),
        /** Waits for the end of the run; what the page shows of it. */
        async end() {
            await tab.waitForSelector('#ended:not([hidden])');
            return tab.evaluate(() => ({
                title: document.getElementById('ended-title').textContent,
                text: document.getElementById('ended-text').textContent,
            }));
        },
        /** The picture's pixels: red, green, blue and 255 of each, as a buffer. */
        async pixels() {
            // As a text, since a browser takes seconds to pass on so many numbers.
            return Buffer.from(await tab.evaluate(() => {
                const canvas = document.getElementById('picture');
                const { data } = canvas.getContext('2d').getImageData(0, 0, canvas.width, canvas.height);
                return btoa(Array.from(data, (value) => String.fromCharCode(value)).join(''));
            }), 'base64');
        },
        /** Waits until the picture is without texts: the corner where they begin is black, which no object reaches. */
        async withoutTexts() {
            await this.passes();
            await tab.waitForFunction(() => {
                const canvas = document.getElementById('picture');
                const part = (width, height) => canvas.getContext('2d').getImageData(0, 0, width, height).data;
                const isBlack = (pixels) => pixels.every((value, i) => value === 0 || i % 4 === 3);
                return isBlack(part(40, 16)) && !isBlack(part(canvas.width, canvas.height));
            });
        },
        /** A pass after this, everything that was sent before has reached the program. */
        passes: () => tab.evaluate(() => new Promise((resolve) => {
            requestAnimationFrame(() => requestAnimationFrame(() => requestAnimationFrame(resolve)));
        })),
        async close() {
            await context.close();
            assert.deepEqual(faults, []);
        },
    };
}

/** Runs a test on a page of its own. */
export function withPage(used, options, test) {
    return async () => {
        const page = await openPage(used, options);
        await test(page);
        await page.close();
    };
}
