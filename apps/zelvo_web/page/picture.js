// SPDX-License-Identifier: MIT
// The picture on the page: drawn from the program's memory, as large as its mode says, sharp on every display.

/** What shows the program's pictures. `onShow` is called with the entries and the palette of each, for animations. */
export function makePicture(stage, canvas) {
    // The picture in its own size, from which the canvas is drawn.
    const source = document.createElement('canvas');
    const sourceContext = source.getContext('2d', { alpha: false });
    const context = canvas.getContext('2d', { alpha: false });
    let factor = 0;
    let image = null;
    let address = 0;

    function draw() {
        context.imageSmoothingEnabled = false;
        context.drawImage(source, 0, 0, canvas.width, canvas.height);
    }

    const picture = {
        canvas,
        source,
        isOpen: false,
        /** Called with the addresses of the entries and of the palette of every picture, or null. */
        onShow: null,
        /** The instance whose memory has the picture. */
        instance: null,

        open(width, height, newFactor) {
            source.width = width;
            source.height = height;
            factor = newFactor;
            image = null;
            canvas.hidden = false;
            picture.isOpen = true;
            picture.place();
        },

        close() {
            canvas.hidden = true;
            picture.isOpen = false;
        },

        show(pixels, indices, palette) {
            const memory = picture.instance.HEAPU8.buffer;
            // The memory is another one after it has grown.
            if (image === null || address !== pixels || image.data.buffer !== memory) {
                const bytes = new Uint8ClampedArray(memory, pixels, 4 * source.width * source.height);
                image = new ImageData(bytes, source.width, source.height);
                address = pixels;
            }
            sourceContext.putImageData(image, 0, 0);
            draw();
            picture.onShow?.(indices, palette);
        },

        /** Places the canvas in the stage, in the display's own pixels. */
        place() {
            if (!picture.isOpen || picture.instance === null) {
                return;
            }
            const density = window.devicePixelRatio;
            const room = [stage.clientWidth, stage.clientHeight].map((side) => Math.max(1, Math.floor(side * density)));
            const wanted = factor === 0 || document.fullscreenElement !== null ? 0 : Math.max(1, Math.round(factor * density));
            const at = picture.instance._web_place_picture(source.width, source.height, wanted, ...room) >> 2;
            const [x, y, width, height, whole] = new Int32Array(picture.instance.HEAPU8.buffer).subarray(at, at + 5);
            const enlarged = whole > 0 ? 1 : Math.ceil(width / source.width);
            canvas.width = source.width * enlarged;
            canvas.height = source.height * enlarged;
            Object.assign(canvas.style, {
                left: `${x / density}px`,
                top: `${y / density}px`,
                width: `${width / density}px`,
                height: `${height / density}px`,
                imageRendering: whole > 0 ? 'pixelated' : 'auto',
            });
            draw();
        },
    };

    new ResizeObserver(picture.place).observe(stage);
    window.addEventListener('resize', picture.place);
    return picture;
}
