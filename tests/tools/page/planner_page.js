// The planner's page in a browser, for its tests: opened from disk with its network watched, and what one does there.

import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { mkdtempSync, readFileSync, rmSync } from "node:fs";
import { tmpdir } from "node:os";
import { join, resolve } from "node:path";
import { after, before, test } from "node:test";
import { pathToFileURL } from "node:url";
import { openBrowser } from "./browser.js";

export const root = resolve(import.meta.dirname, "../../..");
export const examples = join(root, "examples");
export const pageFile = resolve(process.env.PAGE ?? join(root, "build/web/recalculo.html"));

export const small = join(examples, "small.json");
export const medium = join(examples, "medium.json");

export const recalculo = resolve(process.env.RECALCULO ?? join(root, "build/gcc/tools/recalculo/recalculo"));
export const native = (...parameters) => execFileSync(recalculo, parameters, { encoding: "utf8", maxBuffer: 2 ** 28, stdio: ["ignore", "pipe", "ignore"] });

/// For the tests of a file: a browser of their own, a folder, and `at(name, use, options)`, a test that visits the page.
export const setUp = () => {
    const folder = mkdtempSync(join(tmpdir(), "recalculo-planner-"));
    const own = { folder };
    before(async () => { own.browser = await openBrowser(); });
    after(async () => {
        await own.browser.close();
        rmSync(folder, { recursive: true });
    });
    own.at = (name, use, { before: prepare = () => {}, ...more } = {}) => test(name, () => {
        prepare();
        return visit(own.browser, use, more);
    });
    return own;
};

/// Opens a page of its own, calls `use` and is sure that nothing was complained of and nothing asked of a network.
export const visit = async (browser, use, { options = {}, file = pageFile, files = [file], isReady = true, init } = {}) => {
    const context = await browser.newContext({ viewport: { width: 1400, height: 900 }, acceptDownloads: true, ...options });
    if (init) await context.addInitScript(init);
    const page = await context.newPage();
    const complaints = [];
    const requests = [];
    page.on("console", (message) => { if (["error", "warning"].includes(message.type())) complaints.push(message.text()); });
    page.on("pageerror", (error) => complaints.push(String(error)));
    context.on("request", (request) => requests.push(request.url()));
    await page.goto(pathToFileURL(file).href);
    if (isReady) await page.waitForSelector("html.ready");
    await use(page);
    assert.deepEqual(complaints, []);
    const asked = requests.filter((request) => !files.map((one) => pathToFileURL(one).href).includes(request) && !request.startsWith("blob:"));
    assert.deepEqual(asked, []);
    await context.close();
};

/// Does something and waits until the answer to it is drawn.
export const settled = async (page, act) => {
    const before = await page.evaluate(() => Number(document.documentElement.dataset.drawn ?? 0));
    await act();
    await page.waitForFunction((number) => Number(document.documentElement.dataset.drawn ?? 0) > number, before);
};

export const openFiles = (page, ...files) => settled(page, () => page.locator("input[type=file]").setInputFiles(files));

/// A file that is not on disk.
export const made = (name, content) => ({ name, mimeType: "application/octet-stream", buffer: Buffer.from(typeof content === "string" ? content : JSON.stringify(content)) });

/// Lets go of a file over the page.
export const drop = async (page, name, text) => {
    const data = await page.evaluateHandle(([file, content]) => {
        const transfer = new DataTransfer();
        transfer.items.add(new File([content], file));
        return transfer;
    }, [name, text]);
    await page.dispatchEvent("body", "drop", { dataTransfer: data });
};

export const status = (page) => page.locator("#status").textContent();

/// "79 of 80 placed" of what is shown.
export const placed = async (page) => /\d+ of \d+/.exec(await status(page))?.[0];

export const grid = (page, name) => page.getByRole("grid", { name });

export const tab = (page, name) => page.getByRole("tab", { name }).click();

/// The table of a side: that of the head-end comes first.
export const edit = async (page, name) => {
    await page.locator("#edit").getByRole("tab", { name }).click();
    await grid(page, name).focus();
};

export const see = (page, name) => page.locator("#see").getByRole("tab", { name }).click();

/// What a download writes.
export const downloaded = async (page, act) => {
    const [download] = await Promise.all([page.waitForEvent("download"), act()]);
    return { name: download.suggestedFilename(), text: readFileSync(await download.path(), "utf8") };
};

/// Presses keys one after the other.
export const press = async (page, ...keys) => {
    for (const key of keys) await page.keyboard.press(key);
};

/// Goes to and from the clipboard as a person does.
export const copied = async (page) => {
    await page.keyboard.press("Control+c");
    return page.evaluate(() => navigator.clipboard.readText());
};
export const paste = async (page, text) => {
    await page.evaluate((given) => navigator.clipboard.writeText(given), text);
    await page.keyboard.press("Control+v");
};
export const withClipboard = { options: { permissions: ["clipboard-read", "clipboard-write"] } };

/// The text of the cell where the keyboard is.
export const activeCell = (page, name) => page.evaluate((label) => {
    const table = document.querySelector(`.grid[aria-label=${label}]`);
    return document.getElementById(table.getAttribute("aria-activedescendant"))?.textContent;
}, name);
