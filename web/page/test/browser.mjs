// A browser without a window, and pages in it that mustn't complain or ask for anything.

import { chromium } from "playwright-core";
import { pathToFileURL } from "node:url";

const longest = 120_000; // Milliseconds until a state that never comes is given up.

export function launch(...more) {
    return chromium.launch({ executablePath: "/usr/bin/chromium", args: ["--no-sandbox", "--use-gl=angle",
        "--use-angle=swiftshader", "--enable-unsafe-swiftshader", "--force-color-profile=srgb", ...more] });
}

/**
 * Opens a page and waits until it shows its model, or says that it can't.
 * @param settings of Playwright; hash goes behind the address
 * @return the page, with lists of what it asked for and what it complained about
 */
export async function open(browser, path, { hash = "", ...settings } = {}) {
    const page = await browser.newPage({ viewport: { width: 1000, height: 700 }, reducedMotion: "reduce", ...settings });
    page.setDefaultTimeout(longest);
    page.requests = [];
    page.refused = []; // What the policy of the page kept from being asked for.
    page.complaints = [];
    page.on("request", (request) => page.requests.push(request.url()));
    page.on("requestfailed", (request) => request.failure().errorText === "csp" && page.refused.push(request.url()));
    page.on("pageerror", (error) => page.complaints.push(String(error)));
    page.on("console", (message) => message.type() === "error" && page.complaints.push(message.text()));
    await page.goto(pathToFileURL(path).href + hash);
    await page.waitForFunction(() => !["", "reading"].includes(document.body.dataset.state ?? ""));
    await settled(page);
    return page;
}

/** Waits until nothing more is to be drawn. */
export function settled(page) {
    return page.evaluate(async () => {
        const drawn = () => document.querySelector("canvas")?.dataset.pictures;
        const frame = () => new Promise((resolve) => requestAnimationFrame(() => requestAnimationFrame(resolve)));
        for (let before; before !== drawn();) {
            before = drawn();
            await frame();
            await frame();
        }
    });
}

/** The picture of the view, as PNG. */
export async function pictureOf(page) {
    await settled(page);
    return page.locator("#canvas").screenshot();
}
