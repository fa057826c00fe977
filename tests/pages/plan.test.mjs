// The planner's page against the planner: a film like the example's is made, and planned by the program.
import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { mkdtempSync, rmSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { after, before, test } from "node:test";
import { launch, open, report } from "./browser.mjs";

let browser;
let scratch;
before(async () => {
    browser = await launch();
    scratch = mkdtempSync(join(tmpdir(), "pages-"));
    const chapters = Array.from({ length: 12 }, (_, i) => `[CHAPTER]\nTIMEBASE=1/100\nSTART=${i}\nEND=${i + 1}\n`).join("");
    writeFileSync(join(scratch, "chapters"), `;FFMETADATA1\n${chapters}`);
    writeFileSync(join(scratch, "words.srt"), "1\n00:00:00,000 --> 00:00:00,200\nWords\n");
    execFileSync("ffmpeg", ["-v", "error", "-f", "lavfi", "-i", "testsrc2=s=1998x1080:r=24:d=0.2", "-f", "lavfi",
        "-i", "anullsrc=r=96000:cl=5.1:d=0.2", "-i", "words.srt", "-i", "chapters", "-map", "0", "-map", "1", "-map", "2",
        "-map_metadata", "3", "-map_chapters", "3", "-c:v", "ffv1", "-pix_fmt", "yuv420p10le", "-c:a", "pcm_f32le", "-c:s", "srt",
        "-metadata:s:a", "language=eng", "-metadata:s:s", "language=fre", "feature.mkv"], { cwd: scratch });
});
after(async () => {
    await browser.close();
    rmSync(scratch, { recursive: true });
});

const shown = (page) => page.evaluate(() => ({
    summary: document.getElementById("summary").textContent,
    notes: [...document.querySelectorAll("#plan > section:first-child > ul > li")].map((item) => item.textContent),
    settings: [...document.querySelectorAll("#plan tbody tr")].map((row) => [row.querySelector("code").textContent, row.cells[1].textContent, row.cells[2].textContent]),
}));

const leaves = (node, path = []) => Object.entries(node).flatMap(([name, value]) =>
    value !== null && typeof value === "object" ? leaves(value, [...path, name]) : [[[...path, name].join("/"), String(value)]]);

test("the chooser answers as the planner does", async () => {
    const page = await open(browser, "plan.html");
    const cases = [["mp4", "hevc", "mp3"], ["dvd", "mpeg1video", "ac3"], ["matroska", "av1", "dts"], ["mp3", "", "mp3"], ["3gp", "h263", "aac"]];
    for (const [container, video, audio] of cases) {
        await page.select("#container", container);
        if (video) await page.select("#video", video);
        if (audio) await page.select("#audio", audio);
        const words = ["plan", join(scratch, "feature.mkv"), "--format", container, ...(video ? ["--video", video] : []), ...(audio ? ["--audio", audio] : [])];
        const plan = report(...words);
        const { summary, notes, settings } = await shown(page);
        const name = `${container} ${video} ${audio}`;
        assert.deepEqual(notes.length, plan.notes.length, name);
        for (const note of plan.notes) assert.ok(notes.some((one) => one === note), `${name}: ${note}`);
        const wanted = plan.settings.Streams.flatMap((stream) => leaves(stream)).filter(([path]) => !path.endsWith("TypeId"));
        assert.deepEqual(settings.map(([path]) => path), wanted.map(([path]) => path), name);
        settings.forEach(([path, value], i) => assert.ok(value === wanted[i][1] || value.startsWith(`${wanted[i][1]} `), `${name} ${path}: ${value}, not ${wanted[i][1]}`));
        for (const { path, reason } of plan.corrections) {
            const below = path.replace(/^Streams\/(TypeId=)?[^/]+\//, "");
            assert.ok(settings.some(([one, , why]) => one === below && why.startsWith("Corrected") && why.includes(reason)), `${name}: ${path}, ${reason}`);
        }
        assert.match(summary, plan.corrections.length === 0 ? /nothing had to be corrected/ : new RegExp(` ${plan.corrections.length} `), name);
    }
    assert.deepEqual(page.faults, []);
});

test("an address chooses, and a choice is in the address", async () => {
    const page = await open(browser, "plan.html#webm/vp9");
    assert.match((await shown(page)).summary, /^webm with vp9, vorbis/);
    await page.select("#video", "vp8");
    assert.match(page.url(), /#webm\/vp8\/vorbis$/);
    await page.select("#container", "wav");
    assert.equal(await page.$eval("#video", (field) => field.disabled), true);
    assert.match((await shown(page)).summary, /^wav with pcm_s16le/);
});

const bits = (text) => parseFloat(text) * { kbit: 1e3, Mbit: 1e6 }[/[kM]bit/.exec(text)[0]];

test("the bitrates are the planner's, and drawn where they belong", async () => {
    const page = await open(browser, "video/h264.html");
    const tables = await page.$$eval("figure details table", (all) => all.map((table) => ({
        caption: table.caption.textContent,
        heads: [...table.rows[0].cells].map((cell) => cell.textContent),
        rows: [...table.rows].slice(1).map((row) => [...row.cells].map((cell) => cell.textContent)),
    })));
    const lines = await page.$$eval("svg .line", (all) => all.map((line) => [...line.querySelectorAll("circle")].map((point) => Number(point.getAttribute("cy")))));
    // Equal ratios are equal steps: place = a - b * log(bitrate), as the first and the last point have it.
    const [first] = tables;
    const number = (row, column) => Math.log10(bits(first.rows[row][column]));
    const last = first.rows.length - 1;
    const slope = (lines[0][0] - lines[0][last]) / (number(last, 1) - number(0, 1));
    assert.ok(slope > 0);
    lines.forEach((line, i) => line.forEach((y, row) => assert.ok(Math.abs(lines[0][0] - slope * (number(row, i + 1) - number(0, 1)) - y) < 1, `${first.rows[row][0]}, ${first.heads[i + 1]}`)));

    execFileSync("ffmpeg", ["-v", "error", "-f", "lavfi", "-i", "testsrc2=s=1280x720:r=50:d=0.1", "-c:v", "ffv1", "fifty.mkv"], { cwd: scratch });
    const { rows, heads } = tables.find(({ caption }) => caption === "50 frames/s");
    const row = rows.find(([size]) => size === "1280 x 720");
    for (const quality of [1, 25, 50, 75, 100]) {
        const set = `Streams/TypeId=video/VideoCodec`;
        const plan = report("plan", join(scratch, "fifty.mkv"), "--format", "mp4", "--video", "h264", "--set", `${set}/RateControl=vbr`, "--set", `${set}/Quality=${quality}`);
        const shownBits = bits(row[heads.findIndex((head) => head.split(", ").includes(`quality ${quality}`))]);
        const planned = plan.settings.Streams[0].VideoCodec.BitRate;
        assert.ok(Math.abs(shownBits / planned - 1) < 0.006, `quality ${quality}: ${shownBits}, not ${planned}`);
    }
});
