// SPDX-License-Identifier: MIT
// One run of the program, from its start to its end. Every run has an instance of the module, since a run leaves its
// variables as they are.
import makeFast from 'zelvo-fast';
import makePlain from 'zelvo-plain';
import { pageData } from './data.js';

// A function that returns a vector.
const USES_VECTORS = new Uint8Array([
    0, 97, 115, 109, 1, 0, 0, 0, 1, 5, 1, 96, 0, 1, 123, 3, 2, 1, 0, 10, 10, 1, 8, 0, 65, 0, 253, 15, 253, 98, 11,
]);

/** Whether the browser has 128-bit vectors. */
export const hasVectors = WebAssembly.validate(USES_VECTORS);

// The compiled module and the function that makes an instance's surroundings, for each of the two forms.
const compiled = {};

async function compile(form) {
    return { module: await WebAssembly.compile(await pageData(form)), make: form === 'fast' ? makeFast : makePlain };
}

/** An instance of the module. `page` has what page_calls.js calls, and `print`. */
export async function makeInstance(page, form = hasVectors ? 'fast' : 'plain') {
    compiled[form] ??= compile(form);
    const { module, make } = await compiled[form];
    return make({
        page,
        print: page.print,
        printErr: page.print,
        instantiateWasm(imports, receive) {
            WebAssembly.instantiate(module, imports).then(receive);
            return {};
        },
    });
}

/** Calls an export of the instance that may sleep; its result when it has ended. */
export async function finish(instance, call) {
    const result = call();
    return instance.Asyncify.currData ? instance.Asyncify.whenDone() : result;
}

/** Calls zelvo_begin with the name of an object, or null. */
export async function begin(instance, object) {
    const name = object === null ? 0 : instance.allocateUTF8(object);
    return finish(instance, () => instance._zelvo_begin(name));
}

/**
 * Starts a run. `onEnd` gets the exit code, and what went wrong if the program did not end by itself; `onPass` is called
 * after each pass with the instance.
 */
export async function startRun({ page, object, form, onPass, onEnd }) {
    let instance = null;
    let isOver = false;
    // When the last pass ended, in milliseconds; null if the page was hidden since, which stops the program's clock.
    let endOfPass = null;
    // Whether the next pass waits until the page is visible. Some browsers ask hidden pages for pictures, only less often.
    let isResting = false;

    function end(error) {
        if (isOver) {
            return;
        }
        isOver = true;
        document.removeEventListener('visibilitychange', noteVisibility);
        if (error?.name === 'ExitStatus') {
            onEnd(error.status, null);
        } else {
            onEnd(20, String(error?.message ?? error));
        }
    }

    function noteVisibility() {
        endOfPass = null;
        if (isResting && !document.hidden) {
            isResting = false;
            requestAnimationFrame(pass);
        }
    }

    function afterPass(quits) {
        if (isOver) {
            return;
        }
        if (quits) {
            finish(instance, () => instance._zelvo_end()).catch(end);
            return;
        }
        endOfPass = performance.now();
        onPass(instance);
        requestAnimationFrame(pass);
    }

    function pass() {
        if (isOver) {
            return;
        }
        if (document.hidden) {
            isResting = true;
            return;
        }
        let quits;
        try {
            quits = instance._zelvo_pass(endOfPass === null ? 0 : (performance.now() - endOfPass) / 1000);
        } catch (error) {
            end(error);
            return;
        }
        if (instance.Asyncify.currData) {
            instance.Asyncify.whenDone().then(afterPass, end);
        } else {
            afterPass(quits);
        }
    }

    document.addEventListener('visibilitychange', noteVisibility);
    const run = {
        /** Whether commands reach the program. */
        get isOn() {
            return instance !== null && !isOver;
        },
        character: (code) => run.isOn && instance._web_character(code),
        rawKey: (code) => run.isOn && instance._web_raw_key(code),
        button: (isRight) => run.isOn && instance._web_button(isRight),
        move: (dx, dy) => run.isOn && instance._web_move(dx, dy),
    };
    makeInstance(page, form)
        .then((made) => {
            instance = made;
            page.instance = made;
            return begin(instance, object);
        })
        .then(() => requestAnimationFrame(pass))
        .catch(end);
    return run;
}
