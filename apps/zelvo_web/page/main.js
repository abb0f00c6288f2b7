// SPDX-License-Identifier: MIT
// The page: starts runs of the program and connects its buttons, dialogs and files with them.
import { record, savePicture, save } from './animation.js';
import { COMMANDS, CURSOR_KEYS, ESCAPE, MODES, STATE } from './commands.js';
import { dataFiles } from './data.js';
import { addFile, forgetSettings, giveSettings, readFile, writeFile } from './files.js';
import { objectChoices, textureChoices } from './gallery.js';
import { takeInput } from './input.js';
import { readLink, settingsOf, writeLink } from './link.js';
import { makePicture } from './picture.js';
import { askForFile, askForMode } from './requesters.js';
import { startRun } from './run.js';

const byId = (id) => document.getElementById(id);
const DEFAULT_OBJECT = 'torus_knot';
const MOST_LOG_LINES = 1000;
const NOTICE_MILLISECONDS = 6000;
const NO_FULL_SCREEN = 'This browser has no full screen for a picture.';

const stage = byId('stage');
const picture = makePicture(stage, byId('picture'));

// The run, its object's path, and what it printed.
let run = null;
let object = `/${DEFAULT_OBJECT}.lwo`;
let printed = [];

// What the run was asked to make room for: an object's path, null for the requester; undefined if nothing waits.
let nextObject;

// A texture that was dropped: the answer to the next requester for one.
let droppedTexture = null;

// Ends the recording of an animation; null if there is none.
let endRecording = null;

let forms;

const nameOf = (path) => (path ?? 'zelvo').replace(/^.*\//, '').replace(/\.lwob?$/i, '');

function notify(text) {
    const notice = byId('notice');
    notice.textContent = text;
    notice.hidden = false;
    clearTimeout(notify.timer);
    notify.timer = setTimeout(() => { notice.hidden = true; }, NOTICE_MILLISECONDS);
}

function print(line) {
    const log = byId('log');
    printed.push(line);
    log.append(`${line}\n`);
    while (log.childNodes.length > MOST_LOG_LINES) {
        log.firstChild.remove();
    }
    log.scrollTop = log.scrollHeight;
    if (line.includes(' was not saved: ')) {
        notify(line.replace(/^zelvo: /, ''));
    }
}

async function takeFile(file) {
    return addFile(file.name, new Uint8Array(await file.arrayBuffer()));
}

// What the program calls; page_calls.js says with what.
function makePage() {
    return {
        print,
        set instance(instance) {
            picture.instance = instance;
        },
        openPicture: picture.open,
        closePicture: picture.close,
        showPicture: picture.show,
        announce: (text) => { byId('announcement').textContent = text; },
        readFile,
        writeFile,
        async askForFile(title, initialPath, suffix) {
            input.release();
            if (suffix === '.chunky' && droppedTexture !== null) {
                const path = droppedTexture;
                droppedTexture = null;
                return path;
            }
            const choices = suffix === '.chunky' ? textureChoices() : objectChoices();
            const path = await askForFile({ title, initialPath, suffix, choices, addFile: takeFile });
            if (suffix !== '.chunky' && path !== null) {
                showObject(path);
            }
            return path;
        },
        async askForMode(initial) {
            input.release();
            const answer = await askForMode(initial);
            picture.canvas.focus();
            return answer;
        },
    };
}

function showObject(path) {
    object = path;
    byId('object-name').textContent = path === null ? '' : nameOf(path).replaceAll('_', ' ');
    picture.canvas.setAttribute('aria-label', path === null ? 'The object' : `The object ${nameOf(path).replaceAll('_', ' ')}`);
}

const shown = STATE.map(() => null);
let linked = '';

/** Shows the program's state on the page where it has changed. Makes nothing that has to be cleared away. */
function onPass(instance) {
    const at = instance._zelvo_state() >> 2;
    const memory = instance.HEAP32;
    let hasChanged = false;
    for (let i = 0; i < shown.length; ++i) {
        if (shown[i] !== memory[at + i]) {
            shown[i] = memory[at + i];
            hasChanged = true;
        }
    }
    if (hasChanged) {
        showState(Object.fromEntries(STATE.map((name, i) => [name, shown[i]])));
    }
}

function showState(state) {
    byId('mode').textContent = `Mode: ${MODES[state.mode] ?? state.mode}`;
    byId('spin').textContent = `Spin ${(state.spin / 10).toFixed(1)}`;
    byId('spin').setAttribute('aria-label', `Spin ${(state.spin / 10).toFixed(1)}, stop`);
    for (const button of document.querySelectorAll('[data-flag]')) {
        button.setAttribute('aria-pressed', state[button.dataset.flag] !== 0);
    }
    showLink();
}

function showLink() {
    const link = writeLink({
        object: nameOf(object), mode: shown[0], width: picture.source.width, height: picture.source.height,
    });
    if (link !== linked && picture.isOpen) {
        linked = link;
        try {
            history.replaceState(null, '', link);
        } catch {
            // A page that may not change its address works without.
        }
    }
}

function onEnd(code, failure) {
    endRecording?.();
    document.exitPointerLock();
    picture.close();
    const waiting = nextObject;
    nextObject = undefined;
    if (waiting !== undefined) {
        start(waiting);
        return;
    }
    if (failure !== null) {
        print(failure);
    }
    byId('ended-title').textContent = code === 0 ? 'The run has ended' : `The program has ended with code ${code}`;
    byId('ended-text').textContent = printed.slice(-8).join('\n');
    byId('ended').hidden = false;
    byId(object === null ? 'start-asking' : 'start-again').focus();
}

/** Starts a run with the object of a path; with null the program asks for one. */
async function start(path) {
    byId('ended').hidden = true;
    printed = [];
    shown.fill(null);
    showObject(path);
    run = await startRun({ page: makePage(), object: path, form: forms, onPass, onEnd });
}

/** Shows another object. A run that is on keeps its settings for this visit and ends. */
function open(path) {
    if (run === null || !run.isOn) {
        start(path);
        return;
    }
    nextObject = path;
    run.character('s'.charCodeAt(0));
    run.character(ESCAPE);
}

function send(command) {
    if (command.id === 'next-mode') {
        run?.button(true);
    } else if (command.raw !== undefined) {
        run?.rawKey(command.raw);
    } else {
        run?.character(command.code ?? command.character.charCodeAt(0));
    }
}

function toggleFullScreen() {
    if (document.fullscreenElement !== null) {
        document.exitFullscreen();
    } else if (stage.requestFullscreen === undefined) {
        notify(NO_FULL_SCREEN);
    } else {
        stage.requestFullscreen().catch(() => notify(NO_FULL_SCREEN));
    }
}

function toggleRecording(button) {
    if (endRecording !== null) {
        endRecording();
        return;
    }
    button.setAttribute('aria-pressed', true);
    endRecording = record(picture, (gif) => {
        endRecording = null;
        button.setAttribute('aria-pressed', false);
        save(gif, `${nameOf(object)}.gif`);
    });
}

async function copyLink() {
    try {
        await navigator.clipboard.writeText(location.href);
        notify('The link is in the clipboard.');
    } catch {
        notify(`The link is the page's address: ${location.href}`);
    }
}

const PAGE_ACTIONS = [
    ['Save picture', () => savePicture(picture, nameOf(object))],
    ['Record animation', toggleRecording],
    ['Copy link', copyLink],
    ['Keys', () => byId('keys-dialog').showModal()],
    ['Log', () => byId('log-dialog').showModal()],
    ['Forget settings', () => { forgetSettings(); notify('The next start asks for a screen mode, as a first one does.'); }],
];

function makeButton(label, onClick) {
    const button = document.createElement('button');
    button.textContent = label;
    button.addEventListener('click', () => onClick(button));
    return button;
}

function makeDrawer() {
    const groups = new Map();
    for (const command of COMMANDS.filter((each) => each.group)) {
        const button = makeButton(command.label, () => send(command));
        button.title = command.help;
        button.dataset.command = command.id;
        if (command.flag) {
            button.dataset.flag = command.flag;
        }
        groups.set(command.group, [...groups.get(command.group) ?? [], button]);
    }
    groups.set('Page', PAGE_ACTIONS.map(([label, action]) => makeButton(label, action)));
    byId('drawer').replaceChildren(...[...groups].map(([name, buttons]) => {
        const group = document.createElement('div');
        group.setAttribute('role', 'group');
        group.setAttribute('aria-label', name);
        group.append(...buttons);
        return group;
    }));
}

function makeKeyList() {
    const rows = [
        ...COMMANDS.map((command) => [command.keys ?? [command.character], command.help]),
        [['mouse', 'finger'], 'tilts the object; the first click gives the mouse to the picture, Esc takes it back'],
        [['Alt+Enter'], 'full screen and back'],
    ];
    byId('keys-list').replaceChildren(...rows.map(([keys, help]) => {
        const row = document.createElement('tr');
        const [first, second] = [document.createElement('td'), document.createElement('td')];
        keys.forEach((key, i) => {
            const name = document.createElement('kbd');
            name.textContent = key;
            first.append(i > 0 ? ' ' : '', name);
        });
        second.textContent = help;
        row.append(first, second);
        return row;
    }));
}

function connectButtons() {
    for (const button of document.querySelectorAll('#bar [data-command]')) {
        const command = COMMANDS.find((each) => each.id === button.dataset.command);
        button.title = command.help;
        button.addEventListener('click', () => send(command));
    }
    byId('more').addEventListener('click', () => {
        const isOpen = byId('drawer').toggleAttribute('hidden') === false;
        byId('more').setAttribute('aria-expanded', isOpen);
    });
    byId('full-screen').addEventListener('click', toggleFullScreen);
    byId('open-gallery').addEventListener('click', chooseObject);
    byId('start-again').addEventListener('click', () => start(object));
    byId('start-asking').addEventListener('click', () => start(null));
}

/** Lets the user choose another object while the program goes on with this one. */
async function chooseObject() {
    input.release();
    const path = await askForFile({
        title: 'Objects', initialPath: object, suffix: '.lwo', choices: objectChoices(), addFile: takeFile,
    });
    if (path !== null) {
        open(path);
    }
    picture.canvas.focus();
}

function takeDrops() {
    const hasFiles = (event) => event.dataTransfer?.types.includes('Files');
    document.addEventListener('dragover', (event) => {
        if (hasFiles(event)) {
            event.preventDefault();
            document.body.classList.add('dropping');
        }
    });
    document.addEventListener('dragleave', (event) => {
        if (event.relatedTarget === null) {
            document.body.classList.remove('dropping');
        }
    });
    document.addEventListener('drop', async (event) => {
        document.body.classList.remove('dropping');
        if (!hasFiles(event)) {
            return;
        }
        event.preventDefault();
        const path = await takeFile(event.dataTransfer.files[0]);
        const dialog = byId('file-dialog');
        if (dialog.open) {
            dialog.choose(path);
        } else if (path.toLowerCase().endsWith('.chunky')) {
            droppedTexture = path;
            run?.character('t'.charCodeAt(0));
        } else {
            open(path);
        }
    });
}

function followLink() {
    const wanted = readLink(location.hash);
    forms = wanted.forms;
    const changes = settingsOf(wanted);
    if (Object.keys(changes).length > 0) {
        giveSettings(changes);
    }
    return `/${wanted.object ?? DEFAULT_OBJECT}.lwo`;
}

const input = takeInput({
    stage, canvas: picture.canvas, hint: byId('hint'), currentRun: () => run, toggleFullScreen,
});
byId('hint').textContent = 'Esc frees the pointer';
makeDrawer();
makeKeyList();
connectButtons();
takeDrops();
window.addEventListener('hashchange', () => {
    linked = location.hash;
    open(followLink());
});
document.addEventListener('fullscreenchange', () => {
    byId('full-screen').setAttribute('aria-pressed', document.fullscreenElement !== null);
    picture.place();
});

// Only a published page has a manifest, and only a secure one can be kept.
if (document.querySelector('link[rel="manifest"]') !== null) {
    navigator.serviceWorker?.register('service_worker.js').catch((error) => print(`not kept for later: ${error.message}`));
}

for (const [name, bytes] of await dataFiles()) {
    addFile(name, bytes);
}
start(followLink());
