// SPDX-License-Identifier: MIT
// The functions of page.h: what they get becomes JavaScript's own, and goes to the object `page` that the page gave to the
// module. Those that wait for the user return promises, for which the compiler lets the program sleep.
mergeInto(LibraryManager.library, {
    page_open_picture: function (width, height, factor) {
        Module['page']['openPicture'](width, height, factor);
    },
    page_close_picture: function () {
        Module['page']['closePicture']();
    },
    page_show_picture: function (pixels, indices, palette) {
        Module['page']['showPicture'](pixels, indices, palette);
    },
    page_announce: function (text) {
        Module['page']['announce'](UTF8ToString(text));
    },
    page_ask_for_file: function (title, initialPath, suffix) {
        return Asyncify.handleAsync(function () {
            return Module['page']['askForFile'](UTF8ToString(title), UTF8ToString(initialPath), UTF8ToString(suffix))
                .then(function (path) { return path === null ? 0 : allocateUTF8(path); });
        });
    },
    page_ask_for_mode: function (answer) {
        return Asyncify.handleAsync(function () {
            var initial = HEAP32.slice(answer >> 2, (answer >> 2) + 3);
            return Module['page']['askForMode'](initial).then(function (chosen) {
                if (chosen !== null) {
                    HEAP32.set(chosen, answer >> 2);
                }
                return chosen === null ? 0 : 1;
            });
        });
    },
    page_file_size: function (name) {
        var bytes = Module['page']['readFile'](UTF8ToString(name));
        return bytes === null ? -1 : bytes.length;
    },
    page_read_file: function (name, to) {
        HEAPU8.set(Module['page']['readFile'](UTF8ToString(name)), to);
    },
    page_write_file: function (name, bytes, size) {
        var error = Module['page']['writeFile'](UTF8ToString(name), HEAPU8.slice(bytes, bytes + size));
        return error === null ? 0 : allocateUTF8(error);
    },
});
