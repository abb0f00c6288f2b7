// SPDX-License-Identifier: MIT
// Runs golden cases on the module of the page, as the page runs it, and compares every frame. Nothing here depends on where
// it runs: in node, or in a browser.

/** The cases of cases.txt. */
export function goldenCases(text) {
    return text.split('\n').filter((line) => line !== '' && !line.startsWith('#')).map((line) => {
        const [object, script, size, passes] = line.split(' ');
        const [width, height] = size.split('x').map(Number);
        return { name: `${object}.${script}.${size}`, object, script, width, height, passes: Number(passes) };
    });
}

/** The events of an input file by their passes: functions that send them to an instance. */
function eventsOf(script) {
    const events = new Map();
    for (const line of script.split('\n').filter((each) => each !== '' && !each.startsWith('#'))) {
        const [pass, kind, first, second] = line.split(' ');
        const code = first.startsWith('0x') ? Number(first) : first.charCodeAt(0);
        const send = {
            key: (instance) => instance._web_character(code),
            rawkey: (instance) => instance._web_raw_key(code),
            move: (instance) => instance._web_move(Number(first), Number(second)),
            button: (instance) => instance._web_button(first === 'right'),
        }[kind];
        if (send === undefined) {
            throw new Error(`unknown event: ${line}`);
        }
        events.set(Number(pass), [...events.get(Number(pass)) ?? [], send]);
    }
    return events;
}

/**
 * Runs a case; the pixels of each pass's frame. `makeInstance` makes an instance of the module for a page, `files` has the
 * object as "object.lwo", the texture and the script by their names.
 */
export async function goldenFrames(makeInstance, golden, files) {
    const saved = new Map();
    const page = {
        print() {},
        announce() {},
        openPicture() {},
        closePicture() {},
        showPicture() {},
        askForFile: () => Promise.resolve(null),
        askForMode: () => Promise.resolve([0, golden.width, golden.height]),
        readFile: (name) => saved.get(name) ?? files[name] ?? null,
        writeFile(name, bytes) {
            saved.set(name, bytes);
            return null;
        },
    };
    const events = eventsOf(files.script);
    const instance = await makeInstance(page);
    const asleep = () => instance.Asyncify.currData && instance.Asyncify.whenDone();
    instance._zelvo_begin(instance.allocateUTF8('object.lwo'));
    await asleep();
    const frames = [];
    for (let pass = 1; pass <= golden.passes; ++pass) {
        for (const send of events.get(pass) ?? []) {
            send(instance);
        }
        instance._zelvo_pass(0);
        const at = instance._zelvo_frame();
        frames.push(instance.HEAPU8.slice(at, at + golden.width * golden.height));
    }
    return frames;
}
