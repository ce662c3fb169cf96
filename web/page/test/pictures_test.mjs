// What a page shows is what fltshot draws from the same place.

import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { after, before, test } from "node:test";
import { launch, open, pictureOf } from "./browser.mjs";
import { databaseOf, folder, makePage, run } from "./files.mjs";
import { blockDifferenceOf, decode, overlapOf, rednessOf } from "./pictures.mjs";

const [width, height] = [640, 480];
const background = "ff00ff";

let browser;
before(async () => { browser = await launch(); });
after(() => browser.close());

/** The picture of a page, and that of fltshot. @param places where the eye stands, and what it looks at */
async function bothPictures(name, path, eye, target) {
    const page = await open(browser, path, { viewport: { width, height },
        hash: `#panels=off&background=${background}&camera=${[...eye, ...target].join(",")}` });
    const shown = decode(await pictureOf(page));
    assert.deepEqual(page.complaints, []);
    await page.close();
    const file = `${folder}${name}.png`;
    run("fltshot", "-q", "-o", file, "--size", `${width}x${height}`, "--background", `#${background}`,
        "--eye", eye.join(","), "--look-at", target.join(","), databaseOf(name));
    return [shown, decode(readFileSync(file))];
}

const views = {
    airfield: [[[-250, -100, 60], [0, 100, 5]], [[400, -500, 300], [0, 0, 0]]],
    unlit: [[[1, -14, 4], [0, 0, 1.5]]],
    moving: [[[3, -14, 6], [0, 0, 1]]],
};

for (const [name, places] of Object.entries(views))
    test(`${name} has the silhouette that fltshot draws`, async () => {
        const path = makePage(name);
        for (const [eye, target] of places) {
            const overlap = overlapOf(...await bothPictures(name, path, eye, target));
            assert.ok(overlap >= 0.95, `${overlap} from ${eye}`);
        }
    });

test("what isn't lit has the colours that fltshot draws", async () => {
    const difference = blockDifferenceOf(...await bothPictures("unlit", makePage("unlit"), ...views.unlit[0]));
    assert.ok(difference <= 12, String(difference));
});

test("a marking is as large as fltshot draws it, from near and from afar", async () => {
    const path = makePage("markings");
    const extent = 100;
    for (const times of [1, 3, 10]) {
        const eye = [0.3, -0.8, 0.5].map((part) => part * times * extent);
        const [shown, drawn] = (await bothPictures("markings", path, eye, [0, 0, 0])).map(rednessOf);
        assert.ok(Math.abs(shown / drawn - 1) <= 0.05, `${shown} and ${drawn} at ${times}`);
    }
});
