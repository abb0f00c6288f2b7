// SPDX-License-Identifier: MIT
// What a link to the page carries after its "#": the object, the mode and the size.
import { MODES } from './commands.js';
import { OBJECTS } from './data.js';

/** The part of a link, as `object=torus_knot&mode=phong&size=640x480`. */
export function writeLink({ object, mode, width, height }) {
    const parts = new URLSearchParams();
    if (OBJECTS.includes(object)) {
        parts.set('object', object);
    }
    if (mode in MODES) {
        parts.set('mode', MODES[mode]);
    }
    parts.set('size', `${width}x${height}`);
    return `#${parts}`;
}

/** What a link asks for; what it does not name, or names wrongly, is left out. */
export function readLink(fragment) {
    const parts = new URLSearchParams(fragment.replace(/^#/, ''));
    const wanted = {};
    if (OBJECTS.includes(parts.get('object'))) {
        wanted.object = parts.get('object');
    }
    if (MODES.includes(parts.get('mode'))) {
        wanted.mode = MODES.indexOf(parts.get('mode'));
    }
    const size = /^([0-9]{1,5})x([0-9]{1,5})$/.exec(parts.get('size') ?? '');
    if (size !== null && [size[1], size[2]].every((side) => side >= 1 && side <= 16384)) {
        wanted.width = Number(size[1]);
        wanted.height = Number(size[2]);
    }
    if (['fast', 'plain'].includes(parts.get('forms'))) {
        wanted.forms = parts.get('forms');
    }
    return wanted;
}

/** The changes to the settings that a link asks for, as giveSettings takes them. */
export function settingsOf(wanted) {
    return {
        ...(wanted.mode !== undefined && { 'obj style': wanted.mode }),
        ...(wanted.width !== undefined && { width: wanted.width, height: wanted.height }),
    };
}
