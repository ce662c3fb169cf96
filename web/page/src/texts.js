// Texts that stand or lie in the model: glTF has no form for them, so they are painted here.

import { CanvasTexture, Color, DoubleSide, Mesh, MeshBasicMaterial, PlaneGeometry, SRGBColorSpace } from "three";
import { textOf } from "./extras.js";

const anisotropy = 8;
const linePixels = 64;
const mostPixels = 4096;
const fontPart = 0.8; // Of a line.
const descentPart = 0.2; // Of a line: what stands below its place.

/** Adds what texts look like to the nodes that hold them. */
export function paintTexts(description, objects) {
    (description.nodes ?? []).forEach((node, number) => {
        const text = objects.has(number) ? textOf(node) : null;
        if (text !== null)
            objects.get(number).add(meshOf(text));
    });
}

function meshOf({ lines, place, size, isLying, alignment, color }) {
    const canvas = document.createElement("canvas");
    const context = canvas.getContext("2d");
    const font = `bold ${linePixels * fontPart}px sans-serif`;
    context.font = font;
    const widest = Math.max(1, ...lines.map((line) => context.measureText(line).width));
    canvas.width = Math.min(mostPixels, Math.ceil(widest));
    canvas.height = Math.min(mostPixels, lines.length * linePixels);
    context.fillRect(0, 0, canvas.width, canvas.height);
    context.font = font;
    context.fillStyle = "white";
    context.textAlign = alignment;
    const start = { left: 0, center: canvas.width / 2, right: canvas.width }[alignment] ?? 0;
    lines.forEach((line, row) => context.fillText(line, start, (row + 1 - descentPart) * linePixels));

    const texture = new CanvasTexture(canvas);
    texture.anisotropy = anisotropy;
    const [width, height] = [canvas.width, canvas.height].map((pixels) => pixels / linePixels * size);
    const plane = new PlaneGeometry(width, height);
    plane.translate(width / 2 - start / linePixels * size, height / 2 - descentPart * size, 0);
    const mesh = new Mesh(plane, new MeshBasicMaterial({ alphaMap: texture, transparent: true, alphaTest: 0.02,
        side: DoubleSide, color: new Color().setRGB(...color.map((part) => part / 255), SRGBColorSpace) }));
    if (!isLying)
        mesh.rotation.x = Math.PI / 2;
    mesh.position.set(...place);
    return mesh;
}
