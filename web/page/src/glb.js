// What a binary glTF file says of itself, without anything being drawn.

const headerLength = 12;
const chunkHeaderLength = 8;

/** The description in a binary glTF file: its first chunk. */
export function descriptionOf(glb) {
    const length = new DataView(glb).getUint32(headerLength, true);
    return JSON.parse(new TextDecoder().decode(new Uint8Array(glb, headerLength + chunkHeaderLength, length)));
}
