// SPDX-License-Identifier: MIT
// Saves what is shown: a picture as PNG, a stretch of passes as GIF. The program's pictures have 256 colours of a palette,
// as those of a GIF have, so that nothing is lost.
import { GIFEncoder } from 'gifenc';

// A longer animation would be too large to do anything with.
const LONGEST = 600;

// Shown by every program that shows GIFs, of 1/100 second each; 60 per second are not.
const DELAY_MILLISECONDS = 20;

/** Offers bytes to the user as a file. */
export function save(blob, name) {
    const link = document.createElement('a');
    link.href = URL.createObjectURL(blob);
    link.download = name;
    link.click();
    setTimeout(() => URL.revokeObjectURL(link.href), 60000);
}

export function savePicture(picture, name) {
    picture.source.toBlob((blob) => save(blob, `${name}.png`), 'image/png');
}

/** Records the passes until the returned function is called; `onEnd` gets the GIF. */
export function record(picture, onEnd) {
    const { width, height } = picture.source;
    const gif = GIFEncoder();
    let frames = 0;

    function end() {
        picture.onShow = null;
        if (frames > 0) {
            gif.finish();
            onEnd(new Blob([gif.bytes()], { type: 'image/gif' }));
        }
    }

    picture.onShow = (indices, palette) => {
        if (picture.source.width !== width || picture.source.height !== height) {
            end();
            return;
        }
        const memory = picture.instance.HEAPU8;
        const colours = Array.from({ length: 256 }, (_, i) => [...memory.subarray(palette + 3 * i, palette + 3 * i + 3)]);
        gif.writeFrame(memory.subarray(indices, indices + width * height), width, height, {
            palette: colours,
            delay: DELAY_MILLISECONDS,
        });
        frames += 1;
        if (frames === LONGEST) {
            end();
        }
    };
    return end;
}
