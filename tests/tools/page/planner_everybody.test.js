// The largest head-ends, the smallest screens, paper, and those who do not see. PAGE is the page, RECALCULO the program.

import assert from "node:assert/strict";
import { readFileSync, writeFileSync } from "node:fs";
import { join } from "node:path";
import { describe, test } from "node:test";
import axe from "axe-core";
import { activeCell, downloaded, edit, grid, made, medium, native, openFiles, pageFile, placed, press, see, settled, setUp, small, status, visit } from "./planner_page.js";

const own = setUp();
const { at } = own;

const services = Array.from({ length: 10000 }, (one, index) => ({ lcn: index + 1, name: `Channel ${index + 1}`, onid: 1, tsid: 1 + Math.floor(index / 7), sid: index + 1, bitrate: 3000 }));
const modules = Array.from({ length: 380 }, (one, index) => ({ mac: `02:00:00:00:${String(index).padStart(4, "0")}`, ...(index === 0 ? { controller: true } : {}), inputs: 4, outputs: [38000, 38000, 38000], pids_max: 0 }));

describe("Large", () => {
    at("10,000 services are placed, scrolled, found and changed", async (page) => {
        await openFiles(page, made("large.json", { modules, services }));
        await edit(page, "Services");
        await press(page, "Control+End", "Home");
        assert.equal(await activeCell(page, "Services"), "10000");
        assert.ok(await page.locator("#edit [data-at]").count() < 100, "only the rows in sight are drawn");
        await page.getByRole("searchbox", { name: "Filter services" }).fill("channel 7777");
        assert.equal(await grid(page, "Services").getAttribute("aria-rowcount"), "2");
        await press(page, "ArrowDown", "ArrowRight", "ArrowRight", "ArrowRight");
        await settled(page, () => press(page, "Space"));
        assert.equal((await placed(page)).split(" of ")[1], "9999");
        for (const view of ["Modules", "Lists", "Changes", "Diagram"]) await see(page, view);
    });

    // One that takes seconds: many that fit nowhere.
    const slow = {
        modules: modules.map((module) => ({ ...module, outputs: [38000, 9000] })),
        services: Array.from({ length: 40000 }, (one, index) => ({ lcn: index + 1, name: `Channel ${index + 1}`, onid: 1, tsid: 1 + Math.floor(index / 7), sid: index + 1, bitrate: 3000 + (index % 7) * 900 })),
    };

    at("a run is cancelled at once, and the next one answers", async (page) => {
        await openFiles(page, small);
        await page.locator("input[type=file]").setInputFiles([made("slow.json", slow)]);
        await page.locator("#cancel").waitFor();
        await page.locator("#cancel").click();
        await page.locator("#status").getByText("Cancelled.").waitFor();
        await openFiles(page, medium);
        assert.equal(await placed(page), "79 of 80");
    });

    at("a reserve that is typed while a run is cancelled is kept for the next one", async (page) => {
        await openFiles(page, small);
        await page.locator("input[type=file]").setInputFiles([made("slow.json", slow)]);
        await page.locator("#cancel").waitFor();
        await page.getByLabel("Reserve").fill("12%");
        await press(page, "Enter");
        await page.locator("#cancel").click();
        await page.locator("#status").getByText("Cancelled.").waitFor();
        assert.equal(await page.getByLabel("Reserve").getAttribute("aria-invalid"), null);
        await openFiles(page, small);
        await page.locator("#panel-overview").getByText(/no room for tables/).first().waitFor();
    });

    at("a reserve that is taken back before the engine has answered does not come back with the answer", async (page) => {
        await openFiles(page, made("some.json", { modules, services }));
        await edit(page, "Modules");
        await press(page, ...Array(4).fill("ArrowRight"));
        await settled(page, () => press(page, "0", "Enter"));
        const askForLong = async () => {
            await see(page, "Changes");
            await page.getByRole("button", { name: "In which order?" }).click();
            await see(page, "Overview");
        };
        await askForLong();
        await page.getByLabel("Reserve").fill("12%");
        await press(page, "Enter");
        await page.getByLabel("Reserve").fill("");
        await press(page, "Enter");
        const { text: headend } = await downloaded(page, () => press(page, "Control+s"));
        await page.getByText("Take along").click();
        const { text } = await downloaded(page, () => page.getByRole("button", { name: "Result (JSON)" }).click());
        const file = join(own.folder, "some.json");
        writeFileSync(file, headend);
        assert.equal(text, native("run", file, "--json", "--trials", "0"));
        // What is refused when the field shows another by then says nothing of that.
        await settled(page, () => press(page, "Control+z"));
        await settled(page, () => press(page, "Control+y"));
        await askForLong();
        await page.getByLabel("Reserve").fill("half");
        await press(page, "Tab");
        await settled(page, () => press(page, "Control+z"));
        assert.equal(await page.getByLabel("Reserve").inputValue(), "");
        await page.locator("#messages").getByText(/--reserve: found "half"/).waitFor();
        assert.equal(await page.getByLabel("Reserve").getAttribute("aria-invalid"), null);
    });
});

describe("For everybody", () => {
    for (const colorScheme of ["light", "dark"])
        test(`axe finds nothing, ${colorScheme}`, () => visit(own.browser, async (page) => {
            const look = async () => {
                const { violations } = await page.evaluate(() => globalThis.axe.run());
                assert.deepEqual(violations.map(({ id, nodes }) => `${id}: ${nodes.map(({ html }) => html.slice(0, 160)).join(" | ")}`), []);
            };
            await look();
            await openFiles(page, medium);
            await settled(page, () => page.getByRole("button", { name: "New variant" }).click());
            await edit(page, "Services");
            await press(page, "Space", "ArrowRight", "ArrowRight", "ArrowRight");
            await settled(page, () => press(page, "Space"));
            for (const view of ["Overview", "Modules", "Lists", "Changes", "Diagram", "Ask"]) {
                await see(page, view);
                if (view === "Modules") await page.locator("details.module summary").first().click();
                if (view === "Lists") await page.locator(".service-list").first().waitFor();
                await look();
            }
            await see(page, "Overview");
            await page.locator(".causes summary").first().click();
            await page.locator(".causes .services .link").first().click();
            await page.locator(".explanation pre").waitFor();
            await look();
        }, { options: { colorScheme }, init: axe.source }));

    at("it fits 320 pixels", async (page) => {
        await openFiles(page, medium);
        for (const view of ["Overview", "Modules", "Lists", "Changes", "Diagram", "Ask"]) {
            await see(page, view);
            if (view === "Modules") await page.locator("details.module summary").first().click();
            if (view === "Lists") await page.locator(".service-list").first().waitFor();
            const { scrollWidth, clientWidth } = await page.evaluate(() => document.documentElement);
            assert.ok(await page.evaluate(() => document.documentElement.scrollWidth <= document.documentElement.clientWidth), `${view}: ${scrollWidth} ${clientWidth}`);
        }
    }, { options: { viewport: { width: 320, height: 640 } } });

    at("the keyboard is where one left it when a button has gone with what it did", async (page) => {
        const focused = () => page.evaluate(() => document.activeElement.textContent);
        const enter = async (button) => {
            await button.focus();
            await settled(page, () => press(page, "Enter"));
        };
        await openFiles(page, medium);
        await enter(page.getByRole("button", { name: "New variant" }));
        await enter(page.locator("#variants [aria-pressed]").first());
        assert.equal(await focused(), "A 79 of 80");
        await enter(page.getByRole("button", { name: "Remove variant" }));
        assert.equal(await focused(), "B 79 of 80");
        await enter(page.locator("#undo"));
        assert.equal(await focused(), "Undo");
        await enter(page.locator("#undo"));
        assert.equal(await focused(), "Redo");
        await enter(page.locator("#redo"));
        await enter(page.locator("#redo"));
        assert.equal(await focused(), "Undo");
        await edit(page, "Services");
        await press(page, "ArrowRight", "ArrowRight", "ArrowRight");
        await settled(page, () => press(page, "Space"));
        await see(page, "Changes");
        await page.getByRole("button", { name: "In which order?" }).focus();
        await press(page, "Enter");
        await page.locator(".order ol").waitFor();
        assert.equal(await focused(), "Order of the changes");
        await openFiles(page, made("many.json", { modules: modules.slice(0, 1), services: services.slice(0, 400) }));
        await see(page, "Overview");
        await page.getByRole("button", { name: /^Show \d+ more/ }).focus();
        const next = await page.locator(".left-out .services > li").count();
        await press(page, "Enter");
        assert.equal(await focused(), await page.locator(".left-out .services > li").nth(next).locator("button").textContent());
    });

    for (const width of [320, 400, 700, 1400])
        at(`what can be taken along lies within ${width} pixels, and Escape leads back from there`, async (page) => {
            await openFiles(page, small);
            await page.getByText("Take along").focus();
            await press(page, "Enter", "Tab", "Tab");
            const { x, width: wide } = await page.locator(".menu > div").boundingBox();
            assert.ok(x >= 0 && x + wide <= width, `${x} ${wide}`);
            await press(page, "Escape");
            assert.equal(await page.locator(".menu > div").isVisible(), false);
            assert.match(await page.evaluate(() => document.activeElement.textContent), /Take along/);
        }, { options: { viewport: { width, height: 700 } } });

    at("the summary prints on one sheet", async (page) => {
        await openFiles(page, medium);
        const pdf = await page.pdf({ format: "A4" });
        assert.equal(pdf.toString("latin1").match(/\/Type\s*\/Page\b/g).length, 1);
    });

    at("many findings are printed on as few sheets as they need, all of them, and none across two", async (page) => {
        const sheetsOf = async (number, events) => {
            const some = services.slice(0, number).map((service, index) => ({ ...service, tsid: index + 1, group: `Group ${index}`, ...(index < events ? { one_of: `Event ${index}` } : {}) }));
            await openFiles(page, made("found.json", { modules: modules.slice(0, 1), services: some }));
            return (await page.pdf({ format: "A4" })).toString("latin1").match(/\/Type\s*\/Page\b/g).length;
        };
        assert.equal(await sheetsOf(24, 0), 1);
        assert.equal(await sheetsOf(100, 50), 3);
        await page.emulateMedia({ media: "print" });
        assert.deepEqual([await page.locator(".findings li:visible", { hasText: "Group" }).count(), await page.locator(".services li:visible", { hasText: "Event" }).count()], [100, 50]);
        assert.deepEqual(await page.locator(".overview .findings li, .overview .services > li").evaluateAll((all) => [...new Set(all.map((one) => getComputedStyle(one).breakInside))]), ["avoid"]);
    });

    at("of what is in a cause and of what is one of several, one is told how much is not listed", async (page) => {
        const some = services.slice(0, 500).map((service, index) => ({ ...service, tsid: index + 1, ...(index < 250 ? { one_of: `Event ${index}` } : {}) }));
        await openFiles(page, made("found.json", { modules: modules.slice(0, 1), services: some }));
        const left = Number(/(\d+) left out/.exec(await status(page))[1]);
        await page.locator(".overview section", { hasText: "One of several" }).getByText("and 50 more", { exact: true }).waitFor();
        await page.locator(".causes summary").first().click();
        await page.locator(".causes").getByText(`and ${left - 200} more`, { exact: true }).waitFor();
    });

    at("a module that is unfolded is printed, and no other", async (page) => {
        await openFiles(page, medium);
        await see(page, "Modules");
        for (const at of [1, 3]) await page.locator("details.module summary").nth(at).click();
        await see(page, "Ask");
        await page.emulateMedia({ media: "print" });
        const printed = await page.locator("details.module").evaluateAll((boxes) => boxes.map((box) => box.getClientRects().length > 0 && box.querySelectorAll(".chip").length > 0));
        assert.deepEqual(printed.map((isPrinted, at) => (isPrinted ? at : -1)).filter((at) => at >= 0), [1, 3]);
        for (const shown of ["#panel-overview .tiles", "#name"]) assert.equal(await page.locator(shown).isVisible(), true, shown);
        for (const hidden of ["#edit", ".tabs", "#panel-ask", "#save"]) assert.equal(await page.locator(hidden).first().isVisible(), false, hidden);
        const pdf = await page.pdf({ format: "A4" });
        const sheets = pdf.toString("latin1").match(/\/Type\s*\/Page\b/g).length;
        assert.ok(sheets >= 1 && sheets <= 3, `${sheets} sheets`);
    });

    at("without WebAssembly it says so", async (page) => {
        await page.getByRole("alert").getByText("no WebAssembly").waitFor();
    }, { isReady: false, init: () => { delete globalThis.WebAssembly; } });

    test("it is one file of at most a megabyte that lets nothing in and nothing out", () => {
        const page = readFileSync(pageFile, "utf8");
        assert.ok(page.length <= 1_000_000);
        assert.match(page, /default-src 'none'; script-src 'sha256-[^']+' 'wasm-unsafe-eval'; style-src 'sha256-[^']+'; worker-src blob:; img-src data:; base-uri 'none'; form-action 'none'/);
    });
});
