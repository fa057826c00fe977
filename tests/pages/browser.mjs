// A headless Chromium and the catalogue that the tests look at.
import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { pathToFileURL } from "node:url";
import puppeteer from "puppeteer-core";

export const folder = process.env.CATALOGUE;
assert.ok(folder, "CATALOGUE names the folder of the catalogue, DATAHELPERS the program that wrote it");

export const widths = [320, 800, 1400];
export const schemes = ["light", "dark"];

/** What the program itself says. */
export const report = (...words) => JSON.parse(execFileSync(process.env.DATAHELPERS, [...words, "--json"], { maxBuffer: 1 << 26 }));

export const launch = () => puppeteer.launch({
    executablePath: process.env.CHROMIUM ?? "/usr/bin/chromium",
    // What asks for something of a network is told at once that there is none.
    args: ["--host-resolver-rules=MAP * ~NOTFOUND", ...(process.getuid() === 0 ? ["--no-sandbox"] : [])],
});

/** Opens a page of the folder. What it says on the console, what fails and what it asks for is in `page.faults`. */
export async function open(browser, path, { width = 1400, scheme = "light", scripts = true } = {}) {
    const page = await browser.newPage();
    page.faults = [];
    page.on("console", (message) => page.faults.push(`console: ${message.text()}`));
    page.on("pageerror", (error) => page.faults.push(`error: ${error}`));
    page.on("requestfailed", (request) => page.faults.push(`failed: ${request.url()}`));
    page.on("request", (request) => {
        if (!/^(file|data):/.test(request.url())) page.faults.push(`asked for: ${request.url()}`);
    });
    await page.setJavaScriptEnabled(scripts);
    await page.setViewport({ width, height: 900 });
    await page.emulateMediaFeatures([{ name: "prefers-color-scheme", value: scheme }]);
    await page.goto(`${pathToFileURL(folder)}/${path}`);
    return page;
}

export const texts = (page, selector) => page.$$eval(selector, (all) => all.filter((one) => one.checkVisibility()).map((one) => one.textContent.trim()));
