// Changing a head-end in the tables. PAGE is the page, RECALCULO the program.

import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { describe } from "node:test";
import { activeCell, copied, downloaded, edit, grid, medium, native, openFiles, paste, placed, press, settled, setUp, small, status, withClipboard } from "./planner_page.js";

const { at } = setUp();

describe("Change", () => {
    at("by keyboard: a limit is raised, undone, and done again", async (page) => {
        await openFiles(page, small);
        await edit(page, "Modules");
        await press(page, "ArrowDown", "ArrowDown", "ArrowRight", "ArrowRight", "ArrowRight", "ArrowRight");
        assert.equal(await activeCell(page, "Modules"), "1");
        await settled(page, () => press(page, "2", "Enter"));
        assert.equal(await placed(page), "12 of 12");
        assert.match(await status(page), /1 gained/);
        await settled(page, () => press(page, "Control+z"));
        assert.equal(await placed(page), "11 of 12");
        await settled(page, () => press(page, "Control+Shift+z"));
        assert.equal(await placed(page), "12 of 12");
    });

    at("by keyboard: each limit of a module, and what matters of a service", async (page) => {
        await openFiles(page, small);
        await edit(page, "Modules");
        await press(page, ...Array(4).fill("ArrowRight"));
        for (const value of ["3", "20000, 30000", "44", "5", "6", "7"]) {
            await page.keyboard.type(value);
            await press(page, "Tab");
        }
        await press(page, "Enter");
        await edit(page, "Services");
        await press(page, ...Array(4).fill("ArrowRight"), "Space", "ArrowRight");
        for (const value of ["9", "4321"]) {
            await page.keyboard.type(value);
            await press(page, "Tab");
        }
        await settled(page, () => press(page, "Escape", "Control+z", "Control+y"));
        const { modules: [module], services: [service] } = JSON.parse((await downloaded(page, () => press(page, "Control+s"))).text);
        assert.deepEqual([module.inputs, module.outputs, module.pids_max, module.sd_transcoders, module.hd_transcoders, module.aux_transcoders],
            [3, [20000, 30000], 44, 5, 6, 7]);
        assert.deepEqual([service.must, service.value, service.bitrate], [true, 9, 4321]);
    });

    at("a value out of range is not taken, and the field says why", async (page) => {
        await openFiles(page, small);
        await edit(page, "Modules");
        await press(page, "ArrowRight", "ArrowRight", "ArrowRight", "ArrowRight", "Enter");
        await page.keyboard.type("70000");
        await press(page, "Enter");
        assert.equal(await page.locator(".editor").evaluate((input) => input.validationMessage), "Expected a whole number from 0 to 65535");
        await press(page, "Escape");
        assert.equal(await activeCell(page, "Modules"), "2");
        assert.equal(await page.locator("#undo").isDisabled(), true);
    });

    at("a value out of range that is left is not taken, which is told", async (page) => {
        await openFiles(page, small);
        await edit(page, "Modules");
        await press(page, "ArrowRight", "ArrowRight", "ArrowRight", "ArrowRight", "Enter");
        await page.keyboard.type("70000");
        await grid(page, "Modules").getByText("02:00:00:00:00:02").click();
        await page.locator("#messages").getByText('Nothing is changed: Inputs, "70000": expected a whole number from 0 to 65535').waitFor();
        await press(page, "ArrowUp");
        assert.equal(await page.locator(".editor").count(), 0);
        assert.equal(await page.locator("#undo").isDisabled(), true);
    });

    at("what is being typed is saved, and nothing while it is out of range", async (page) => {
        await openFiles(page, small);
        await edit(page, "Modules");
        await press(page, "ArrowRight", "ArrowRight", "ArrowRight", "ArrowRight", "9");
        const saved = async () => JSON.parse((await downloaded(page, () => press(page, "Control+s"))).text);
        assert.equal((await saved()).modules[0].inputs, 9);
        assert.equal(await activeCell(page, "Modules"), "9");
        await page.getByRole("textbox", { name: "Name of the head-end" }).fill("Roof");
        assert.equal((await saved()).name, "Roof");
        await grid(page, "Modules").focus();
        await page.keyboard.type("70000");
        let downloads = 0;
        page.on("download", () => ++downloads);
        await press(page, "Control+s");
        assert.equal(await page.locator(".editor").evaluate((input) => input.validationMessage), "Expected a whole number from 0 to 65535");
        await press(page, "Escape");
        assert.equal((await saved()).modules[0].inputs, 9);
        assert.equal(downloads, 1);
    });

    at("what is being typed is put into no other file, nor into the row that comes to stand there", async (page) => {
        await openFiles(page, small);
        await edit(page, "Services");
        await press(page, "ArrowRight", "Enter");
        await page.keyboard.type("Canal Otro");
        await openFiles(page, medium);
        await press(page, "Enter");
        assert.match(await page.locator("#undo").getAttribute("title"), /Open medium.json/);
        await settled(page, () => press(page, "Control+z"));
        await grid(page, "Services").getByText("Canal Dos HD").dblclick();
        await page.keyboard.type("Canal Otro");
        // As an answer of the engine does that comes late.
        await page.getByRole("searchbox", { name: "Filter services" }).evaluate((filter) => {
            filter.value = "hd";
            filter.dispatchEvent(new Event("input"));
        });
        await settled(page, () => press(page, "Enter"));
        await page.getByRole("searchbox", { name: "Filter services" }).fill("");
        assert.equal(await grid(page, "Services").locator("[role=row]", { hasText: "Canal Otro" }).locator("[role=gridcell]").nth(1).textContent(), "12");
    });

    at("undo spans both tables, in the order of the steps", async (page) => {
        await openFiles(page, small);
        await edit(page, "Modules");
        await press(page, "ArrowRight", "ArrowRight", "ArrowRight", "ArrowRight");
        await settled(page, () => press(page, "4", "Enter"));
        await edit(page, "Services");
        await press(page, "ArrowRight", "ArrowRight", "ArrowRight");
        await settled(page, () => press(page, "Space"));
        assert.equal(await placed(page), "11 of 11");
        await settled(page, () => press(page, "Control+z"));
        assert.match(await page.locator("#undo").getAttribute("title"), /Inputs of 1 module/);
        await settled(page, () => press(page, "Control+z"));
        assert.equal(await page.locator("#changed").isVisible(), false);
    });

    at("undo and redo go on from a choice and a box, and in a field are the field's", async (page) => {
        await openFiles(page, small);
        await edit(page, "Services");
        await press(page, "ArrowRight", "ArrowRight", "ArrowRight");
        await settled(page, () => press(page, "Space"));
        await page.getByRole("combobox", { name: "Which services" }).focus();
        await settled(page, () => press(page, "Control+z"));
        await page.locator("#panel-services").getByRole("checkbox", { name: "All columns" }).focus();
        await settled(page, () => press(page, "Control+y"));
        await page.getByRole("searchbox", { name: "Filter services" }).focus();
        await page.keyboard.type("cine");
        await press(page, "Control+z");
        assert.notEqual(await page.getByRole("searchbox", { name: "Filter services" }).inputValue(), "cine");
        assert.equal(await page.locator("#undo").isDisabled(), false);
    });

    at("a column is sorted from the keyboard", async (page) => {
        await openFiles(page, small);
        await edit(page, "Services");
        const lcns = async () => (await grid(page, "Services").locator("[data-at] [role=gridcell]:nth-child(2)").allTextContents()).map(Number);
        const sorted = (await lcns()).toSorted((one, other) => one - other);
        await press(page, "Alt+ArrowDown");
        assert.deepEqual(await lcns(), sorted.toReversed());
        assert.equal(await grid(page, "Services").getByRole("columnheader", { name: "LCN" }).getAttribute("aria-sort"), "descending");
        await press(page, "Alt+ArrowUp");
        assert.deepEqual(await lcns(), sorted);
    });

    at("many services are marked and not asked for", async (page) => {
        await openFiles(page, medium);
        await edit(page, "Services");
        await page.getByRole("searchbox", { name: "Filter services" }).fill("radio");
        await grid(page, "Services").focus();
        await press(page, "Control+a");
        const marked = Number(/\d+/.exec(await page.getByText(/^\d+ selected$/).textContent())[0]);
        assert.ok(marked > 1);
        await settled(page, () => page.getByRole("button", { name: "Do not ask for" }).click());
        assert.equal((await placed(page)).split(" of ")[1], String(80 - marked));
        await page.getByRole("searchbox", { name: "Filter services" }).fill("");
        await page.getByRole("combobox", { name: "Which services" }).selectOption("Not asked for");
        assert.equal(await grid(page, "Services").getAttribute("aria-rowcount"), String(marked + 1));
    });

    at("what is selected stays so whatever comes and goes, and not in another file", async (page) => {
        await openFiles(page, small);
        await edit(page, "Services");
        const selected = () => grid(page, "Services").locator("[role=row][aria-selected=true]").evaluateAll((rows) => rows.map((row) => row.children[2].textContent));
        await press(page, "ArrowDown", "ArrowDown", "Space");
        await settled(page, () => page.getByRole("button", { name: "Remove", exact: true }).click());
        assert.deepEqual(await selected(), []);
        await grid(page, "Services").getByText("Deportes HD").click({ modifiers: ["Control"] });
        await settled(page, () => press(page, "Control+z"));
        assert.deepEqual(await selected(), ["Deportes HD"]);
        await settled(page, () => press(page, "Control+Shift+z"));
        assert.deepEqual(await selected(), ["Deportes HD"]);
        // What it is told by is changed as well.
        await press(page, "Home");
        await settled(page, () => press(page, "7", "7", "Enter"));
        assert.deepEqual(await selected(), ["Deportes HD"]);
        await settled(page, () => press(page, "Control+z"));
        assert.deepEqual(await selected(), ["Deportes HD"]);
        await settled(page, () => page.getByRole("button", { name: "New variant" }).click());
        assert.deepEqual(await selected(), ["Deportes HD"]);
        await settled(page, () => page.getByRole("button", { name: "Remove", exact: true }).click());
        await press(page, "Control+a");
        // Even of the same records.
        await openFiles(page, small);
        assert.deepEqual(await selected(), []);
        assert.equal(await page.getByText(/selected$/).count(), 0);
    });

    at("what is said to be selected is what is copied and changed, and nothing else", async (page) => {
        await openFiles(page, small);
        await edit(page, "Services");
        const services = page.locator("#panel-services");
        const undoes = () => page.locator("#undo").getAttribute("title");
        await press(page, "Shift+ArrowDown", "ArrowDown", "ArrowDown");
        await services.getByText("2 selected", { exact: true }).waitFor();
        await settled(page, () => services.getByRole("button", { name: "Copy" }).click());
        assert.match(await undoes(), /Copy 2 services/);
        await grid(page, "Services").getByText("Canal Dos", { exact: true }).nth(1).waitFor();
        await settled(page, () => press(page, "Control+z"));
        await press(page, "Control+a");
        await page.getByRole("searchbox", { name: "Filter services" }).fill("cine");
        await services.getByText("12 selected, 10 of them not shown", { exact: true }).waitFor();
        await grid(page, "Services").focus();
        assert.equal((await copied(page)).split("\n").length, 13);
        await press(page, "Home", "ArrowRight", "ArrowRight", "ArrowRight", "ArrowRight", "ArrowRight");
        await settled(page, () => press(page, "7", "7", "7", "Enter"));
        assert.match(await undoes(), /of 12 services/);
        await settled(page, () => services.getByRole("button", { name: "Do not ask for" }).click());
        assert.match(await undoes(), /of 12 services/);
        await settled(page, () => services.getByRole("button", { name: "Copy" }).click());
        assert.match(await undoes(), /Copy 12 services/);
        await settled(page, () => press(page, "Control+z"));
        await press(page, "Control+a");
        await services.getByText("2 selected", { exact: true }).waitFor();
        await settled(page, () => services.getByRole("button", { name: "Remove", exact: true }).click());
        assert.match(await undoes(), /Remove 2 services/);
    }, withClipboard);

    at("services are cut down by the terms that the tool knows", async (page) => {
        await openFiles(page, medium);
        await edit(page, "Services");
        const terms = page.getByRole("textbox", { name: "Terms" });
        const shown = async () => Number(await grid(page, "Services").getAttribute("aria-rowcount")) - 1;
        await terms.fill("hd");
        await press(page, "Enter");
        await page.getByText(/^\d+ of 80 services$/).waitFor();
        const all = await shown();
        const { services } = JSON.parse(readFileSync(medium, "utf8"));
        assert.equal(all, services.filter(({ video_format: format }) => format >= 3).length);
        await page.getByRole("combobox", { name: "Which services" }).selectOption("Left out");
        assert.ok(await shown() < all);
        await terms.fill("colour");
        await press(page, "Enter");
        await page.locator("#messages").getByText(/colour/).waitFor();
        assert.equal(await terms.getAttribute("aria-invalid"), "true");
        await terms.fill("");
        await press(page, "Enter");
        assert.equal(await shown(), 1);
        assert.equal(await terms.getAttribute("aria-invalid"), null);
    });

    at("services are cut down by what keeps them out, and by module", async (page) => {
        await openFiles(page, medium);
        await edit(page, "Services");
        const { causes, modules } = JSON.parse(native("run", medium, "--json", "--trials", "0"));
        const which = page.getByRole("combobox", { name: "Which services" });
        await which.selectOption(causes[0].sentence);
        assert.equal(await grid(page, "Services").getAttribute("aria-rowcount"), String(1 + causes[0].services));
        const busy = modules.find(({ inputs }) => inputs.some(({ services }) => services.length > 0));
        await which.selectOption(busy.label || busy.mac);
        const placed = new Set(busy.outputs.flatMap(({ services }) => services.filter(({ clone }) => !clone).map(({ lcn }) => lcn)));
        assert.equal(await grid(page, "Services").getAttribute("aria-rowcount"), String(1 + placed.size));
    });

    at("clones and PIDs of a service are added, changed and removed", async (page) => {
        await openFiles(page, small);
        const { clones, pids, services } = JSON.parse(readFileSync(small, "utf8"));
        await edit(page, "Services");
        await press(page, "ArrowDown", "ArrowDown");
        await edit(page, "Clones");
        assert.equal(await grid(page, "Clones").getAttribute("aria-rowcount"), String(1 + clones.length));
        await settled(page, () => page.locator("#panel-clones").getByRole("button", { name: "Add" }).click());
        assert.equal(await activeCell(page, "Clones"), String(services[2].lcn));
        assert.match(await page.locator("#undo").getAttribute("title"), /Add a clone/);
        await press(page, "ArrowRight", "ArrowRight");
        await settled(page, async () => { await page.keyboard.type("Second"); await press(page, "Enter"); });
        await press(page, "Space");
        await settled(page, () => page.locator("#panel-clones").getByRole("button", { name: "Remove" }).click());
        assert.equal(await grid(page, "Clones").getAttribute("aria-rowcount"), String(1 + clones.length));
        await edit(page, "PIDs");
        await settled(page, () => page.locator("#panel-pids").getByRole("button", { name: "Add" }).click());
        assert.equal(await grid(page, "PIDs").getAttribute("aria-rowcount"), String(2 + (pids ?? []).length));
        assert.equal(await activeCell(page, "PIDs"), String(services[2].sid));
    });

    at("modules are added, copied, and removed", async (page) => {
        await openFiles(page, small);
        await settled(page, () => page.locator("#edit").getByRole("button", { name: "Add" }).click());
        assert.equal(await activeCell(page, "Modules"), "02:00:00:00:00:04");
        await press(page, "Space");
        await settled(page, () => page.getByRole("button", { name: "Copy" }).click());
        assert.equal(await activeCell(page, "Modules"), "02:00:00:00:00:05");
        await press(page, "Shift+ArrowUp");
        await settled(page, () => page.getByRole("button", { name: "Remove", exact: true }).click());
        assert.equal(await grid(page, "Modules").getAttribute("aria-rowcount"), "4");
    });

    at("what the engine refuses is told, with the way to it", async (page) => {
        await openFiles(page, small);
        await edit(page, "Modules");
        await press(page, "ArrowDown", "Enter");
        await page.keyboard.type("02:00:00:00:00:01");
        await press(page, "Enter");
        await page.getByRole("alert").getByText("a module with this MAC is already loaded").waitFor();
        assert.equal(await page.locator("body.stale").count(), 1);
        await edit(page, "Services");
        await page.getByRole("button", { name: "Go there" }).click();
        assert.equal(await activeCell(page, "Modules"), "02:00:00:00:00:01");
        await settled(page, () => press(page, "Control+z"));
        assert.equal(await page.getByRole("alert").count(), 0);
    });

    at("a table goes to a spreadsheet and comes back", async (page) => {
        await openFiles(page, small);
        await edit(page, "Services");
        await press(page, "Control+a");
        const lines = (await copied(page)).split("\n").map((line) => line.split("\t"));
        assert.equal(lines.length, 13);
        assert.deepEqual(lines[0].slice(0, 3), ["LCN", "Name", "Ask for"]);
        lines[1][1] = "Canal Primero";
        const added = [...lines[12]];
        added[0] = "99";
        added[lines[0].indexOf("SID")] = "99";
        const text = [...lines, added].map((line) => line.join("\t")).join("\n");
        await settled(page, () => paste(page, `${text.replaceAll("\n", "\r\n")}\r\n\r\n`));
        assert.match(await page.locator("#messages").innerText(), /1 service new, 12 changed/);
        assert.equal(await grid(page, "Services").getAttribute("aria-rowcount"), "14");
        await grid(page, "Services").getByText("Canal Primero").waitFor();
    }, withClipboard);

    at("a cell that was clicked goes to the clipboard and comes back, and a field keeps its own", async (page) => {
        await openFiles(page, small);
        await grid(page, "Modules").getByText("02:00:00:00:00:01").click();
        assert.equal(await copied(page), "02:00:00:00:00:01");
        await press(page, "ArrowDown", "ArrowRight");
        await settled(page, () => paste(page, readFileSync(small, "utf8").split("\n")[0] + "Roof"));
        assert.equal(await activeCell(page, "Modules"), "{Roof");
        await press(page, "ArrowRight", "ArrowRight", "ArrowRight");
        await settled(page, () => paste(page, "3"));
        assert.equal(await activeCell(page, "Modules"), "3");
        await page.getByRole("searchbox", { name: "Filter modules" }).click();
        await paste(page, "Roof");
        assert.equal(await page.getByRole("searchbox", { name: "Filter modules" }).inputValue(), "Roof");
        assert.equal(await grid(page, "Modules").getAttribute("aria-rowcount"), "2");
        assert.equal(await page.locator("#messages").isVisible(), false);
    }, withClipboard);
});
