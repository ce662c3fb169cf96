// Compares pictures.

import { PNG } from "pngjs";

export const decode = (bytes) => PNG.sync.read(bytes);

function forEachPixel({ width, height, data }, take) {
    for (let pixel = 0; pixel < width * height; ++pixel)
        take(data[4 * pixel], data[4 * pixel + 1], data[4 * pixel + 2], pixel);
}

/** Which pixels aren't of the background, 0xff00ff. */
function silhouetteOf(picture) {
    const set = new Uint8Array(picture.width * picture.height);
    forEachPixel(picture, (red, green, blue, pixel) => {
        set[pixel] = Math.abs(red - 255) + green + Math.abs(blue - 255) > 90 ? 1 : 0;
    });
    return set;
}

/** How much of what either picture shows is shown by both: from 0 to 1. */
export function overlapOf(one, other) {
    const [a, b] = [silhouetteOf(one), silhouetteOf(other)];
    let [both, either] = [0, 0];
    a.forEach((isSet, pixel) => {
        both += isSet & b[pixel];
        either += isSet | b[pixel];
    });
    return either === 0 ? 1 : both / either;
}

/** The greatest difference of the means of blocks of 8 by 8 pixels, of any colour. */
export function blockDifferenceOf(one, other) {
    const columns = Math.ceil(one.width / 8);
    const sums = new Float64Array(columns * Math.ceil(one.height / 8) * 3);
    const add = (picture, sign) => forEachPixel(picture, (red, green, blue, pixel) => {
        const x = pixel % picture.width;
        const y = Math.floor(pixel / picture.width);
        const block = (Math.floor(y / 8) * columns + Math.floor(x / 8)) * 3;
        [red, green, blue].forEach((part, colour) => { sums[block + colour] += sign * part / 64; });
    });
    add(one, 1);
    add(other, -1);
    return sums.reduce((most, sum) => Math.max(most, Math.abs(sum)), 0);
}

/** How many pixels are of pure red, those in part counted in part. */
export function rednessOf(picture) {
    let sum = 0;
    forEachPixel(picture, (red, green, blue) => { sum += Math.max(0, red - Math.max(green, blue)) / 255; });
    return sum;
}

/** Whether two pictures differ in more than a few pixels. */
export function isChanged(one, other) {
    let count = 0;
    forEachPixel(one, (red, green, blue, pixel) => {
        const at = 4 * pixel;
        const difference = Math.abs(red - other.data[at]) + Math.abs(green - other.data[at + 1])
            + Math.abs(blue - other.data[at + 2]);
        count += difference > 30 ? 1 : 0;
    });
    return count > 20;
}
