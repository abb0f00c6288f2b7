// SPDX-License-Identifier: MIT
// The files that the program can open: those of the page, those that the user gave it, and settings. ENVARC: is what the
// browser keeps for good, ENV: what it keeps for this visit.
import { settingsText } from './settings_text.js';

/** The settings of a first visit: the object spins, as large as the page has room for. */
const FIRST_SETTINGS = settingsText({ rotate: '2.000000' });

export const SESSION_SETTINGS = 'ENV:Zelvo.vars';
export const LASTING_SETTINGS = 'ENVARC:Zelvo.vars';

const files = new Map();

// Text that ENV:Zelvo.vars holds in the place of what was saved, or null.
let givenSettings = null;

// Whether a run starts as if nothing had ever been saved.
let isForgotten = false;

/** The store of a volume. A browser may refuse even to name it. */
function storeOf(name) {
    return name.startsWith('ENV:') ? window.sessionStorage : name.startsWith('ENVARC:') ? window.localStorage : null;
}

function isOnVolume(name) {
    return /^ENV(ARC)?:/.test(name);
}

function storedText(name) {
    try {
        return storeOf(name).getItem(`zelvo ${name}`);
    } catch {
        return null;
    }
}

/** The settings that a run starts with, null if there are none. */
function startSettings() {
    if (isForgotten) {
        return null;
    }
    return givenSettings ?? storedText(SESSION_SETTINGS) ?? storedText(LASTING_SETTINGS) ?? FIRST_SETTINGS;
}

function fileName(path) {
    return path.replace(/^\//, '');
}

/** The bytes of a file, null if there is none of the name. */
export function readFile(name) {
    if (!isOnVolume(name)) {
        return files.get(fileName(name)) ?? null;
    }
    const text = name === SESSION_SETTINGS ? startSettings() : storedText(name);
    return text === null ? null : new TextEncoder().encode(text);
}

/** Keeps a file; why it could not, or null. */
export function writeFile(name, bytes) {
    if (!isOnVolume(name)) {
        return 'a page can write settings only';
    }
    try {
        storeOf(name).setItem(`zelvo ${name}`, new TextDecoder().decode(bytes));
    } catch (error) {
        return error.message || error.name;
    }
    if (name === SESSION_SETTINGS) {
        givenSettings = null;
        isForgotten = false;
    }
    return null;
}

/** Adds a file that the program can open; its path. */
export function addFile(name, bytes) {
    files.set(name, bytes);
    return `/${name}`;
}

/** The names of the files that end in a suffix, in any case of letters. */
export function fileNames(suffix) {
    return [...files.keys()].filter((name) => name.toLowerCase().endsWith(suffix));
}

/** Makes the next run start with the settings of the last save, changed by `changes`: values by their names. */
export function giveSettings(changes) {
    let text = startSettings() ?? FIRST_SETTINGS;
    for (const [name, value] of Object.entries(changes)) {
        text = text.replace(new RegExp(`^${name}: .*$`, 'm'), `${name}: ${value}`);
    }
    isForgotten = false;
    givenSettings = text;
}

/** Makes the next run start as the very first one on a system does: without settings, so that it asks for a mode. */
export function forgetSettings() {
    isForgotten = true;
    givenSettings = null;
    for (const name of [SESSION_SETTINGS, LASTING_SETTINGS]) {
        try {
            storeOf(name).removeItem(`zelvo ${name}`);
        } catch {
            // Where nothing can be kept, there is nothing to forget.
        }
    }
}
