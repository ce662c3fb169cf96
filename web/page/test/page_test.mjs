// What people do with a page.

import assert from "node:assert/strict";
import { after, before, test } from "node:test";
import { launch, open, pictureOf, settled } from "./browser.mjs";
import { makePage } from "./files.mjs";
import { decode, isChanged } from "./pictures.mjs";

let browser;
let moving;
before(async () => {
    browser = await launch();
    moving = makePage("moving");
});
after(() => browser.close());

/** Does something, and tells whether the picture is another one then. */
async function changes(page, act) {
    const old = decode(await pictureOf(page));
    await act();
    return isChanged(old, decode(await pictureOf(page)));
}

const row = (page, name) => page.getByRole("treeitem", { name, exact: false }).first();

async function stateOf(page) {
    return page.evaluate(() => document.body.dataset.state);
}

test("the sample has its tree, its figures and what is missing of it", async () => {
    const page = await open(browser, makePage("airfield"));
    assert.equal(await stateOf(page), "ready");
    await assertRow(page, "runway_and_apron");
    assert.match(await page.locator("#summary").textContent(), /^[1-9][\d,]+ triangles · /);
    assert.match(await page.locator("#details").textContent(), /Figures/);
    assert.deepEqual(page.complaints, []);
    await page.close();
});

async function assertRow(page, name) {
    assert.equal(await row(page, name).count(), 1, `${name} in ${await page.locator("#tree").textContent()}`);
}

/** Has a node fill the picture, by its name. */
async function fit(page, name) {
    await page.getByLabel("Search names").fill(name);
    await page.getByLabel("Search names").press("Enter");
    await page.locator("#tree").press("Enter");
    await settled(page);
}

test("a switch of the sample shows another choice", async () => {
    const page = await open(browser, makePage("airfield"));
    await fit(page, "windsock");
    const choice = page.getByLabel("windsock");
    const other = (await choice.evaluate((field) => field.selectedIndex)) === 0 ? 1 : 0;
    assert.ok(await changes(page, () => choice.selectOption({ index: other })));
    await page.close();
});

test("a joint of the sample turns", async () => {
    const page = await open(browser, makePage("airfield"));
    await fit(page, "radar");
    await page.locator("#details summary", { hasText: "radar" }).click();
    assert.ok(await changes(page, () => page.getByLabel("Yaw").fill("90")));
    await page.close();
});

test("a switch shows what the chosen mask says", async () => {
    const page = await open(browser, moving);
    const choice = page.getByLabel("sign");
    assert.equal(await row(page, "stop").getAttribute("aria-checked"), "true");
    assert.equal(await row(page, "go").getAttribute("aria-checked"), "false");
    assert.ok(await changes(page, () => choice.selectOption({ index: 1 })));
    assert.equal(await row(page, "stop").getAttribute("aria-checked"), "false");
    assert.equal(await row(page, "go").getAttribute("aria-checked"), "true");
    await page.close();
});

test("a joint turns as far as its slider says, and goes back", async () => {
    const page = await open(browser, moving);
    const slider = page.getByLabel("Yaw");
    assert.deepEqual(await slider.evaluate(({ min, max, value }) => [min, max, value]), ["-90", "90", "0"]);
    assert.ok(await changes(page, () => slider.fill("60")));
    assert.equal(await slider.getAttribute("aria-valuetext"), "60°");
    assert.ok(await changes(page, () => page.getByRole("button", { name: "As stored" }).click()));
    assert.equal(await slider.inputValue(), "0");
    await slider.press("ArrowRight");
    assert.equal(await slider.inputValue(), "5", "one step of the file");
    await page.close();
});

test("a search leaves what is found, with what stands above it", async () => {
    const page = await open(browser, moving);
    await page.getByLabel("Search names").fill("LEA");
    assert.equal(await page.locator("#found").textContent(), "1 name");
    const names = await page.locator("[role=treeitem] .name").allTextContents();
    assert.ok(names.includes("leaf") && names.includes("door") && !names.includes("sign"), names.join(", "));
    await page.getByLabel("Search names").press("Enter");
    assert.equal(await row(page, "leaf").getAttribute("aria-selected"), "true");
    await page.close();
});

test("everything goes by keyboard", async () => {
    const page = await open(browser, moving);
    await page.keyboard.press("/");
    assert.equal(await page.evaluate(() => document.activeElement.id), "search");
    await page.keyboard.type("leaf");
    await page.keyboard.press("Enter");
    assert.equal(await page.evaluate(() => document.activeElement.id), "tree");
    assert.ok(await changes(page, () => page.keyboard.press("Space")), "hidden");
    assert.equal(await row(page, "leaf").getAttribute("aria-checked"), "false");
    await page.keyboard.press("ArrowUp");
    assert.equal(await row(page, "door").getAttribute("aria-selected"), "true");
    assert.match(await page.locator("#tree").getAttribute("aria-activedescendant"), /^row-\d+$/);
    await page.locator("#canvas").focus();
    for (const key of ["ArrowLeft", "Shift+ArrowUp", "+", "f", "w", "4"])
        assert.ok(await changes(page, () => page.keyboard.press(key)), key);
    await page.close();
});

test("parts of the page have names for screen readers", async () => {
    const page = await open(browser, moving);
    for (const [role, name] of [["tree", "Nodes of the database"], ["searchbox", "Search names"], ["toolbar", "View"],
        ["img", /three dimensions/], ["region", "Details"], ["region", "Names"], ["combobox", "sign"], ["slider", "Yaw"]])
        assert.equal(await page.getByRole(role, { name }).count(), 1, `${role} ${name}`);
    for (const attribute of ["aria-level", "aria-posinset", "aria-setsize", "aria-checked"])
        assert.notEqual(await row(page, "leaf").getAttribute(attribute), null, attribute);
    assert.equal(await page.evaluate(() => document.documentElement.lang), "en");
    await page.close();
});

test("a click on the model selects its node", async () => {
    const page = await open(browser, moving);
    const { width, height } = page.viewportSize();
    await page.keyboard.press("4");
    await settled(page);
    await page.mouse.click(width / 2, height / 2);
    assert.equal(await page.locator("[aria-selected=true]").count(), 1);
    await page.close();
});

test("nothing is drawn while nothing changes", async () => {
    const page = await open(browser, moving);
    const pictures = () => page.evaluate(() => document.querySelector("canvas").dataset.pictures);
    const old = await pictures();
    await page.evaluate(async () => {
        for (let frame = 0; frame < 20; ++frame)
            await new Promise((resolve) => requestAnimationFrame(resolve));
    });
    assert.equal(await pictures(), old);
    await page.close();
});

test("a flip-book plays when it is asked to, and stops", async () => {
    const page = await open(browser, makePage("flipBooks"));
    const button = page.getByRole("button", { name: "Play" });
    assert.equal(await button.getAttribute("aria-pressed"), "false", "less motion was asked for");
    const pictures = () => page.evaluate(() => Number(document.querySelector("canvas").dataset.pictures));
    const old = await pictures();
    await button.click();
    await page.waitForFunction((count) => Number(document.querySelector("canvas").dataset.pictures) > count + 3, old);
    await button.click();
    assert.equal(await button.getAttribute("aria-pressed"), "false");
    await page.close();
});

test("the address says where the eye stands, and a button puts it there", async () => {
    const page = await open(browser, moving, { hash: "#camera=1,-20,5,0,0,1" });
    assert.ok(await changes(page, () => page.evaluate(() => { location.hash = "#camera=15,-15,5,0,0,1"; })));
    await page.getByRole("button", { name: "Link" }).click();
    assert.equal(await page.evaluate(() => location.hash), "#camera=15,-15,5,0,0,1");
    assert.ok(await changes(page, () => page.keyboard.press("4")));
    await page.getByRole("button", { name: "Link" }).click();
    assert.notEqual(await page.evaluate(() => location.hash), "#camera=15,-15,5,0,0,1");
    await page.close();
});

test("the page is light or dark as the system is, until somebody chooses", async () => {
    const groundOf = (page) => page.evaluate(() => getComputedStyle(document.body).backgroundColor);
    const [light, dark] = [await open(browser, moving, { colorScheme: "light" }),
        await open(browser, moving, { colorScheme: "dark" })];
    const [lightGround, darkGround] = [await groundOf(light), await groundOf(dark)];
    assert.notEqual(lightGround, darkGround);
    await light.keyboard.press("t");
    assert.equal(await groundOf(light), darkGround);
    await light.close();
    await dark.close();
});

test("without 3D graphics the names and figures are there", async () => {
    const plain = await launch("--disable-3d-apis");
    try {
        const page = await open(plain, moving);
        assert.equal(await stateOf(page), "no graphics");
        assert.match(await page.locator("#notice").textContent(), /no 3D graphics/);
        await assertRow(page, "leaf");
        assert.equal(await row(page, "leaf").getAttribute("aria-checked"), null, "there is nothing to hide");
        assert.match(await page.locator("#details").textContent(), /Triangles/);
        await page.getByLabel("Search names").fill("sign");
        assert.equal(await page.locator("#found").textContent(), "1 name");
        await row(page, "sign").click();
        assert.match(await page.locator("#details").textContent(), /Kindswitch/);
    } finally {
        await plain.close();
    }
});

test("a model that is broken is said to be", async () => {
    const { readFileSync, writeFileSync } = await import("node:fs");
    const path = moving.replace("model.html", "broken.html");
    writeFileSync(path, readFileSync(moving, "utf8").replace(/(id="model">.{200})[^<]+/, "$1"));
    const page = await open(browser, path);
    assert.equal(await stateOf(page), "failed");
    assert.match(await page.locator("#notice").textContent(), /can't be shown/);
    await page.close();
});
