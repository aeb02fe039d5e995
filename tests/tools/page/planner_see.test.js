// Seeing what a change does. PAGE is the page, RECALCULO the program.

import assert from "node:assert/strict";
import { readFileSync, writeFileSync } from "node:fs";
import { join } from "node:path";
import { describe } from "node:test";
import { downloaded, edit, grid, made, medium, native, openFiles, placed, press, see, settled, setUp, small, status } from "./planner_page.js";

const { at, folder } = setUp();

describe("See", () => {
    at("variants stand side by side, each with its figures", async (page) => {
        await openFiles(page, small);
        await settled(page, () => page.getByRole("button", { name: "New variant" }).click());
        await edit(page, "Modules");
        await press(page, "ArrowDown", "ArrowDown", "ArrowRight", "ArrowRight", "ArrowRight", "ArrowRight");
        await settled(page, () => press(page, "2", "Enter"));
        assert.deepEqual(await page.locator("#variants [aria-pressed]").allTextContents(), ["A 11 of 12", "B 12 of 12"]);
        await settled(page, () => page.getByLabel("Compare with").selectOption("variant A"));
        await see(page, "Changes");
        await page.locator("#panel-changes").getByText("Canal Lejano").waitFor();
        await settled(page, () => page.locator("#variants [aria-pressed]").first().click());
        assert.equal(await placed(page), "11 of 12");
    });

    at("what one compares with is what is offered for it, when another variant is looked at or one is removed", async (page) => {
        const compared = () => page.getByLabel("Compare with").locator("option:checked").textContent();
        const raise = async (value) => {
            await edit(page, "Modules");
            await press(page, "Control+Home", "ArrowDown", "ArrowDown", "ArrowRight", "ArrowRight", "ArrowRight", "ArrowRight");
            await settled(page, () => press(page, value, "Enter"));
        };
        await openFiles(page, small);
        await raise("3");
        await settled(page, () => page.getByRole("button", { name: "New variant" }).click());
        await raise("0");
        await settled(page, () => page.getByLabel("Compare with").selectOption("variant A"));
        const before = await status(page);
        assert.match(before, /lost/);
        await settled(page, () => page.locator("#variants [aria-pressed]").first().click());
        assert.equal(await compared(), "the last change");
        assert.match(await status(page), /gained/);
        await settled(page, () => page.getByLabel("Compare with").selectOption("variant B"));
        await settled(page, () => page.locator("#variants [aria-pressed]").last().click());
        await settled(page, () => page.getByLabel("Compare with").selectOption("variant A"));
        await settled(page, () => page.getByRole("button", { name: "Remove variant" }).click());
        assert.equal(await compared(), "the last change");
        assert.match(await status(page), /gained/);
    });

    at("what the engine has refused is mended by the next change, and compared with what ran last", async (page) => {
        await page.getByRole("button", { name: "An empty head-end" }).click();
        await page.getByRole("alert").getByText(/no module is the controller/).waitFor();
        await settled(page, () => page.locator("#edit").getByRole("button", { name: "Add" }).click());
        assert.equal(await page.getByRole("alert").count(), 0);
        await openFiles(page, small);
        await edit(page, "Modules");
        await press(page, "ArrowDown", "Enter");
        await page.keyboard.type("02:00:00:00:00:01");
        await press(page, "Enter");
        await page.getByRole("alert").getByText("already loaded").waitFor();
        await settled(page, async () => { await press(page, "ArrowUp", "Enter"); await page.keyboard.type("02:00:00:00:00:09"); await press(page, "Enter"); });
        assert.equal(await page.getByRole("alert").count(), 0);
        assert.match(await status(page), /^11 of 12 placed, 1 left out \(/);
    });

    at("a variant that the engine refuses is nothing to compare with", async (page) => {
        await openFiles(page, small);
        await settled(page, () => page.getByRole("button", { name: "New variant" }).click());
        await edit(page, "Modules");
        await press(page, "ArrowDown", "Enter");
        await page.keyboard.type("02:00:00:00:00:01");
        await press(page, "Enter");
        await page.getByRole("alert").getByText("already loaded").waitFor();
        await settled(page, () => page.locator("#variants [aria-pressed]").first().click());
        await settled(page, () => page.getByLabel("Compare with").selectOption("variant B"));
        assert.equal(await page.getByRole("alert").count(), 0);
        await see(page, "Changes");
        await page.getByText(/There is nothing to compare with yet/).waitFor();
    });

    at("what a change leaves as it is, is not drawn anew, and what it changes is", async (page) => {
        await openFiles(page, medium);
        await edit(page, "Services");
        await press(page, "ArrowRight", "ArrowRight", "ArrowRight");
        await page.evaluate(() => { for (const one of document.querySelectorAll("[data-at], .overview > *, .overview li")) one.isOld = true; });
        const old = (selector) => page.locator(selector).evaluateAll((all) => all.map((one) => one.isOld === true));
        await settled(page, () => press(page, "Space"));
        assert.match(await page.locator(".tiles").innerText(), /1 removed/);
        await grid(page, "Services").getByText("not asked for").waitFor();
        assert.ok((await old("#panel-services [data-at]")).every(Boolean));
        assert.deepEqual(await old(".tiles"), [false]);
        for (const part of ["section:has(> .causes)", "section:has(> .services)", "section > .services > li:first-child"]) assert.ok((await old(`.overview > ${part}`)).every(Boolean), part);
        await press(page, "Control+End");
        await press(page, "Control+Home");
        await grid(page, "Services").getByText("not asked for").waitFor();
    });

    at("a module tells what is inside now, if it was folded before the change", async (page) => {
        await openFiles(page, small);
        await see(page, "Modules");
        await page.locator("details.module summary").first().click();
        await page.locator(".chip", { hasText: "Canal Uno HD" }).first().waitFor();
        await page.locator("details.module summary").first().click();
        const { services } = JSON.parse(readFileSync(small, "utf8"));
        await edit(page, "Services");
        await press(page, ...Array(services.findIndex(({ name }) => name === "Canal Uno HD")).fill("ArrowDown"));
        await press(page, "ArrowRight");
        await settled(page, async () => { await page.keyboard.type("Renamed"); await press(page, "Enter"); });
        await page.locator("details.module summary").first().click();
        await page.locator(".chip", { hasText: "Renamed" }).first().waitFor();
    });

    at("a module that is unfolded and folded at once keeps its line", async (page) => {
        await openFiles(page, small);
        await see(page, "Modules");
        const line = page.locator("details.module summary").first();
        await line.dblclick();
        await page.waitForTimeout(100);
        assert.equal(await page.locator("details.module > summary").count(), 3);
        await line.click();
        await page.locator("details.module[open] .inside").waitFor();
    });

    at("a service that is no longer asked for is removed, and added when it is again", async (page) => {
        await openFiles(page, small);
        await edit(page, "Services");
        await press(page, "ArrowRight", "ArrowRight", "ArrowRight");
        await settled(page, () => press(page, "Space"));
        assert.match(await status(page), /1 removed/);
        await see(page, "Changes");
        await page.getByRole("region", { name: "Removed" }).getByText("Canal Uno").first().waitFor();
        assert.equal(await page.locator("#panel-changes .all-placed").count(), 0);
        await edit(page, "Services");
        await settled(page, () => press(page, "Space"));
        assert.match(await status(page), /1 added/);
    });

    at("a service that is moved is told with input and outputs, so that before and after differ", async (page) => {
        await openFiles(page, medium);
        await see(page, "Changes");
        await edit(page, "Services");
        await press(page, "ArrowRight", "ArrowRight", "ArrowRight");
        await settled(page, () => press(page, "Space"));
        const changed = await downloaded(page, () => press(page, "Control+s"));
        const file = join(folder, "moved.json");
        writeFileSync(file, changed.text);
        const { moved } = JSON.parse(native("compare", medium, file, "--json"));
        const withoutInputs = (places) => JSON.stringify(places.map((place) => ({ ...place, input: 0 })));
        assert.ok(moved.some(({ before, after }) => withoutInputs(before) === withoutInputs(after)));
        const told = (places) => places.map(({ mac, input, outputs }) => `${mac} in ${input} out ${outputs.join("+")}`).join("");
        const rows = await page.getByRole("region", { name: "Moved", exact: true }).locator("tbody tr").evaluateAll((all) => all.map(({ cells }) => [...cells].slice(3).map((cell) => cell.textContent)));
        assert.deepEqual(rows, moved.map(({ before, after }) => [told(before), told(after)]));
    });

    at("a service that is renamed is told with both names, as the tool tells it, and leads to its explanation", async (page) => {
        await openFiles(page, small);
        await see(page, "Changes");
        await edit(page, "Services");
        await press(page, "ArrowRight");
        await settled(page, async () => { await page.keyboard.type("Canal Primero"); await press(page, "Enter"); });
        assert.match(await status(page), /^11 of 12 placed, 1 left out \(1 renamed\)/);
        assert.equal(await page.locator("#tab-changes").innerText(), "Changes 1");
        const changed = await downloaded(page, () => press(page, "Control+s"));
        const file = join(folder, "renamed.json");
        writeFileSync(file, changed.text);
        const [figures] = native("compare", small, file).split("\n");
        await page.locator("#panel-changes").getByText(figures, { exact: true }).waitFor();
        const [row] = /LCN.* → LCN.*Canal Primero.*/.exec(native("compare", small, file));
        const renamed = page.getByRole("region", { name: "Renamed" });
        assert.deepEqual(await renamed.locator("tbody td").allTextContents(), row.split(" → ").map((text) => text.trim()));
        await renamed.getByRole("button").click();
        await page.locator(".explanation pre").getByText(/Canal Primero/).first().waitFor();
    });

    at("a module unfolds, a service explains itself", async (page) => {
        await openFiles(page, medium);
        await see(page, "Modules");
        await page.locator("details.module summary").first().click();
        await page.locator("details.module[open] .chip").first().click();
        const told = await page.locator(".explanation pre").innerText();
        assert.match(told, /It is placed on module/);
        await press(page, "Escape");
        assert.equal(await page.locator(".explanation").isVisible(), false);
    });

    at("the order of a change is that of the tool", async (page) => {
        await openFiles(page, medium);
        await edit(page, "Modules");
        await press(page, "ArrowRight", "ArrowRight", "ArrowRight", "ArrowRight");
        await settled(page, () => press(page, "0", "Enter"));
        const changed = await downloaded(page, () => press(page, "Control+s"));
        const file = join(folder, "changed.json");
        writeFileSync(file, changed.text);
        const { order } = JSON.parse(native("compare", medium, file, "--json"));
        assert.ok(order.steps.length > 1);
        await see(page, "Changes");
        await page.getByRole("button", { name: "In which order?" }).click();
        await page.locator(".order li").first().waitFor();
        assert.deepEqual(await page.locator(".order li .link bdi").allTextContents(), order.steps.map(({ input }) => input.mac));
    });

    at("groups and variants are told with what became of them", async (page) => {
        const headend = JSON.parse(readFileSync(small, "utf8"));
        headend.services[0].group = "News";
        headend.services[1].group = "News";
        headend.services[2].one_of = headend.services[3].one_of = "Either";
        await openFiles(page, made("grouped.json", headend));
        const file = join(folder, "grouped.json");
        writeFileSync(file, JSON.stringify(headend));
        const { groups, one_of: [variant] } = JSON.parse(native("run", file, "--json", "--trials", "0"));
        await page.locator(".findings li").getByText(`${groups[0].placed} of ${groups[0].loaded} placed`).waitFor();
        await page.locator(".services li", { hasText: "Either" }).getByText(variant.name).waitFor();
    });

    at("a MAC that no module has is told", async (page) => {
        await openFiles(page, small);
        assert.equal(await page.getByText("is no MAC").count(), 0);
        await edit(page, "Modules");
        await press(page, "Enter");
        await page.keyboard.type("rack");
        await settled(page, () => press(page, "Enter"));
        await page.locator(".findings").getByText(/"rack" is no MAC/).waitFor();
    });

    at("each cause counts the services that it keeps out, lists them and has them explained", async (page) => {
        await openFiles(page, medium);
        const { causes, left_out: streams } = JSON.parse(native("run", medium, "--json", "--trials", "0"));
        assert.ok(causes.length > 0);
        const told = page.locator(".causes > li");
        assert.deepEqual(await told.locator("summary").allTextContents(), causes.map(({ services, sentence }) => `${services} ${sentence}`));
        await told.first().locator("summary").click();
        const kept = streams.flatMap(({ services }) => services).filter(({ cause }) => cause === causes[0].kind);
        assert.deepEqual(await told.first().locator(".link bdi").allTextContents(), kept.map(({ name }) => name));
        await told.first().locator(".link").first().click();
        await page.locator(".explanation pre").getByText(kept[0].name).first().waitFor();
    });

    at("an input that carries nothing is free, whatever it is tuned to", async (page) => {
        const input = (number, services) => ({ number, tuned: true, onid: 1, tsid: number, services });
        const result = JSON.parse(native("run", small, "--json", "--trials", "0"));
        const all = result.modules.flatMap(({ inputs }) => inputs).length;
        result.modules[2].inputs[0] = input(1, []);
        await openFiles(page, made("tuned.result.json", result));
        assert.deepEqual(await page.locator(".tile", { hasText: "Inputs in use" }).locator("dd > *").allTextContents(), [String(all - 1), `of ${all}`]);
        await see(page, "Modules");
        await page.locator("details.module .facts").last().getByText("0 of 1 input").waitFor();
    });

    at("findings lead to their modules", async (page) => {
        await openFiles(page, medium);
        await page.locator(".findings .link").first().click();
        assert.equal(await page.locator("details.module[open]").count(), 1);
    });

    at("causes come before what is only counted, and cautions are told", async (page) => {
        await openFiles(page, medium);
        const titles = () => page.locator("#panel-overview h2").allInnerTexts().then((all) => all.map((text) => text.replace(/ [\d,]+$/, "")));
        assert.deepEqual((await titles()).slice(0, 2), ["Causes", "Only counted"]);
        const headend = JSON.parse(readFileSync(small, "utf8"));
        for (const service of headend.services) service.output_name = "Twin";
        await openFiles(page, made("twins.json", headend));
        await see(page, "Overview");
        assert.ok((await titles()).includes("Cautions"));
        await page.locator(".findings li").getByText(/Twin/).first().waitFor();
    });

    at("an input tells how much of its transponder goes on", async (page) => {
        const headend = JSON.parse(readFileSync(small, "utf8"));
        const [{ onid, tsid }] = headend.services;
        headend.streams = [{ onid, tsid, net_rate: 49186 }];
        await openFiles(page, made("filled.json", headend));
        const file = join(folder, "filled.json");
        writeFileSync(file, JSON.stringify(headend));
        const { modules } = JSON.parse(native("run", file, "--json", "--trials", "0"));
        const at = modules.findIndex(({ inputs }) => inputs.some((input) => input.net_rate));
        const { bitrate } = modules[at].inputs.find((input) => input.net_rate);
        await see(page, "Modules");
        await page.locator("details.module summary").nth(at).click();
        await page.getByText(`${bitrate.toLocaleString("en")} of 49,186 kbit/s, ${Math.round(bitrate / 491.86)} %`).waitFor();
    });

    at("outputs are to keep a reserve: what cannot is told, saved with the result, and still so after a reload", async (page) => {
        await openFiles(page, small);
        assert.equal(await page.locator("#panel-overview").getByText(/no room for tables/).count(), 0);
        assert.match(await page.getByLabel("Reserve").getAttribute("title"), /What each output is to keep free/);
        await page.getByLabel("Reserve").fill("12%");
        await settled(page, () => press(page, "Enter"));
        await page.locator("#panel-overview").getByText(/no room for tables/).first().waitFor();
        await page.getByText("Take along").click();
        const { text } = await downloaded(page, () => page.getByRole("button", { name: "Result (JSON)" }).click());
        assert.equal(text, native("run", small, "--json", "--trials", "0", "--reserve", "12%"));
        await page.reload();
        await page.waitForSelector("html[data-drawn]");
        assert.equal(await page.getByLabel("Reserve").inputValue(), "12%");
        await page.locator("#panel-overview").getByText(/no room for tables/).first().waitFor();
        await page.getByLabel("Reserve").fill("half");
        await press(page, "Enter");
        await page.locator("#messages").getByText(/--reserve: found "half"/).waitFor();
        const marked = () => page.getByLabel("Reserve").getAttribute("aria-invalid");
        assert.equal(await marked(), "true");
        await edit(page, "Services");
        await press(page, "ArrowRight", "ArrowRight", "ArrowRight");
        await settled(page, () => press(page, "Space"));
        assert.deepEqual([await page.getByLabel("Reserve").inputValue(), await marked()], ["12%", null]);
        await page.getByLabel("Reserve").fill("");
        await settled(page, () => press(page, "Enter"));
        assert.equal(await page.locator("#panel-overview").getByText(/no room for tables/).count(), 0);
    });

    at("the summary of a large plan prints on one sheet, and tells how many services are not listed there", async (page) => {
        const services = Array.from({ length: 1234 }, (one, index) => ({ lcn: index + 1, name: `A channel with a name ${index}`, onid: 1, tsid: 1000 + Math.floor(index / 6), sid: index + 1, bitrate: 3000 + (index % 7) * 500 }));
        const modules = Array.from({ length: 24 }, (one, index) => ({ mac: `02:00:00:00:00:${String(index + 10)}`, label: `Rack ${index}`, controller: index === 0, inputs: 4, outputs: [38000, 38000, 38000, 38000], pids_max: 40 }));
        await openFiles(page, made("large.json", { modules, services }));
        const left = Number(/([\d,]+) left out/.exec(await status(page))[1].replace(",", ""));
        assert.equal(await page.locator(".left-out").getByText(/^and [\d,]+ more$/).isVisible(), false);
        const pdf = await page.pdf({ format: "A4" });
        assert.equal(pdf.toString("latin1").match(/\/Type\s*\/Page\b/g).length, 1);
        await page.emulateMedia({ media: "print" });
        assert.equal(await page.locator(".left-out li:visible").count(), 20);
        assert.equal(await page.locator(".left-out .on-paper").innerText(), `and ${left - 20} more`);
        assert.equal(await page.getByText(/^Show \d+ more$/).isVisible(), false);
    });

    at("the service lists of the outputs are those of the report, follow each change and lead to the modules", async (page) => {
        await openFiles(page, medium);
        await see(page, "Lists");
        const result = JSON.parse(native("run", medium, "--json", "--trials", "0"));
        const outputs = result.modules.flatMap((module) => module.outputs.filter(({ services }) => services.length > 0).map((output) => ({ module, output })));
        const lists = page.locator(".service-list");
        await lists.first().waitFor();
        assert.equal(await lists.count(), outputs.length);
        assert.deepEqual(await lists.locator("tbody").evaluateAll((bodies) => bodies.map((body) => body.rows.length)), outputs.map(({ output }) => output.services.length));
        const [{ output: { services } }] = outputs;
        const one = services.toSorted((left, right) => left.lcn - right.lcn)[0];
        await lists.first().locator("tbody tr").first().getByText(one.output_name).waitFor();
        await page.getByRole("searchbox", { name: "Filter the lists" }).fill(one.output_name);
        assert.ok(await page.locator(".service-list:visible").count() < outputs.length);
        await page.getByRole("searchbox", { name: "Filter the lists" }).fill("");
        const { services: all } = JSON.parse(readFileSync(medium, "utf8"));
        await edit(page, "Services");
        await press(page, ...Array(all.findIndex(({ lcn, sid }) => lcn === one.lcn && sid === one.sid)).fill("ArrowDown"), "ArrowRight");
        await settled(page, async () => { await page.keyboard.type("Renamed by hand"); await press(page, "Enter"); });
        await page.locator(".service-list").getByText("Renamed by hand").first().waitFor();
        await page.locator(".service-list .link").first().click();
        assert.equal(await page.locator("details.module[open]").count(), 1);
    });

    at("what was opened last is what one compares with", async (page) => {
        await openFiles(page, medium);
        await openFiles(page, small);
        await page.getByLabel("Compare with").selectOption("opened");
        await edit(page, "Services");
        await press(page, "ArrowRight", "ArrowRight", "ArrowRight");
        await settled(page, () => press(page, "Space"));
        assert.match(await status(page), /\((?:\d+ \w+, )*1 removed\)/);
        assert.doesNotMatch(await status(page), /added/);
    });

    at("what was opened is compared with after more steps than can be undone, and each variant with it", async (page) => {
        await openFiles(page, small);
        await page.getByLabel("Compare with").selectOption("opened");
        await edit(page, "Services");
        await press(page, "ArrowRight", "ArrowRight", "ArrowRight");
        await press(page, ...Array(500).fill("Space"));
        await settled(page, () => press(page, "Space"));
        await page.locator("#status").getByText(/1 removed\)/).waitFor();
        await settled(page, () => page.getByRole("button", { name: "New variant" }).click());
        assert.match(await status(page), /1 removed\)/);
    });

    at("the diagram leads to a module, from the keyboard, too", async (page) => {
        await openFiles(page, small);
        await see(page, "Diagram");
        await page.getByRole("link", { name: /02:00:00:00:00:02/ }).focus();
        await press(page, "Enter");
        await page.locator("details.module[open]").waitFor();
        assert.equal(await page.locator("details.module[open]").getAttribute("data-mac"), "02:00:00:00:00:02");
        await see(page, "Diagram");
        await page.locator(".module-node text").first().click();
        await page.locator("details.module[open]").nth(1).waitFor();
    });

    at("names with markup are names", async (page) => {
        const hostile = ["<script>alert(1)</script>", "</title></style></script><img src=x onerror=alert(1)>", "\"&' onmouseover=alert(1) x='", "{{x}} ${1}"];
        const services = hostile.map((name, index) => ({ lcn: index + 1, name, onid: 1, tsid: 1, sid: index + 1 }));
        await openFiles(page, made("</script>.json", { name: hostile[1], modules: [{ mac: hostile[0], label: hostile[1], controller: true, inputs: 1, outputs: [20000], pids_max: 0 }], services }));
        await edit(page, "Services");
        await grid(page, "Services").getByText(hostile[0]).waitFor();
        for (const view of ["Modules", "Lists", "Diagram", "Changes", "Overview"]) await see(page, view);
        await see(page, "Lists");
        await page.locator(".service-list").getByText(hostile[0]).first().waitFor();
        assert.equal(await page.locator("img").count(), 0);
    });
});
