// What another reader finds in a .glb is what the toolkit draws of the scene of the same database.

import assert from "node:assert/strict";
import { existsSync, mkdirSync, readdirSync } from "node:fs";
import { test } from "node:test";
import { databaseOf, folder, run } from "./files.mjs";
import { readGlb, survey } from "./gltf.mjs";

// Open Inventor has other names where a database's hold markup; a test of the page reads those.
const databases = [...readdirSync(folder).filter((name) => name !== "markup" && name !== "airfield"
    && existsSync(databaseOf(name))), "airfield"];

const out = `${folder}read/`;

/** What stands below no name of a database: the top node has one of its own in either form. */
function withoutTop(parts, top) {
    const { [top]: rest, ...named } = parts;
    return rest === undefined ? named : { "": rest, ...named };
}

/** Writes a database in both forms, about its own middle and with markings where they are. */
function convert(name) {
    const common = ["-q", "--origin", "centre"];
    run("flt2gltf", ...common, "--lift", "none", "-o", `${out}${name}.glb`, databaseOf(name));
    run("flt2iv", ...common, "--lod", "highest", "-o", `${out}${name}.iv`, databaseOf(name));
}

/** @param tolerance what numbers may differ by */
function assertNear(found, expected, tolerance, what) {
    [found].flat(2).forEach((value, i) => {
        const wanted = [expected].flat(2)[i];
        assert.ok(Math.abs(value - wanted) <= tolerance, `${what}: ${found} and not ${expected}`);
    });
}

function assertSame(found, expected, what) {
    for (const count of ["triangles", "turning", "unlit", "lines", "points", "textured"])
        assert.deepEqual(found[count], expected[count], `${what}: ${count}`);
    assert.deepEqual(found.box === undefined, expected.box === undefined, what);
    if (expected.box === undefined)
        return;
    const extent = Math.max(...expected.box.flat().map(Math.abs));
    const corners = 3 * (expected.triangles - expected.turning);
    assertNear(found.box, expected.box, 1e-5 * extent, `${what}: box`);
    assertNear(found.area, expected.area, 1e-4 * expected.area, `${what}: area`);
    assertNear(found.moment, expected.moment, 1e-4 * extent * expected.area, `${what}: places of triangles`);
    for (const kind of ["colors", "normals", "emission", "roughness"])
        assertNear(found[kind], expected[kind], 1e-3 * corners, `${what}: ${kind}`);
}

mkdirSync(out, { recursive: true });
databases.forEach(convert);
const scenes = run("survey_scenes", ...databases.map((name) => `${out}${name}.iv`)).trim().split("\n")
    .map((line) => withoutTop(JSON.parse(line).parts, "root"));

databases.forEach((name, i) => {
    test(`${name} has the names, triangles, places and materials of its scene`, async () => {
        const parts = withoutTop(survey(await readGlb(`${out}${name}.glb`)), "database");
        assert.deepEqual(Object.keys(parts).sort(), Object.keys(scenes[i]).sort());
        for (const [part, expected] of Object.entries(scenes[i]))
            assertSame(parts[part], expected, part);
    });
});

test("all of the sample is compared", () => {
    const sum = (kind) => Object.values(scenes.at(-1)).reduce((total, part) => total + part[kind], 0);
    assert.ok(sum("triangles") > 20_000, String(sum("triangles")));
    assert.ok(sum("turning") > 0 && sum("points") > 0);
});
