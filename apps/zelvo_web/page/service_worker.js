// SPDX-License-Identifier: MIT
// Keeps the page for when there is no network. Only the published folder has it; VERSION changes with the page.
const CACHE = `zelvo-${VERSION}`;

self.addEventListener('install', (event) => {
    event.waitUntil(caches.open(CACHE).then((cache) => cache.addAll(['./', ...FILES])));
});

self.addEventListener('activate', (event) => {
    event.waitUntil(caches.keys().then((names) => Promise.all(
        names.filter((name) => name.startsWith('zelvo-') && name !== CACHE).map((name) => caches.delete(name)),
    )).then(() => self.clients.claim()));
});

self.addEventListener('fetch', (event) => {
    event.respondWith(caches.match(event.request).then((kept) => kept ?? fetch(event.request)));
});
