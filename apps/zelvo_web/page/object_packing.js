// SPDX-License-Identifier: MIT
// Rearranges the bytes of a LightWave object so that they compress to half of what they would. The size stays the same.
//
// Coordinates: all first bytes of the numbers, then all second bytes, and so on, since neighbours have similar exponents.
// Polygons: each word less the one at the same place of the polygon before, if all have as many corners as the first.

/** Moves byte i of each number of `size` bytes to the i-th part of the result. */
function split(bytes, size) {
    const count = Math.floor(bytes.length / size);
    const result = bytes.slice();
    for (let number = 0; number < count; ++number) {
        for (let i = 0; i < size; ++i) {
            result[i * count + number] = bytes[number * size + i];
        }
    }
    return result;
}

function join(bytes, size) {
    const count = Math.floor(bytes.length / size);
    const result = bytes.slice();
    for (let number = 0; number < count; ++number) {
        for (let i = 0; i < size; ++i) {
            result[number * size + i] = bytes[i * count + number];
        }
    }
    return result;
}

/** Changes each big-endian word by the word a polygon earlier, which `earlier` takes from the bytes before or after. */
function changeWords(bytes, direction) {
    const result = bytes.slice();
    const source = direction < 0 ? bytes : result;
    const polygon = 2 * ((bytes[0] << 8 | bytes[1]) + 2);
    for (let at = polygon; at + 1 < bytes.length; at += 2) {
        const earlier = source[at - polygon] << 8 | source[at - polygon + 1];
        const word = (bytes[at] << 8 | bytes[at + 1]) + direction * earlier;
        result[at] = word >> 8;
        result[at + 1] = word;
    }
    return result;
}

function changeChunks(object, changes) {
    const result = object.slice();
    const view = new DataView(object.buffer, object.byteOffset, object.byteLength);
    for (let at = 12; at + 8 <= object.length;) {
        const name = String.fromCharCode(...object.subarray(at, at + 4));
        const size = view.getUint32(at + 4);
        if (name in changes) {
            result.set(changes[name](object.slice(at + 8, at + 8 + size)), at + 8);
        }
        at += 8 + size + size % 2;
    }
    return result;
}

export function packObject(object) {
    return changeChunks(object, {
        PNTS: (bytes) => split(bytes, 4),
        POLS: (bytes) => split(changeWords(bytes, -1), 2),
    });
}

export function unpackObject(packed) {
    return changeChunks(packed, {
        PNTS: (bytes) => join(bytes, 4),
        POLS: (bytes) => changeWords(join(bytes, 2), 1),
    });
}
