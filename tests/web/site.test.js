// SPDX-License-Identifier: MIT
// The folder for a static host: it can be installed, and works without a network once it was there.
import assert from 'node:assert/strict';
import { readFile } from 'node:fs/promises';
import { createServer } from 'node:http';
import { extname, join } from 'node:path';
import { test } from 'node:test';
import { ROOT, useBrowser } from './browser.js';

const used = useBrowser();
const TYPES = { '.html': 'text/html', '.js': 'text/javascript', '.png': 'image/png', '.webmanifest': 'application/manifest+json' };

/** A server of the folder on this machine, which notes what it was asked for. */
async function serve() {
    const asked = [];
    const server = createServer(async (request, response) => {
        const path = new URL(request.url, 'http://localhost').pathname;
        asked.push(path);
        try {
            const file = path.endsWith('/') ? `${path}index.html` : path;
            const bytes = await readFile(join(ROOT, 'build/web/site', file));
            response.writeHead(200, { 'Content-Type': TYPES[extname(file)] });
            response.end(bytes);
        } catch {
            response.writeHead(404);
            response.end();
        }
    });
    await new Promise((resolve) => { server.listen(0, '127.0.0.1', resolve); });
    const stop = () => new Promise((resolve) => {
        server.close(resolve);
        server.closeAllConnections();
    });
    return { url: `http://127.0.0.1:${server.address().port}/`, asked, stop };
}

test('the published page asks for its own files alone, and works without its server afterwards', async () => {
    const server = await serve();
    const context = await used.browser.createBrowserContext();
    const tab = await context.newPage();
    const faults = [];
    tab.on('pageerror', (error) => faults.push(String(error)));
    await tab.goto(server.url);
    await tab.waitForSelector('#picture:not([hidden])');
    await tab.evaluate(async () => {
        await navigator.serviceWorker.ready;
        if (navigator.serviceWorker.controller === null) {
            await new Promise((resolve) => {
                navigator.serviceWorker.addEventListener('controllerchange', resolve, { once: true });
            });
        }
    });
    const manifest = await tab.evaluate(() => document.querySelector('link[rel="manifest"]').href);
    assert.equal(manifest, `${server.url}manifest.webmanifest`);
    const own = ['/', '/favicon.ico', '/icon-192.png', '/icon-512.png', '/manifest.webmanifest', '/service_worker.js'];
    assert.deepEqual(server.asked.filter((path) => !own.includes(path)), []);
    await server.stop();
    await tab.reload();
    await tab.waitForSelector('#picture:not([hidden])');
    assert.deepEqual(faults, []);
    await context.close();
});
