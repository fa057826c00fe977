// Every page as a file: where its links lead, and what it is made of.
import assert from "node:assert/strict";
import { readdirSync, readFileSync, statSync } from "node:fs";
import { dirname, join, normalize } from "node:path";
import { after, before, test } from "node:test";
import { folder, launch, open, report } from "./browser.mjs";

const pages = readdirSync(folder, { recursive: true }).map(String).filter((name) => name.endsWith(".html"));
const read = new Map(pages.map((page) => [page, readFileSync(join(folder, page), "utf8")]));
const all = (text, pattern) => [...text.matchAll(pattern)].map((match) => match[1]);
const ids = new Map([...read].map(([page, text]) => [page, all(text, / id="([^"]+)"/g)]));

let browser;
before(async () => { browser = await launch(); });
after(() => browser.close());

test("every link leads to something", () => {
    const dead = [];
    for (const [page, text] of read) {
        for (const address of all(text, / (?:href|src)="([^"]+)"/g)) {
            if (address.startsWith("data:")) continue;
            const [path, anchor] = address.split("#");
            const target = path === "" ? page : normalize(join(dirname(page), path));
            const isThere = statSync(join(folder, target), { throwIfNoEntry: false })?.isFile();
            // The planner reads what follows as a choice.
            const isAnchored = !anchor || target === "plan.html" || ids.get(target)?.includes(anchor);
            if (!isThere || !isAnchored) dead.push(`${page}: ${address}`);
        }
    }
    assert.deepEqual(dead, []);
});

test("every helper has a page, every page a title, a heading and ids of its own", () => {
    const listed = report("list");
    for (const kind of ["formats", "audio", "video", "filters"]) {
        for (const { name } of listed[kind]) assert.ok(read.has(join(kind, `${name}.html`)), `${kind} ${name}`);
    }
    for (const [page, text] of read) {
        assert.equal(all(text, /<(h1)[ >]/g).length, 1, page);
        assert.equal(all(text, /<head>.*?<title>([^<]+)/g).length, 1, page);
        assert.equal(new Set(ids.get(page)).size, ids.get(page).length, `${page} has an id twice`);
        const foreign = text.replace(/"data:[^"]*"/g, "").match(/https?:|<script>|style="| on[a-z]+="/);
        assert.equal(foreign, null, page);
    }
});

test("a sheet shows what the program shows", async () => {
    for (const [kind, folderOf, name] of [["format", "formats", "dvd"], ["video", "video", "h264"], ["audio", "audio", "mp3"], ["filter", "filters", "VideoResize"]]) {
        const sheet = report("show", kind, name);
        const page = await open(browser, `${folderOf}/${name}.html`);
        const text = await page.$eval("main", (main) => main.textContent);
        for (const { path, label, unit, help, values = [], max } of sheet.constraints) {
            if (/^Streams.*CodecId$/.test(path)) continue;
            const row = await page.$$eval("#settings ~ .scroll tr", (rows, code) => rows.find((one) => one.querySelector("th code")?.textContent === code)?.textContent, path);
            for (const part of [label, unit, help, ...values.map((value) => value.name), ...(max === undefined ? [] : [String(max)])]) assert.ok(row?.includes(part), `${name} ${path}: ${part}`);
        }
        assert.equal(await page.$$eval(".rules li", (rules) => rules.length), sheet.rules.length, name);
        for (const { filter } of sheet.filters) assert.ok(text.includes(filter), filter);
        const defaults = JSON.parse(await page.$eval("details.json pre", (pre) => pre.textContent));
        assert.deepEqual(defaults, sheet.defaults);
        assert.deepEqual(page.faults, []);
    }
});
