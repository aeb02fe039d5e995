// The planner in Firefox: one plan from an empty page to the answers, by keyboard. What a person does in all its ways is
// tried in Chromium (the other tests).

import assert from "node:assert/strict";
import { join, resolve } from "node:path";
import { pathToFileURL } from "node:url";
import { test } from "node:test";
import puppeteer from "puppeteer-core";

const root = resolve(import.meta.dirname, "../../..");
const page = resolve(process.env.PAGE ?? join(root, "build/web/recalculo.html"));

test("a plan in Firefox", async () => {
    const browser = await puppeteer.launch({ browser: "firefox", executablePath: "/usr/bin/firefox-esr", headless: true });
    try {
        const tab = await browser.newPage();
        const complaints = [];
        tab.on("pageerror", (error) => complaints.push(String(error)));
        tab.on("console", (message) => { if (message.type() === "error") complaints.push(message.text()); });
        await tab.goto(pathToFileURL(page).href);
        await tab.waitForSelector("html.ready");
        await (await tab.$("input[type=file]")).uploadFile(join(root, "examples/small.json"));
        const told = (text) => tab.waitForFunction((wanted) => document.getElementById("status").textContent.includes(wanted), {}, text);
        await told("11 of 12 placed");
        const control = async (key) => {
            await tab.keyboard.down("Control");
            await tab.keyboard.press(key);
            await tab.keyboard.up("Control");
        };
        await tab.focus(".grid[aria-label=Modules]");
        for (const key of ["ArrowDown", "ArrowDown", "ArrowRight", "ArrowRight", "ArrowRight", "ArrowRight", "2", "Enter"]) await tab.keyboard.press(key);
        await told("12 of 12 placed");
        await control("z");
        await told("11 of 12 placed");
        // What is copied goes into the cell, though the selection is elsewhere.
        await tab.type(".filter", "2");
        await control("a");
        await control("x");
        await tab.focus(".grid[aria-label=Modules]");
        await control("v");
        await told("12 of 12 placed");
        await control("c");
        await control("z");
        await told("11 of 12 placed");
        await tab.focus(".filter");
        await control("v");
        assert.equal(await tab.$eval(".filter", (field) => field.value), "2");
        await control("a");
        await tab.keyboard.press("Backspace");
        await tab.click(".causes summary");
        await tab.click(".causes .services .link");
        await tab.waitForSelector(".explanation pre");
        assert.match(await tab.$eval(".explanation pre", (element) => element.textContent), /No input is free for stream 3\/5/);
        await tab.reload();
        await told("11 of 12 placed");
        assert.deepEqual(complaints, []);
    } finally {
        await browser.close();
    }
});
