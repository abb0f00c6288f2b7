// SPDX-License-Identifier: MIT
// Keys, mouse and fingers become the program's events.
import { CURSOR_KEYS, ESCAPE } from './commands.js';

/** The character of a key press, null if it is none of the 8-bit set. */
export function characterOf(event) {
    if (event.key.length !== 1) {
        return null;
    }
    const code = event.key.charCodeAt(0);
    if (code < 256) {
        return code;
    }
    // On a layout without Latin letters, keys count by their place.
    const place = /^(?:Key([A-Z])|Digit([0-9]))$/.exec(event.code);
    if (place === null) {
        return null;
    }
    const letter = place[1] ?? place[2];
    return (event.shiftKey ? letter : letter.toLowerCase()).charCodeAt(0);
}

/** Whole counts of a movement whose parts may be fractions. */
function makeCounter() {
    let restX = 0;
    let restY = 0;
    return (dx, dy, send) => {
        restX += dx;
        restY += dy;
        const x = Math.trunc(restX);
        const y = Math.trunc(restY);
        restX -= x;
        restY -= y;
        if (x !== 0 || y !== 0) {
            send(x, y);
        }
    };
}

/**
 * Passes the user's input to the run that `currentRun` returns. `hint` shows how to free the pointer; `toggleFullScreen`
 * is for Alt+Enter.
 */
export function takeInput({ stage, canvas, hint, currentRun, toggleFullScreen }) {
    // Keys that went down while the program could take them; others do not repeat into it.
    const held = new Set();
    const count = makeCounter();
    const move = (dx, dy) => count(dx, dy, (x, y) => currentRun()?.move(x, y));

    const isForPage = (event) =>
        event.ctrlKey || event.metaKey || event.altKey || document.querySelector('dialog[open]') !== null ||
        event.target.closest?.('input, select, textarea') != null;

    document.addEventListener('keydown', (event) => {
        if (event.altKey && event.key === 'Enter' && !event.repeat) {
            toggleFullScreen();
            return;
        }
        const run = currentRun();
        if (!run?.isOn || isForPage(event) || (event.repeat && !held.has(event.code))) {
            return;
        }
        held.add(event.code);
        if (event.key === 'Escape') {
            // The browser frees the pointer and leaves full screen by this key, and then it is no command.
            if (document.pointerLockElement !== null || document.fullscreenElement !== null) {
                document.exitPointerLock();
                return;
            }
            run.character(ESCAPE);
        } else if (event.key in CURSOR_KEYS) {
            run.rawKey(CURSOR_KEYS[event.key]);
        } else {
            const character = characterOf(event);
            const isForButton = event.key === ' ' && event.target.closest?.('button') != null;
            if (character === null || isForButton) {
                return;
            }
            run.character(character);
        }
        event.preventDefault();
    });
    document.addEventListener('keyup', (event) => held.delete(event.code));
    window.addEventListener('blur', () => held.clear());

    // The mouse. The first click takes the pointer and is no command.
    canvas.addEventListener('mousedown', (event) => {
        if (document.pointerLockElement === canvas) {
            if (event.button === 0 || event.button === 2) {
                currentRun()?.button(event.button === 2);
            }
        } else if (currentRun()?.isOn) {
            // Some browsers return a promise, which they reject where the pointer cannot be had.
            canvas.requestPointerLock()?.catch?.(() => {});
        }
        canvas.focus({ preventScroll: true });
        event.preventDefault();
    });
    document.addEventListener('mousemove', (event) => {
        if (document.pointerLockElement === canvas) {
            move(event.movementX, event.movementY);
        }
    });
    stage.addEventListener('contextmenu', (event) => event.preventDefault());
    document.addEventListener('pointerlockchange', () => {
        hint.hidden = document.pointerLockElement !== canvas;
    });

    // A finger or a pen. They have no buttons here; the page's own do their work.
    let finger = null;
    canvas.addEventListener('pointerdown', (event) => {
        if (event.pointerType !== 'mouse' && finger === null) {
            finger = { id: event.pointerId, x: event.clientX, y: event.clientY };
            canvas.setPointerCapture(event.pointerId);
            // No mouse event follows.
            event.preventDefault();
        }
    });
    canvas.addEventListener('pointermove', (event) => {
        if (event.pointerId === finger?.id) {
            move(event.clientX - finger.x, event.clientY - finger.y);
            finger.x = event.clientX;
            finger.y = event.clientY;
        }
    });
    for (const name of ['pointerup', 'pointercancel']) {
        canvas.addEventListener(name, (event) => {
            finger = event.pointerId === finger?.id ? null : finger;
        });
    }
    // Otherwise the touch makes mouse events as well, and a quick movement a fling, which takes the next tap to stop it.
    canvas.addEventListener('touchstart', (event) => event.preventDefault(), { passive: false });

    return { release: () => { held.clear(); document.exitPointerLock(); } };
}
