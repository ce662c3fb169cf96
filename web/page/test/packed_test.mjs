// A .glb that is rounded, compressed, or tells copies at once shows another reader what the plain one does.

import assert from "node:assert/strict";
import { existsSync, mkdirSync, readdirSync, statSync } from "node:fs";
import { test } from "node:test";
import { databaseOf, folder, run } from "./files.mjs";
import { readGlb, survey } from "./gltf.mjs";

const databases = readdirSync(folder).filter((name) => existsSync(databaseOf(name)));
if (!databases.includes("airfield"))
    databases.push("airfield");
const out = `${folder}packed/`;
mkdirSync(out, { recursive: true });

const forms = {
    quantized: ["--quantize"],
    compressed: ["--meshopt"],
    instanced: ["--instancing"],
    all: ["--quantize", "--meshopt", "--instancing"],
};

async function read(name, form, options) {
    const path = `${out}${name}-${form}.glb`;
    run("flt2gltf", "-q", ...options, "-o", path, databaseOf(name));
    const model = await readGlb(path);
    return { parts: survey(model), required: model.parser.json.extensionsRequired ?? [], size: statSync(path).size };
}

function assertNear(found, expected, tolerance, what) {
    [found].flat(2).forEach((value, i) => {
        const wanted = [expected].flat(2)[i];
        assert.ok(Math.abs(value - wanted) <= tolerance, `${what}: ${found} and not ${expected}`);
    });
}

/** @param rounding what numbers may differ by, of one */
function assertSame(found, expected, rounding, what) {
    for (const count of ["triangles", "turning", "unlit", "lines", "points", "textured"])
        assert.deepEqual(found[count], expected[count], `${what}: ${count}`);
    if (expected.box === undefined)
        return;
    const extent = Math.max(...expected.box.flat().map(Math.abs));
    const corners = 3 * (expected.triangles - expected.turning);
    assertNear(found.box, expected.box, rounding * extent, `${what}: box`);
    assertNear(found.area, expected.area, 20 * rounding * extent * Math.sqrt(expected.area) + 1e-9, `${what}: area`);
    assertNear(found.colors, expected.colors, 1e-4 * corners, `${what}: colors`);
    assertNear(found.normals, expected.normals, 200 * rounding * corners, `${what}: normals`);
}

for (const name of databases)
    for (const [form, options] of Object.entries(forms))
        test(`${name} is the same ${form}`, async () => {
            const plain = await read(name, "plain", []);
            const packed = await read(name, form, options);
            assert.deepEqual(Object.keys(packed.parts).sort(), Object.keys(plain.parts).sort());
            const rounding = options.includes("--quantize") ? 4e-5 : 1e-6;
            for (const [part, expected] of Object.entries(plain.parts))
                assertSame(packed.parts[part], expected, rounding, part);
        });

test("the sample becomes less than half as large", async () => {
    const plain = await read("airfield", "plain", []);
    const packed = await read("airfield", "all", forms.all);
    assert.ok(packed.size < plain.size / 2, `${packed.size} of ${plain.size}`);
    assert.deepEqual(packed.required.sort(), ["EXT_meshopt_compression", "KHR_mesh_quantization"]);
});
