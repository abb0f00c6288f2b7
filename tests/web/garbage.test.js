// SPDX-License-Identifier: MIT
// A pass makes no objects that would have to be collected. Only Chromium can tell what each function allocates.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { BROWSER, PAGE, settingsText, useBrowser, withPage } from './browser.js';

const used = useBrowser();

// Numbers that cross the border between JavaScript and WebAssembly are boxed: about 300 bytes per pass were measured. A
// view of the picture, or an array of its palette, made in every pass would be more than this.
const MOST_BYTES_PER_PASS = 600;

/** The bytes that the page's script allocated during a function, by the places of its functions. */
async function allocations(tab, during) {
    const client = await tab.createCDPSession();
    await client.send('HeapProfiler.enable');
    await client.send('HeapProfiler.startSampling', {
        samplingInterval: 64, includeObjectsCollectedByMajorGC: true, includeObjectsCollectedByMinorGC: true,
    });
    await during();
    const { profile } = await client.send('HeapProfiler.stopSampling');
    const bytes = {};
    (function add({ callFrame, selfSize, children }) {
        if (callFrame.url === PAGE || callFrame.url.startsWith('wasm:')) {
            const place = `${callFrame.functionName}:${callFrame.lineNumber}:${callFrame.columnNumber}`;
            bytes[place] = (bytes[place] ?? 0) + selfSize;
        }
        children.forEach(add);
    })(profile.head);
    return bytes;
}

/** Waits until the page has made so many passes. */
const wait = (tab, passes) => tab.evaluate((wanted) => new Promise((resolve) => {
    let made = 0;
    const count = () => {
        made += 1;
        if (made < wanted) {
            requestAnimationFrame(count);
        } else {
            resolve();
        }
    };
    requestAnimationFrame(count);
}), passes);

test('a pass allocates nothing but boxed numbers', { skip: BROWSER !== 'chromium' && 'only Chromium samples allocations' },
    withPage(used, { settings: settingsText({ rotate: '2.000000' }) }, async (page) => {
        const passes = 300;
        await page.picture();
        // By then the browser has compiled what runs often.
        await wait(page.tab, passes);
        const bytes = await allocations(page.tab, () => wait(page.tab, passes));
        const all = Object.values(bytes).reduce((sum, part) => sum + part, 0);
        assert.ok(all > 0, 'nothing was sampled');
        assert.ok(all < passes * MOST_BYTES_PER_PASS, JSON.stringify(bytes));
    }));
