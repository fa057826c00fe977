// The matrix: what it says, its filters, the reason of a mark, by mouse, by keyboard and without scripts.
import assert from "node:assert/strict";
import { after, before, test } from "node:test";
import { launch, open, report, texts } from "./browser.mjs";

let browser;
before(async () => { browser = await launch(); });
after(() => browser.close());

test("a cell says what the program says", async () => {
    const page = await open(browser, "index.html");
    const cells = await page.$$eval(".matrix td:not(.only) a", (links) => links.map((link) => [link.getAttribute("aria-label"), link.dataset.why ?? "", link.closest("td").className]));
    const short = await page.$$eval("tr[data-only]", (rows) => rows.map((row) => [row.cells[0].textContent, row.dataset.only, row.textContent]));
    const none = await page.$$eval("section.kind", (all) => all.map((section) => [section.dataset.kind, [...section.querySelectorAll(".none a")].map((link) => link.textContent)]));
    const shown = new Map(cells.map(([label, why, standing]) => [label.split(":")[0], { why, standing: standing.split(" ")[0], label }]));
    const kinds = { video: "VideoCodec", audio: "AudioCodec", subtitles: "SubtitleCodec" };
    let refused = 0;
    // One in three, and those with marks that are rare.
    const sample = report("list", "formats").formats.map(({ name }) => name).filter((name, i) => i % 3 === 0 || ["avi", "ipod", "mp4", "bmp"].includes(name));
    for (const name of sample) {
        const { constraints, defaults } = report("show", "format", name);
        const defaultIds = Object.values(defaults.Format.Streams).flatMap((stream) => Object.values(kinds).map((key) => stream[key]?.CodecId).filter(Boolean));
        const offered = constraints.filter(({ path }) => path.endsWith("Codec/CodecId")).flatMap(({ values }) => values.map(({ value }) => value));
        for (const { codec, fits, reason } of report("fits", "--format", name).fits) {
            const cell = shown.get(`${codec} in ${name}`);
            const only = short.find(([container, , text]) => container === name && (fits || text.includes(reason)));
            if (!cell && fits) assert.equal(only?.[1], codec, `${codec} in ${name} is not shown`);
            if (!cell && !fits) assert.ok(only || none.some(([, containers]) => containers.includes(name)), `${codec} in ${name} is not shown`);
            if (!cell) continue;
            const standing = fits
                ? defaultIds.includes(codec) ? "default" : offered.includes(codec) ? "offered" : "stored"
                : offered.includes(codec) ? "doubtful" : "refused";
            assert.deepEqual([cell.standing, cell.why, cell.label.split(", ")[0]], [standing, reason ?? "", `${codec} in ${name}: ${standing}`]);
            refused += standing === "refused" ? 1 : 0;
        }
    }
    assert.ok(refused > 300, "reasons were compared");
});

test("filters find by the words that people have", async () => {
    const page = await open(browser, "index.html");
    const shownOf = async () => ({
        containers: [...new Set(await texts(page, ".matrix tbody th"))],
        codecs: await texts(page, ".matrix thead th:not(.corner)"),
    });
    const cases = [
        { container: "mkv mp4", codec: "H.265", containers: ["matroska", "mp4"], codecs: ["hevc"] },
        { container: "webm", codec: "libvpx", containers: ["webm"], codecs: ["vp8", "vp9"] },
        { container: "mp4", kind: "subtitles", taken: true, containers: ["mp4"], codecs: ["mov_text", "dvd_subtitle"] },
        { container: "bmp", taken: true, containers: ["bmp"], codecs: ["bmp"] },
        { codec: "vorbis", taken: true, has: ["webm", "ogg", "matroska"], hasNot: ["3gp", "png"], codecs: ["vorbis"] },
        { container: "nothing", containers: [], codecs: [] },
        { has: ["mp4", "png", "srt"], hasNot: [], count: 71 },
    ];
    for (const { container = "", codec = "", kind = "", taken = false, containers, codecs, has = [], hasNot = [], count } of cases) {
        await page.evaluate((values) => {
            for (const [id, value] of Object.entries(values)) {
                const field = document.getElementById(id);
                if (id === "taken") field.checked = value; else field.value = value;
            }
            document.getElementById("filters").dispatchEvent(new Event("input"));
        }, { container, codec, kind, taken });
        const shown = await shownOf();
        const what = JSON.stringify({ container, codec, kind, taken });
        if (containers) assert.deepEqual(shown.containers.sort(), containers.sort(), what);
        if (codecs) assert.deepEqual(shown.codecs.sort(), codecs.sort(), what);
        for (const name of has) assert.ok(shown.containers.includes(name), `${what} shows ${name}`);
        for (const name of hasNot) assert.ok(!shown.containers.includes(name), `${what} hides ${name}`);
        if (count) assert.equal(shown.codecs.length, count, what);
        const found = await page.$eval("#found", (status) => status.textContent);
        if (containers) assert.match(found, containers.length === 0 ? /^Nothing/ : new RegExp(`^Shown: ${containers.length} container`), what);
    }
    assert.deepEqual(page.faults, []);
});

const answer = (page) => page.$eval("#answer", (dialog) => dialog.open ? dialog.innerText : "");

test("a click gives the reason, and so does the keyboard", async () => {
    const page = await open(browser, "index.html");
    await page.click('a[aria-label="vp9 in mpegts: refused"]');
    assert.match(await answer(page), /vp9 in mpegts[^]*Refused[^]*would not read back as vp9/);
    await page.keyboard.press("Escape");
    assert.equal(await answer(page), "");
    const focused = () => page.evaluate(() => document.activeElement.getAttribute("aria-label"));
    assert.equal(await focused(), "vp9 in mpegts: refused", "where one was before");

    await page.focus(".matrix td a[tabindex='0']");
    const start = await focused();
    await page.keyboard.press("ArrowDown");
    await page.keyboard.press("ArrowRight");
    await page.keyboard.press("ArrowUp");
    await page.keyboard.press("ArrowLeft");
    assert.equal(await focused(), start);
    await page.keyboard.press("End");
    assert.match(await focused(), /^xwd in /);
    await page.keyboard.press("Enter");
    assert.match(await answer(page), /^xwd in /);
    await page.keyboard.press("Escape");
    assert.equal(await page.$$eval(".matrix td a[tabindex='0']", (links) => links.length), 3, "one stop a table");
    assert.deepEqual(page.faults, []);
});

test("what was tried is told, as text whatever it holds", async () => {
    const page = await open(browser, "index.html");
    for (const label of ["h264 in mp4: default, proven", "hevc in mp4: offered, contradicts", "aac in mp4: default, proven", "vp8 in matroska: stored, proven", "vp9 in webm: offered"]) {
        const classes = await page.$eval(`a[aria-label="${label}"]`, (link) => [...link.closest("td").classList]);
        assert.deepEqual(classes, label.split(": ")[1].split(", "), label);
    }
    await page.click('a[aria-label="hevc in mp4: offered, contradicts"]');
    assert.match(await answer(page), /<img src=x onerror=alert\(1\)> & \\u202eturned/);
    const proof = await open(browser, "proof.html");
    assert.equal(await proof.$$eval("img", (images) => images.length), 0);
    assert.deepEqual(await texts(proof, "main > details.contradicts li code"), ["format=mp4 video=hevc audio=aac", "format=webm video=vp9 profile=2"]);
    assert.deepEqual(page.faults.concat(proof.faults), []);
});

test("without scripts a mark leads to its reason, and nothing dead is shown", async () => {
    const page = await open(browser, "index.html", { scripts: false });
    assert.equal(await page.$eval("#filters", (form) => form.checkVisibility()), false);
    await Promise.all([page.waitForNavigation(), page.click('a[aria-label="vp9 in mpegts: refused"]')]);
    assert.match(page.url(), /formats\/mpegts\.html#in-vp9$/);
    assert.match(await page.$eval("#in-vp9", (item) => item.textContent), /would not read back as vp9/);
    assert.equal(await page.$eval("#in-vp9", (item) => item.checkVisibility()), true, "unfolded");
    await page.goto(new URL("../plan.html", page.url()).href);
    assert.equal(await page.$eval("#planner", (part) => part.checkVisibility()), false);
    assert.ok((await texts(page, "noscript a")).includes("mp4"));
});

test("lists are searched, and links into what is folded unfold it", async () => {
    const page = await open(browser, "lists.html");
    await page.type("#find", "H.265");
    assert.deepEqual(await texts(page, "tbody th"), ["hevc"]);
    const folded = await open(browser, "formats/mpegts.html#in-vp9");
    assert.equal(await folded.$eval("details.refused", (details) => details.open), true);
    assert.deepEqual(page.faults.concat(folded.faults), []);
});
