// Has pictures decoded from the bytes of the model itself: the loader's own way asks for addresses, and the page
// may ask for none.

import { Texture } from "three";

const anisotropy = 8; // Sharp on grounds that are seen at a low angle, too.
const asStored = { premultiplyAlpha: "none", colorSpaceConversion: "none" };

/** A plug-in of GLTFLoader. */
export function picturesFromBytes(parser) {
    const textures = new Map(); // By the number of the picture.
    const decode = async (number) => {
        const picture = parser.json.images[number];
        const bytes = await parser.getDependency("bufferView", picture.bufferView);
        const texture = new Texture(await createImageBitmap(new Blob([bytes], { type: picture.mimeType }), asStored));
        texture.anisotropy = anisotropy;
        texture.needsUpdate = true;
        return texture;
    };
    parser.loadImageSource = async (number) => {
        if (textures.has(number))
            return (await textures.get(number)).clone(); // Another sampler for the same pixels.
        textures.set(number, decode(number));
        return textures.get(number);
    };
    return { name: "pictures from bytes" };
}
