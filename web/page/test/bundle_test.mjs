// The built viewer is what its sources make.

import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { mkdtempSync, readFileSync, rmSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { test } from "node:test";

test("the built viewer has the bytes that its sources make", () => {
    const folder = mkdtempSync(join(tmpdir(), "viewer-"));
    try {
        const [program, ...words] = JSON.parse(readFileSync("package.json")).scripts.build.split(" ");
        const made = join(folder, "viewer.min.js");
        execFileSync(join("node_modules", ".bin", program),
            words.map((word) => word.replace(/^--outfile=.*/, `--outfile=${made}`)), { stdio: "inherit" });
        assert.ok(readFileSync(made).equals(readFileSync("viewer.min.js")),
            "viewer.min.js is older than its sources: run 'npm ci --ignore-scripts && npm run build' in web/page");
    } finally {
        rmSync(folder, { recursive: true });
    }
});

test("its licence is that of the library in it", () => {
    assert.equal(readFileSync("LICENSE.three", "utf8"), readFileSync("node_modules/three/LICENSE", "utf8"));
});

test("the list of packages names no registry", () => {
    assert.doesNotMatch(readFileSync("package-lock.json", "utf8"), /"resolved"|https?:\/\/registry/);
});
