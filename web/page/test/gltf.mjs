// Reads glTF files by three.js's GLTFLoader without a browser, and tells what is drawn of them.

import { readFileSync } from "node:fs";
import { Box3, Color, Matrix3, Mesh, Vector3 } from "three";

// What the loader takes from browsers. Pictures aren't decoded.
globalThis.self = globalThis;
globalThis.document = { createElementNS: () => { throw new Error("a picture is to be shown by an element"); } };
globalThis.createImageBitmap = async () => ({ width: 1, height: 1, close() {} });
const { GLTFLoader } = await import("three/examples/jsm/loaders/GLTFLoader.js");

const { MeshoptDecoder } = await import("three/examples/jsm/libs/meshopt_decoder.module.js");

/** Puts a mesh of its own at each place where one is told to stand. */
function spread(model) {
    const told = [];
    model.scene.traverse((object) => object.isInstancedMesh && told.push(object));
    for (const object of told) {
        for (let i = 0; i < object.count; ++i) {
            const mesh = new Mesh(object.geometry, object.material);
            object.getMatrixAt(i, mesh.matrix);
            mesh.matrix.premultiply(object.matrix).decompose(mesh.position, mesh.quaternion, mesh.scale);
            model.parser.associations.set(mesh, model.parser.associations.get(object));
            object.parent.add(mesh);
        }
        object.removeFromParent();
    }
}

/** Reads a .glb. @return what GLTFLoader makes of it, its matrices up to date */
export async function readGlb(path) {
    const bytes = readFileSync(path);
    const model = await new GLTFLoader().setMeshoptDecoder(MeshoptDecoder).parseAsync(
        bytes.buffer.slice(bytes.byteOffset, bytes.byteOffset + bytes.length), "");
    spread(model);
    model.scene.updateMatrixWorld(true);
    return model;
}

/** The node of the file that an object stands for, with those above it. */
function* nodesAbove(model, object) {
    for (let one = object; one !== null; one = one.parent) {
        const number = model.parser.associations.get(one)?.nodes;
        if (number !== undefined)
            yield model.parser.json.nodes[number];
    }
}

/** The names above an object and its own, the nearest first. */
export function namesAbove(model, object) {
    const names = [...nodesAbove(model, object)].map(({ name }) => name);
    return names.filter((name, i) => name && name !== names[i - 1]);
}

const turns = (model, object) => [...nodesAbove(model, object)].some(({ extras }) => extras?.turning);

/** In the axes of databases: glTF has y up. */
const toDatabase = ({ x, y, z }) => new Vector3(x, -z, y);

/** The corners of what is drawn, in the axes of databases, each with place, normal, color in sRGB, and uv. */
export function cornersOf(mesh) {
    const { geometry, material, matrixWorld } = mesh;
    const { position, normal, color, uv } = geometry.attributes;
    const turn = new Matrix3().getNormalMatrix(matrixWorld);
    const order = geometry.index?.array ?? Array.from({ length: position.count }, (_, i) => i);
    const at = (attribute, i, size) => Array.from({ length: size }, (_, part) => attribute.getComponent(i, part));
    return Array.from(order, (i) => {
        const factor = color ? at(color, i, color.itemSize) : [1, 1, 1];
        const mixed = new Color().fromArray(factor).multiply(material.color).convertLinearToSRGB();
        return {
            place: toDatabase(new Vector3().fromBufferAttribute(position, i).applyMatrix4(matrixWorld)),
            normal: normal && toDatabase(new Vector3().fromBufferAttribute(normal, i).applyMatrix3(turn).normalize()),
            color: [mixed.r, mixed.g, mixed.b, (factor[3] ?? 1) * material.opacity],
            uv: uv && at(uv, i, 2),
        };
    });
}

const newPart = () => ({ triangles: 0, turning: 0, unlit: 0, textured: {}, area: 0, moment: [0, 0, 0],
    colors: [0, 0, 0, 0], normals: [0, 0, 0], emission: [0, 0, 0], roughness: 0, lines: 0, points: 0 });

const add = (sum, values, times = 1) => values.forEach((value, i) => { sum[i] += value * times; });

function addLit(part, normal, material) {
    add(part.normals, normal.toArray());
    add(part.emission, material.emissive.clone().convertLinearToSRGB().toArray());
    part.roughness += material.roughness;
}

function addTriangles(part, mesh) {
    const corners = cornersOf(mesh);
    const { material } = mesh;
    const count = corners.length / 3;
    const isUnlit = material.isMeshBasicMaterial === true;
    part.unlit += isUnlit ? count : 0;
    if (material.map)
        part.textured[material.map.name] = (part.textured[material.map.name] ?? 0) + count;
    const box = part.box ? new Box3(new Vector3(...part.box[0]), new Vector3(...part.box[1])) : new Box3();
    for (const { place, normal, color } of corners) {
        box.expandByPoint(place);
        add(part.colors, color);
        if (!isUnlit)
            addLit(part, normal, material);
    }
    part.box = [box.min.toArray(), box.max.toArray()];
    for (let i = 0; i < corners.length; i += 3) {
        const [a, b, c] = corners.slice(i, i + 3).map(({ place }) => place);
        const area = b.clone().sub(a).cross(c.clone().sub(a)).length() / 2;
        part.area += area;
        add(part.moment, a.clone().add(b).add(c).divideScalar(3).toArray(), area);
    }
}

/** What is drawn below each name and no other, as survey_scenes tells it of a scene. */
export function survey(model) {
    const parts = {};
    model.scene.traverse((object) => {
        if (!object.isMesh && !object.isLine && !object.isPoints)
            return;
        const name = (namesAbove(model, object)[0] ?? "");
        const part = parts[name] ??= newPart();
        const count = object.geometry.index?.count ?? object.geometry.attributes.position.count;
        if (object.isPoints)
            part.points += count;
        else if (object.isLine)
            part.lines += object.isLineSegments ? count / 2 : count - 1;
        else {
            part.triangles += count / 3;
            if (turns(model, object))
                part.turning += count / 3;
            else
                addTriangles(part, object);
        }
    });
    return parts;
}
