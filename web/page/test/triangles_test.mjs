// Numbers that were worked out by hand: of databases with a triangle each, seen from the south, 4 to the east and 3 up.

import assert from "node:assert/strict";
import { mkdirSync } from "node:fs";
import { before, test } from "node:test";
import { Vector3 } from "three";
import { databaseOf, folder, run } from "./files.mjs";
import { namesAbove, readGlb } from "./gltf.mjs";

const out = `${folder}triangles/`;
before(() => mkdirSync(out, { recursive: true }));

async function meshOf(name) {
    run("flt2gltf", "-q", "-o", `${out}${name}.glb`, databaseOf(name));
    const model = await readGlb(`${out}${name}.glb`);
    const meshes = [];
    model.scene.traverse((object) => object.isMesh && meshes.push(object));
    assert.equal(meshes.length, 1);
    assert.equal(namesAbove(model, meshes[0])[0], "part");
    return { mesh: meshes[0], nodes: model.parser.json.nodes };
}

/** Values of an attribute at the corners, in the order of the first corner and its followers in the face. */
function atCorners({ geometry }, attribute, size) {
    return [...geometry.index.array].map((i) =>
        Array.from({ length: size }, (_, part) => geometry.attributes[attribute].getComponent(i, part)));
}

/** Where the corners are, as glTF has it: x to the east, y up, z to the south. */
function placesOf(mesh) {
    return atCorners(mesh, "position", 3).map((place) =>
        new Vector3(...place).applyMatrix4(mesh.matrixWorld).toArray());
}

/** Turns a list so that it begins with what is nearest to a value. */
function beginningWith(first, list) {
    const distance = (values) => Math.hypot(...values.map((value, i) => value - first[i]));
    const start = list.findIndex((values) => distance(values) < 0.01);
    assert.notEqual(start, -1, `${first} isn't in ${list}`);
    return [...list.slice(start), ...list.slice(0, start)];
}

function assertLists(found, expected, tolerance = 1e-5) {
    beginningWith(expected[0], found).forEach((values, corner) => values.forEach((value, i) =>
        assert.ok(Math.abs(value - expected[corner][i]) <= tolerance, `${found} and not ${expected}`)));
}

test("a turn to the left and a move put it where they should", async () => {
    const { mesh } = await meshOf("asymmetric");
    // East becomes north; then 10 to the east, 20 to the north, 30 up.
    assertLists(placesOf(mesh), [[10, 30, -20], [10, 30, -24], [10, 33, -20]]);
});

test("a colour is linear", async () => {
    const { mesh } = await meshOf("asymmetric");
    assert.ok(mesh.material.isMeshBasicMaterial, "its light mode is without light");
    const colors = mesh.geometry.attributes.color ? atCorners(mesh, "color", 4) : [[1, 1, 1, 1]];
    const { r, g, b } = mesh.material.color;
    // 204, 102 and 40 of 255: ((204 / 255 + 0.055) / 1.055) ^ 2.4, and so on.
    for (const color of colors)
        assertLists([[r * color[0], g * color[1], b * color[2]]], [[0.60383, 0.13287, 0.02122]], 5e-5);
});

test("a mirror leaves the order of corners, and readers turn the face", async () => {
    const { mesh } = await meshOf("mirrored");
    // 1 - x. The negative determinant has readers see it from the other side, so from the south still.
    assertLists(placesOf(mesh), [[1, 0, 0], [-3, 0, 0], [1, 3, 0]]);
    assert.ok(mesh.matrixWorld.determinant() < 0);
});

test("a shear is worked out without a matrix", async () => {
    const { mesh, nodes } = await meshOf("sheared");
    // What is 3 higher is 1.5 farther to the east.
    assertLists(placesOf(mesh), [[0, 0, 0], [4, 0, 0], [1.5, 3, 0]]);
    assert.ok(nodes.every((node) => node.matrix === undefined), "which the validator calls an error");
});

test("feet are metres, also from afar", async () => {
    const { mesh } = await meshOf("feet");
    // 1,000 feet to the east are 304.8 m, 2,000 to the north 609.6 m, 4 are 1.2192 m and 3 are 0.9144 m.
    assertLists(placesOf(mesh), [[304.8, 0, -609.6], [306.0192, 0, -609.6], [304.8, 0.9144, -609.6]], 1e-4);
});

test("the colours of vertices are linear and tint the picture, whose v goes down", async () => {
    const { mesh } = await meshOf("colored");
    assert.equal(mesh.material.map.name, "image.rgba");
    assert.deepEqual(mesh.material.color.toArray(), [1, 1, 1]);
    assertLists(atCorners(mesh, "uv", 2), [[0, 1], [1, 1], [0, 0.25]]);
    // 255, 102 and 204 of 255.
    assertLists(atCorners(mesh, "color", 4), [[1, 0, 0, 1], [0, 0.13287, 0, 1], [0, 0, 0.60383, 1]], 5e-5);
});
