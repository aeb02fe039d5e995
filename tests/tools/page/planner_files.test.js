// Taking a plan along, and coming back to it. PAGE is the page, RECALCULO the program.

import assert from "node:assert/strict";
import { spawnSync } from "node:child_process";
import { copyFileSync, readFileSync, writeFileSync } from "node:fs";
import { join } from "node:path";
import { describe, test } from "node:test";
import { pathToFileURL } from "node:url";
import { downloaded, edit, examples, grid, made, medium, native, openFiles, pageFile, placed, press, recalculo, root, see, settled, setUp, small, status } from "./planner_page.js";

const { at, folder } = setUp();

describe("Take it along", () => {
    at("from an empty page by way of a channel list and a proposal to a saved plan", async (page) => {
        await openFiles(page, join(examples, "modules-8-tight.json"));
        const services = Array.from({ length: 90 }, (one, index) => `Channel ${index};Net:11${100 + Math.floor(index / 5)}:HC34M2S0:S19.2E:22000:${index + 100}=27:0;0:0:0:${index + 1}:1:${1000 + Math.floor(index / 5)}:0`);
        await settled(page, () => page.locator("input[type=file]").setInputFiles([made("list.conf", services.join("\n"))]));
        const [before, all] = (await placed(page)).split(" of ").map(Number);
        assert.ok(before < all);
        await see(page, "Ask");
        await page.getByRole("button", { name: "Size" }).click();
        await settled(page, () => page.getByRole("button", { name: "Take over" }).first().click());
        assert.equal(await placed(page), `${all} of ${all}`);
        const saved = await downloaded(page, () => page.getByRole("button", { name: "Save" }).click());
        const file = join(folder, saved.name);
        writeFileSync(file, saved.text);
        const { summary } = JSON.parse(native("run", file, "--json"));
        assert.deepEqual([summary.placed, summary.loaded], [all, all]);
        assert.equal(await page.locator("#changed").isVisible(), false);
    });

    at("what is saved is the tool's, and opens again as it was", async (page) => {
        await openFiles(page, small);
        await edit(page, "Modules");
        await press(page, "ArrowRight");
        await settled(page, async () => { await page.keyboard.type("Rack 1"); await press(page, "Enter"); });
        assert.equal(await page.locator("#changed").isVisible(), true);
        const saved = await downloaded(page, () => press(page, "Control+s"));
        assert.equal(saved.name, "small.json");
        assert.equal(await page.locator("#changed").isVisible(), false);
        const file = join(folder, "saved.json");
        writeFileSync(file, saved.text);
        assert.match(saved.text, /"label":\s*"Rack 1"/);
        const result = await downloaded(page, async () => {
            await page.getByText("Take along").click();
            await page.getByRole("button", { name: "Result (JSON)" }).click();
        });
        assert.equal(result.text, native("run", file, "--json", "--trials", "0"));
        await openFiles(page, file);
        assert.equal(await placed(page), "11 of 12");
    });

    at("a result is not renamed, nor asked what only its head-end tells", async (page) => {
        await openFiles(page, made("small.result.json", native("run", small, "--json", "--trials", "0")));
        await page.locator("#name").click();
        await page.keyboard.type("Other");
        await press(page, "Enter", "Tab");
        assert.notEqual(await page.locator("#name").inputValue(), "Other");
        assert.equal(await page.locator("#undo").isDisabled(), true);
        await see(page, "Ask");
        const questions = page.locator("#panel-ask p > .primary");
        const told = () => questions.evaluateAll((all) => all.map(({ disabled, title }) => [disabled, title.replace(/^.*: /, "")]));
        assert.deepEqual(await told(), Array(4).fill([true, "open its head-end."]));
        await openFiles(page, small);
        assert.deepEqual(await told(), Array(4).fill([false, ""]));
    });

    at("what is saved is told of each variant, also after a reload", async (page) => {
        const isChanged = () => page.locator("#changed").isVisible();
        const look = (at) => settled(page, () => page.locator("#variants [aria-pressed]").nth(at).click());
        const save = () => downloaded(page, () => press(page, "Control+s"));
        await openFiles(page, small);
        await settled(page, () => page.getByRole("button", { name: "New variant" }).click());
        await edit(page, "Modules");
        await press(page, "ArrowDown", "ArrowDown", "ArrowRight", "ArrowRight", "ArrowRight", "ArrowRight");
        await settled(page, () => press(page, "2", "Enter"));
        await look(0);
        await save();
        assert.equal(await isChanged(), true);
        assert.equal(await page.locator("#changed").getAttribute("title"), "Variant B is in no file");
        await look(1);
        await save();
        assert.equal(await isChanged(), false);
        await look(0);
        await edit(page, "Services");
        await press(page, "ArrowRight", "ArrowRight", "ArrowRight");
        await settled(page, () => press(page, "Space"));
        page.on("dialog", (dialog) => dialog.accept());
        await page.reload();
        await page.waitForSelector("html[data-drawn]");
        assert.equal(await page.locator("#changed").getAttribute("title"), "Variant A is in no file");
        assert.deepEqual(await page.locator("#variants [aria-pressed]").allTextContents(), ["A 10 of 11", "B 12 of 12"]);
        await save();
        assert.equal(await isChanged(), false);
    });

    at("rates that were taken are not taken again into what they were not opened for", async (page) => {
        const { services } = JSON.parse(readFileSync(small, "utf8"));
        await openFiles(page, small);
        await settled(page, () => page.locator("input[type=file]").setInputFiles([made("wish.csv", `name,value\n${services[0].name},9\n${services[1].name},8\n`)]));
        await page.getByText("Take it otherwise").waitFor();
        await edit(page, "Services");
        await press(page, "ArrowRight");
        await settled(page, async () => { await page.keyboard.type("Renamed"); await press(page, "Enter"); });
        await page.getByText("Take it otherwise").click();
        await page.getByRole("button", { name: "Take again" }).click();
        await page.locator("#messages").getByText(/the plan has changed since/).waitFor();
        await grid(page, "Services").getByText("Renamed").waitFor();
    });

    for (const [name, ending, format] of [["Channel list (channels.conf)", ".channels.conf", "channels.conf"], ["Table (CSV)", ".csv", "csv"]])
        at(`${name} is that of export`, async (page) => {
            await openFiles(page, medium);
            await page.getByText("Take along").click();
            const { name: file, text } = await downloaded(page, () => page.getByRole("button", { name }).click());
            assert.equal(file, `medium${ending}`);
            const result = join(folder, "medium.result.json");
            writeFileSync(result, native("run", medium, "--json", "--trials", "0"));
            assert.equal(text, native("export", result, "--format", format));
        });

    at("what was open comes back after a reload, until it is forgotten", async (page) => {
        await openFiles(page, small);
        await edit(page, "Modules");
        await press(page, "ArrowDown", "ArrowDown", "ArrowRight", "ArrowRight", "ArrowRight", "ArrowRight");
        await settled(page, () => press(page, "2", "Enter"));
        page.on("dialog", (dialog) => dialog.accept());
        await page.reload();
        await page.waitForSelector("html[data-drawn]");
        assert.equal(await placed(page), "12 of 12");
        assert.equal(await page.locator("#changed").isVisible(), true);
        await page.getByRole("button", { name: "Forget draft" }).click();
        await page.reload();
        await page.getByRole("heading", { name: /^Drop a head-end/ }).waitFor();
    });

    at("one is warned before leaving what is not saved", async (page) => {
        await openFiles(page, small);
        const leaves = () => page.evaluate(() => dispatchEvent(new Event("beforeunload", { cancelable: true })));
        assert.equal(await leaves(), true);
        await edit(page, "Services");
        await press(page, "ArrowRight", "ArrowRight", "ArrowRight");
        await settled(page, () => press(page, "Space"));
        assert.equal(await leaves(), false);
    });
});

describe("With a head-end inside", () => {
    const file = join(folder, "live.html");
    const named = join(folder, "named.json");

    at("it is there at once, whatever its names, and a draft of it comes back", async (page) => {
        await page.waitForSelector("html[data-drawn]");
        assert.equal(await placed(page), "11 of 12");
        assert.equal(await page.locator("#name").inputValue(), "</script><!-- Small");
        await edit(page, "Modules");
        await press(page, "ArrowDown", "ArrowDown", "ArrowRight", "ArrowRight", "ArrowRight", "ArrowRight");
        await settled(page, () => press(page, "2", "Enter"));
        page.on("dialog", (dialog) => dialog.accept());
        await page.reload();
        await page.waitForSelector("html[data-drawn]");
        assert.equal(await placed(page), "12 of 12");
    }, { file, before: () => {
        writeFileSync(named, JSON.stringify({ ...JSON.parse(readFileSync(small, "utf8")), name: "</script><!-- Small" }));
        native("run", named, "--live", file);
    } });

    at("it leaves the draft of one's own plan alone, however much it is changed", async (page) => {
        const ready = () => page.waitForSelector("html[data-drawn]");
        const raise = async () => {
            await edit(page, "Modules");
            await press(page, "ArrowDown", "ArrowDown", "ArrowRight", "ArrowRight", "ArrowRight", "ArrowRight");
            await settled(page, () => press(page, "2", "Enter"));
        };
        const [own, live] = [pageFile, file].map((one) => pathToFileURL(one).href);
        page.on("dialog", (dialog) => dialog.accept());
        await openFiles(page, medium);
        await edit(page, "Services");
        await press(page, "ArrowRight", "ArrowRight", "ArrowRight");
        await settled(page, () => press(page, "Space"));
        const before = await placed(page);
        await page.goto(live);
        await ready();
        await page.waitForTimeout(400);
        await page.goto(own);
        await ready();
        assert.equal(await placed(page), before);
        assert.equal(await page.locator("#changed").isVisible(), true);
        await page.goto(live);
        await ready();
        await raise();
        await page.goto(own);
        await ready();
        assert.equal(await placed(page), before);
        await page.goto(live);
        await ready();
        assert.equal(await placed(page), "12 of 12");
    }, { files: [pageFile, file] });

    test("a page that is not there is told, and where it was looked for", () => {
        const lonely = join(folder, "recalculo");
        copyFileSync(recalculo, lonely);
        const { status: code, stderr } = spawnSync(lonely, ["run", small, "--live", file], { encoding: "utf8", env: { ...process.env, LD_LIBRARY_PATH: join(root, "build/gcc") } });
        assert.equal(code, 2);
        assert.match(stderr, /--live: the page of the planner is in neither .*share\/recalculo\/recalculo\.html nor/);
    });
});
