// A country as a tileset, in a viewer that many pages use: what is loaded near one tile, and where it stands.

import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { mkdirSync, readFileSync, rmSync } from "node:fs";
import { createServer } from "node:http";
import { join, normalize } from "node:path";
import { test } from "node:test";
import { build } from "esbuild";
import { chromium } from "playwright-core";

const programs = process.env.VELLOREADER_PROGRAMS;
const folder = process.env.VELLOREADER_TILES;
const tiles = Number(process.env.VELLOREADER_TILE_COUNT ?? 100);
const columns = Math.ceil(Math.sqrt(tiles));
const [row, column] = [columns >> 1, columns >> 1];

const degrees = Math.PI / 180;
const [a, b] = [6378137, 6356752.314245179];

/** From the middle of the earth, by the reduced latitude. */
function geocentric(latitude, longitude, height) {
    const reduced = Math.atan2(b * Math.sin(latitude * degrees), a * Math.cos(latitude * degrees));
    const fromAxis = a * Math.cos(reduced) + height * Math.cos(latitude * degrees);
    return [fromAxis * Math.cos(longitude * degrees), fromAxis * Math.sin(longitude * degrees),
        b * Math.sin(reduced) + height * Math.sin(latitude * degrees)];
}

/** Latitude and longitude of a place of the country, in metres from its middle: along the curves of the earth there. */
function placeOf(east, north) {
    const [latitude, longitude] = [47.5, 9];
    const square = 1 - (b * b) / (a * a);
    const root = Math.sqrt(1 - square * Math.sin(latitude * degrees) ** 2);
    const along = (a * (1 - square)) / root ** 3;
    const across = (a / root) * Math.cos(latitude * degrees);
    return [latitude + north / along / degrees, longitude + east / across / degrees];
}

const minus = (one, other) => one.map((value, i) => value - other[i]);
const dot = (one, other) => one.reduce((sum, value, i) => sum + value * other[i], 0);
const length = (vector) => Math.sqrt(dot(vector, vector));
const unit = (vector) => vector.map((value) => value / length(vector));
const middleOf = (tileRow, tileColumn) =>
    placeOf((tileColumn - (columns >> 1) + 0.5) * 1200, (tileRow - (columns >> 1) + 0.5) * 1200);
const nameOf = (tileRow, tileColumn) => {
    const [r, c] = [tileRow, tileColumn].map((number) => String(number).padStart(4, "0"));
    return `row_${r}/tile_${r}_${c}.glb`;
};

function makeTileset() {
    rmSync(folder, { recursive: true, force: true });
    mkdirSync(folder, { recursive: true });
    execFileSync(join(programs, "make_country"), ["--tiles", String(tiles), join(folder, "country")]);
    execFileSync(join(programs, "flt2gltf"), ["-q", "--tileset", "--lod", "split", "--xref", "file", "-o",
        join(folder, "globe/"), join(folder, "country")]);
}

/** A server of the tileset and of the page, on this computer alone, which counts what is asked for. */
async function serve() {
    const bundle = await build({ entryPoints: ["test/viewer.js"], bundle: true, write: false, format: "esm" });
    const page = '<!doctype html><body data-state=""><script type="module" src="/viewer.js"></script></body>';
    const asked = [];
    const server = createServer((request, response) => {
        const path = decodeURIComponent(request.url.split("?")[0]);
        if (path === "/" || path === "/favicon.ico")
            return response.setHeader("content-type", "text/html").end(page);
        if (path === "/viewer.js")
            return response.setHeader("content-type", "text/javascript").end(bundle.outputFiles[0].contents);
        asked.push(path);
        try {
            response.end(readFileSync(join(folder, normalize(path))));
        } catch {
            response.statusCode = 404;
            response.end();
        }
    });
    await new Promise((resolve) => server.listen(0, "127.0.0.1", resolve));
    return { server, asked, address: `http://127.0.0.1:${server.address().port}/` };
}

test("a viewer finds tiles and models where they are on the earth, and needs few files for them", async () => {
    makeTileset();
    const { server, asked, address } = await serve();
    const browser = await chromium.launch({ executablePath: "/usr/bin/chromium", args: ["--no-sandbox", "--use-gl=angle",
        "--use-angle=swiftshader", "--enable-unsafe-swiftshader"] });
    try {
        const complaints = [];
        const page = await browser.newPage({ viewport: { width: 960, height: 540 } });
        page.setDefaultTimeout(120_000);
        page.on("pageerror", (error) => complaints.push(String(error)));
        page.on("console", (message) => message.type() === "error" && complaints.push(message.text()));
        await page.goto(address);
        await page.waitForFunction(() => document.body.dataset.state === "ready");
        const [latitude, longitude] = middleOf(row, column);
        const [south] = placeOf(0, (row - (columns >> 1) + 0.5) * 1200 - 900);
        const up = unit(minus(geocentric(latitude, longitude, 1), geocentric(latitude, longitude, 0)));
        const isLoaded = await page.evaluate(([from, to, above]) => window.look(from, to, above),
            [geocentric(south, longitude, 1500), geocentric(latitude, longitude, 450), up]);
        assert.ok(isLoaded);
        const drawn = new Map((await page.evaluate(() => window.drawn())).map((one) => [one.uri, one]));
        await page.screenshot({ path: join(folder, "tiles.png") });
        assert.deepEqual(complaints, []);
        assert.ok(asked.length < 200, `${asked.length} requests`);

        for (const [r, c] of [[row, column], [row, column + 1], [row + 1, column]]) {
            const tile = drawn.get(nameOf(r, c));
            assert.ok(tile, `${nameOf(r, c)} is drawn, of ${[...drawn.keys()]}`);
            const [lat, lon] = middleOf(r, c);
            const normal = unit(minus(geocentric(lat, lon, 1), geocentric(lat, lon, 0)));
            const way = minus(tile.matrix.slice(12, 15), geocentric(lat, lon, 0));
            const aside = minus(way, normal.map((value) => value * dot(way, normal)));
            assert.ok(length(aside) < 1, `${nameOf(r, c)} is ${length(aside)} m beside its place`);
            assert.ok(dot(unit(tile.matrix.slice(4, 7)), normal) > 0.99, "y of the file goes up");
        }

        const [own, next] = [drawn.get(nameOf(row, column)), drawn.get(nameOf(row, column + 1))];
        const common = own.corners.filter((corner) => next.corners.some((other) => length(minus(corner, other)) < 1));
        assert.ok(common.length >= 2, "neighbours have corners in common");
        for (const corner of common)
            assert.ok(next.corners.some((other) => length(minus(corner, other)) < 0.01), "they meet within a centimetre");
        console.log(`${asked.length} requests, ${drawn.size} files drawn, ${common.length} corners in common`);
    } finally {
        await browser.close();
        server.close();
    }
});
