// SPDX-License-Identifier: MIT
// The program's requesters as dialogs. Each function returns a promise of the answer, null if it was cancelled.

const byId = (id) => document.getElementById(id);

// What the host's display modes are in a page, by their numbers.
const MODES = [
    'As large as the page allows', 'Pixels as they are', 'Pixels doubled', 'Pixels tripled', 'Pixels quadrupled',
];

const SIZES = ['160x128', '320x256', '640x480', '1280x960'];

/** Shows a dialog until it is closed; the value of the button that closed it, '' for Esc. */
function showDialog(dialog) {
    dialog.returnValue = '';
    dialog.showModal();
    return new Promise((resolve) => {
        dialog.addEventListener('close', () => resolve(dialog.returnValue), { once: true });
    });
}

/**
 * Asks for a file: one of `choices`, which have a name, a path and a function that makes a picture or null, or one of the
 * user's, which `addFile` takes and returns the path of.
 */
export async function askForFile({ title, initialPath, suffix, choices, addFile }) {
    const dialog = byId('file-dialog');
    const input = byId('file-input');
    let path = null;
    byId('file-title').textContent = title;
    input.accept = suffix === '.chunky' ? '.chunky' : '.lwo,.lwob';
    input.value = '';
    const choose = (chosen) => {
        path = chosen;
        dialog.close('chosen');
    };
    byId('file-list').replaceChildren(...choices.map((choice) => {
        const button = document.createElement('button');
        button.type = 'button';
        button.append(choice.name);
        button.addEventListener('click', () => choose(choice.path));
        button.autofocus = choice.path === initialPath;
        choice.picture?.().then((picture) => picture && button.prepend(picture));
        const item = document.createElement('li');
        item.append(button);
        return item;
    }));
    input.onchange = async () => {
        if (input.files.length === 1) {
            choose(await addFile(input.files[0]));
        }
    };
    const waiting = showDialog(dialog);
    // A file that is dropped on the page is an answer as well.
    dialog.choose = choose;
    await waiting;
    dialog.choose = null;
    return path;
}

/** Asks for a mode and a size; `initial` has the mode's number, the width and the height, and so has the answer. */
export async function askForMode(initial) {
    const [mode, width, height] = ['mode-id', 'mode-width', 'mode-height'].map(byId);
    mode.replaceChildren(...MODES.map((name, number) => new Option(name, number)));
    const show = ([newMode, newWidth, newHeight]) => {
        mode.value = newMode;
        width.value = newWidth;
        height.value = newHeight;
    };
    show(initial);
    byId('mode-sizes').replaceChildren(...SIZES.map((size) => {
        const button = document.createElement('button');
        button.type = 'button';
        button.textContent = size.replace('x', ' × ');
        button.addEventListener('click', () => show([mode.value, ...size.split('x')]));
        return button;
    }));
    byId('mode-dialog').querySelector('[value="cancel"]').onclick = () => byId('mode-dialog').close();
    const isConfirmed = await showDialog(byId('mode-dialog')) === 'confirm';
    return isConfirmed ? [mode, width, height].map((input) => Number(input.value)) : null;
}
