// Opening whatever the planner takes, and refusing what it does not. PAGE is the page, RECALCULO the program.

import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { join } from "node:path";
import { describe } from "node:test";
import { drop, edit, examples, grid, made, native, openFiles, placed, settled, setUp, small } from "./planner_page.js";

const { at } = setUp();

describe("Start", () => {
    at("an empty page says what to drop", async (page) => {
        await page.getByRole("heading", { name: "Drop a head-end, a result or a channel list here" }).waitFor();
        assert.equal(await page.locator("#edit").isVisible(), false);
    });

    at("a sample is one click away", async (page) => {
        await settled(page, () => page.getByRole("button", { name: "A hotel" }).click());
        assert.equal(await placed(page), "79 of 80");
        assert.equal(await page.locator("#changed").isVisible(), false);
    });

    at("a head-end is dropped", async (page) => {
        await settled(page, async () => drop(page, "small.json", readFileSync(small, "utf8")));
        assert.equal(await placed(page), "11 of 12");
        assert.equal(await page.locator("#name").inputValue(), "Small head-end");
    });

    for (const [what, text] of [["a head-end", () => readFileSync(small, "utf8")], ["a result", () => native("run", small, "--json", "--trials", "0")]])
        at(`${what} with a byte order mark is taken`, async (page) => {
            await openFiles(page, made("small.json", `\uFEFF${text()}`));
            assert.equal(await placed(page), "11 of 12");
            assert.equal(await page.locator("#messages").isVisible(), false);
        });

    at("a result is shown without tables, and compared with nothing", async (page) => {
        await settled(page, async () => drop(page, "small.result.json", native("run", small, "--json", "--trials", "0")));
        assert.equal(await placed(page), "11 of 12");
        assert.equal(await page.locator("#edit").isVisible(), false);
    });

    for (const [list, services] of [["sample.lamedb", /\d+ services? in \d+ streams? imported/], ["sample.dvbv5.conf", /read as dvbv5/]])
        at(`${list} is dropped, with the report of its import`, async (page) => {
            await settled(page, async () => drop(page, list, readFileSync(join(examples, list), "utf8")));
            assert.match(await page.locator("#messages").innerText(), services);
            assert.match(await page.locator("#messages").innerText(), /sixteen modules/);
            assert.equal(await page.locator("#changed").isVisible(), true);
        });

    at("a channel list comes onto the modules that are there", async (page) => {
        await openFiles(page, join(examples, "modules-8-tight.json"));
        await openFiles(page, join(examples, "sample.lamedb"));
        assert.equal(await grid(page, "Modules").getAttribute("aria-rowcount"), "9");
        assert.doesNotMatch(await page.locator("#messages").innerText(), /sixteen modules/);
    });

    at("a list is imported again, otherwise", async (page) => {
        await openFiles(page, join(examples, "sample.lamedb"));
        const before = (await placed(page)).split(" of ")[1];
        await page.getByText("Import it otherwise").click();
        await page.getByLabel("Bitrate to assume for an SD service, in kbit/s").fill("1234");
        await page.getByLabel(/^No services that are/).fill("radio");
        await settled(page, () => page.getByRole("button", { name: "Import again" }).click());
        assert.equal((await placed(page)).split(" of ")[1], String(before - 1));
        await edit(page, "Services");
        await grid(page, "Services").getByText("1234").first().waitFor();
        await page.getByLabel(/^No services that are/).fill("colour");
        await page.getByRole("button", { name: "Import again" }).click();
        await page.locator("#messages").getByText(/--exclude/).waitFor();
    });

    at("measured rates are taken for what is open, and undone", async (page) => {
        await drop(page, "sample.rates.csv", readFileSync(join(examples, "sample.rates.csv"), "utf8"));
        await page.locator("#messages").getByText(/open the head-end first/).waitFor();
        const services = [{ lcn: 1, name: "One", onid: 1, tsid: 1002, sid: 201, bitrate: 1 }];
        await openFiles(page, made("one.json", { modules: [{ mac: "02:00:00:00:00:01", controller: true, inputs: 1, outputs: [38000], pids_max: 0 }], services }));
        await settled(page, async () => drop(page, "sample.rates.csv", readFileSync(join(examples, "sample.rates.csv"), "utf8")));
        assert.match(await page.locator("#messages").innerText(), /1 service measured; of 1 in the head-end/);
        await edit(page, "Services");
        await grid(page, "Services").getByText("21040").waitFor();
        assert.match(await page.locator("#undo").getAttribute("title"), /Take measured rates/);
        await settled(page, () => page.locator("#undo").click());
        assert.equal(await grid(page, "Services").getByText("21040").count(), 0);
    });

    at("a wish list asks for what is on it, and is undone", async (page) => {
        const wishes = "name;must\nCanal Uno;yes\nCanal Dos;\nNobody;\n";
        await drop(page, "wishes.csv", wishes);
        await page.locator("#messages").getByText(/open the head-end first/).waitFor();
        await openFiles(page, small);
        await settled(page, async () => drop(page, "wishes.csv", wishes));
        assert.equal((await placed(page)).split(" of ")[1], "2");
        assert.match(await page.locator("#messages").innerText(), /Nobody/);
        await settled(page, () => page.locator("#undo").click());
        assert.equal(await placed(page), "11 of 12");
    });

    at("measured rates are taken again with a margin, and a wish list with its LCNs", async (page) => {
        const services = [{ lcn: 1, name: "One", onid: 1, tsid: 1002, sid: 201, bitrate: 1 }, { lcn: 2, name: "Two", onid: 1, tsid: 1002, sid: 202, bitrate: 1 }];
        await openFiles(page, made("two.json", { modules: [{ mac: "02:00:00:00:00:01", controller: true, inputs: 1, outputs: [38000], pids_max: 0 }], services }));
        await edit(page, "Services");
        await settled(page, async () => drop(page, "sample.rates.csv", readFileSync(join(examples, "sample.rates.csv"), "utf8")));
        await page.getByText("Take it otherwise").click();
        assert.equal(await page.getByLabel(/LCNs of the wish lists/).isVisible(), false);
        await page.getByLabel(/^Add so much to peak bitrates/).fill("10%");
        await settled(page, () => page.getByRole("button", { name: "Take again" }).click());
        await grid(page, "Services").getByText("23144", { exact: true }).waitFor();
        await settled(page, async () => drop(page, "wishes.csv", "name;lcn\nTwo;77\n"));
        await page.getByText("Take it otherwise").click();
        await page.getByLabel(/LCNs of the wish lists/).check();
        await settled(page, () => page.getByRole("button", { name: "Take again" }).click());
        await grid(page, "Services").getByText("77", { exact: true }).waitFor();
        assert.equal((await placed(page)).split(" of ")[1], "1");
        for (let step = 0; step < 4; ++step) await settled(page, () => page.locator("#undo").click());
        assert.equal(await grid(page, "Services").getByText("77", { exact: true }).count(), 0);
        assert.equal(await grid(page, "Services").getByText("23144", { exact: true }).count(), 0);
    });

    at("a channel list and a wish list are dropped together: what is wished for is imported", async (page) => {
        const wishes = made("wishes.csv", "name;lcn\nRadio Faro;12\nCanal Norte;2\nNobody;3\n");
        await openFiles(page, wishes, made("my list.lamedb", readFileSync(join(examples, "sample.lamedb"), "utf8")));
        assert.equal((await placed(page)).split(" of ")[1], "2");
        assert.match(await page.locator("#messages").innerText(), /Nobody/);
        assert.equal(await page.locator("#name").inputValue(), "my list");
        await page.getByText("Import it otherwise").click();
        await page.getByLabel(/LCNs of the wish lists/).check();
        await settled(page, () => page.getByRole("button", { name: "Import again" }).click());
        await edit(page, "Services");
        await grid(page, "Services").getByText("12", { exact: true }).waitFor();
    });

    at("what is imported onto a sample is called as its list, and an own head-end keeps its name", async (page) => {
        const list = readFileSync(join(examples, "sample.lamedb"), "utf8");
        await settled(page, async () => drop(page, "Astra 19.2E.lamedb", list));
        assert.equal(await page.locator("#name").inputValue(), "Astra 19.2E");
        assert.match(await page.title(), /^• Astra 19\.2E ·/);
        await settled(page, async () => drop(page, "other.lamedb", list));
        assert.equal(await page.locator("#name").inputValue(), "Astra 19.2E");
        await openFiles(page, small);
        await settled(page, async () => drop(page, "other.lamedb", list));
        assert.equal(await page.locator("#name").inputValue(), "Small head-end");
    });

    at("what is imported onto a sample that was begun with is called as its list", async (page) => {
        await settled(page, () => page.getByRole("button", { name: "A small head-end" }).click());
        await settled(page, async () => drop(page, "other.lamedb", readFileSync(join(examples, "sample.lamedb"), "utf8")));
        assert.equal(await page.locator("#name").inputValue(), "other");
    });

    at("of many messages a few are told, and all of them unfold", async (page) => {
        const lines = Array.from({ length: 9 }, (one, at) => `Channel ${at}:nonsense:${"x:".repeat(10)}x`);
        await settled(page, async () => drop(page, "channels.conf", [...lines, ...Array.from({ length: 3 }, (one, at) => `TV ${at}:11836:hC34M2O0S0:S19.2E:27500:101:102:104:0:2840${at}:1:1101:0`)].join("\n")));
        const messages = page.locator("#messages");
        await messages.getByText(/^All \d+ messages$/).click();
        await messages.locator("details:not(.choices) li").last().waitFor();
        assert.ok(await messages.locator("details:not(.choices) li").count() > await messages.locator(":scope > div > ul > li").count());
    });

    at("text is pasted", async (page) => {
        await settled(page, () => page.evaluate((text) => {
            const data = new DataTransfer();
            data.setData("text/plain", text);
            document.body.dispatchEvent(new ClipboardEvent("paste", { clipboardData: data, bubbles: true }));
        }, readFileSync(small, "utf8")));
        assert.equal(await placed(page), "11 of 12");
    });

    for (const [what, name, text, said] of [
        ["no JSON", "broken.json", "{ \"modules\": [", /broken\.json: .*line 1/],
        ["an unknown key", "odd.json", "{ \"modules\": [], \"colour\": 1 }", /colour/],
        ["anything else", "photo.jpg", "\u0000\u0001\u0002", /photo\.jpg: found no line of a channel list/],
        ["nothing", "empty.json", "", /empty\.json: found no line/],
    ])
        at(`a file with ${what} is refused in words, and nothing is lost`, async (page) => {
            await openFiles(page, small);
            await drop(page, name, text);
            await page.locator("#messages").getByText(said).waitFor();
            assert.equal(await placed(page), "11 of 12");
        });

    at("a single module is added", async (page) => {
        await openFiles(page, small);
        await openFiles(page, join(examples, "module.json"));
        assert.equal(await grid(page, "Modules").getAttribute("aria-rowcount"), "5");
    });
});
