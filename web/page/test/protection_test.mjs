// A page asks for nothing, and runs nothing but its own script, whatever is put into it.

import assert from "node:assert/strict";
import { readFileSync, writeFileSync } from "node:fs";
import { after, before, test } from "node:test";
import { launch, open } from "./browser.mjs";
import { makePage } from "./files.mjs";

let browser;
before(async () => { browser = await launch(); });
after(() => browser.close());

test("names that would be markup are text", async () => {
    const page = await open(browser, makePage("markup"));
    assert.equal(await page.evaluate(() => document.body.dataset.state), "ready");
    const names = await page.locator("[role=treeitem] .name").allTextContents();
    assert.ok(names.includes("</script><script>document.title='owned'</script>"), names.join("\n"));
    assert.ok(names.includes("<img src=x onerror=\"document.title='owned'\">&amp;"), names.join("\n"));
    assert.equal(await page.title(), "model.flt");
    assert.equal(await page.locator("img").count(), 0);
    assert.deepEqual(page.complaints, []);
    await page.close();
});

test("no request leaves the page", async () => {
    const page = await open(browser, makePage("airfield"));
    assert.equal(await page.evaluate(() => document.body.dataset.state), "ready");
    assert.deepEqual(page.requests.map((address) => new URL(address).protocol), ["file:"]);
    assert.deepEqual(page.complaints, []);
    await page.close();
});

test("an injected script doesn't run, and nothing is fetched", async () => {
    const path = makePage("moving");
    const injected = path.replace("model.html", "injected.html");
    writeFileSync(injected, readFileSync(path, "utf8").replace("<header>",
        "<script>document.title='owned'</script><img src=\"x.png\" onerror=\"document.title='owned'\">"
        + "<script src=\"http://localhost/x.js\"></script><link rel=stylesheet href=\"http://localhost/x.css\"><header>"));
    const page = await open(browser, injected);
    assert.equal(await page.evaluate(() => document.body.dataset.state), "ready", "the page itself still works");
    assert.equal(await page.title(), "model.flt");
    const blocked = await page.evaluate(async () => {
        const policies = [];
        const areTold = new Promise((resolve) => {
            document.addEventListener("securitypolicyviolation", (event) => {
                policies.push(event.effectiveDirective);
                if (policies.length === 3)
                    resolve();
            });
        });
        const script = document.createElement("script");
        script.textContent = "document.title = 'owned'";
        document.body.append(script);
        const isFetched = await fetch("http://localhost/data").then(() => true, () => false);
        const isOwnFetched = await fetch("data:text/plain,x").then(() => true, () => false);
        await areTold;
        return { policies: policies.sort(), isFetched, isOwnFetched, title: document.title };
    });
    assert.deepEqual(blocked, { policies: ["connect-src", "connect-src", "script-src-elem"], isFetched: false,
        isOwnFetched: false, title: "model.flt" });
    assert.deepEqual(page.requests.filter((address) => !page.refused.includes(address) && !address.endsWith(".html")), []);
    assert.ok(page.refused.includes("http://localhost/x.js"), page.refused.join(" "));
    await page.close();
});
