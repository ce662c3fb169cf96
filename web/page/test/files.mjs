// The databases of the tests, and the programs that make something of them.

import { execFileSync } from "node:child_process";

export const folder = process.env.VELLOREADER_PAGES;
const programs = process.env.VELLOREADER_PROGRAMS;
const mostOutput = 1 << 26;

/** Runs one of the programs. @return what it wrote on standard output */
export function run(program, ...words) {
    return execFileSync(programs + program, words,
        { encoding: "utf8", maxBuffer: mostOutput, stdio: ["ignore", "pipe", "pipe"] });
}

/** The path of a database of the tests, or of the sample. */
export const databaseOf = (name) => (name === "airfield" ? `${folder}airfield.flt` : `${folder}${name}/model.flt`);

/** Makes the page of a database. @return its path */
export function makePage(name) {
    const path = databaseOf(name).replace(/\.flt$/, ".html");
    run("flt2gltf", "-q", "-o", path, databaseOf(name));
    return path;
}
