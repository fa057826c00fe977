// What axe finds, in light and dark, on a telephone, a tablet and a screen; and nothing is wider than those.
import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { createRequire } from "node:module";
import { after, before, test } from "node:test";
import { launch, open, schemes, widths } from "./browser.mjs";

const axe = readFileSync(createRequire(import.meta.url).resolve("axe-core/axe.min.js"), "utf8");
let browser;
before(async () => { browser = await launch(); });
after(() => browser.close());

/** What is folded is looked at, too; of the matrix's rows, those that have a mark for the first time. */
const prepare = (page) => page.evaluate(() => {
    for (const one of document.querySelectorAll("details")) one.open = true;
    for (const body of document.querySelectorAll(".matrix tbody")) {
        const seen = new Set();
        for (const row of [...body.rows]) {
            const marks = [...row.cells].map((cell) => cell.className);
            if (marks.every((mark) => seen.has(mark))) row.remove();
            marks.forEach((mark) => seen.add(mark));
        }
    }
});

for (const path of ["index.html", "formats/mp4.html", "video/h264.html", "plan.html#dvd/mpeg2video/ac3", "lists.html", "proof.html"]) {
    test(`${path} can be used by everybody`, async () => {
        for (const width of widths) {
            for (const scheme of schemes) {
                const page = await open(browser, path, { width, scheme });
                await prepare(page);
                await page.evaluate(axe);
                const { violations } = await page.evaluate(() => window.axe.run({ resultTypes: ["violations"], preload: false }));
                const told = violations.map(({ id, nodes }) => `${id}: ${nodes.length}, ${nodes[0].html.slice(0, 120)}`);
                assert.deepEqual(told, [], `${width} ${scheme}`);
                const overflow = await page.evaluate(() => document.documentElement.scrollWidth - innerWidth);
                assert.ok(overflow <= 0, `${path} is ${overflow} px too wide at ${width}`);
                assert.deepEqual(page.faults, []);
                await page.close();
            }
        }
    });
}

test("the dialog can be used by everybody", async () => {
    for (const scheme of schemes) {
        const page = await open(browser, "index.html", { width: 320, scheme });
        await page.click('.matrix a[aria-label="h264 in mp4: default, proven"]');
        await page.evaluate(axe);
        const { violations } = await page.evaluate(() => window.axe.run("#answer", { preload: false }));
        assert.deepEqual(violations.map(({ id }) => id), []);
    }
});
