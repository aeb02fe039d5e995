// The planner in a browser, by what a person does there. PAGE is the page, RECALCULO the program, LINEUP, if set, a
// folder with a channels.conf.

import assert from "node:assert/strict";
import { execFileSync, spawnSync } from "node:child_process";
import { copyFileSync, mkdtempSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { join, resolve } from "node:path";
import { after, before, describe, test } from "node:test";
import axe from "axe-core";
import { openBrowser } from "./browser.js";
import { activeCell, downloaded, drop, edit, examples, grid, made, openFiles, pageFile, placed, press, root, see, settled, status, visit } from "./planner_page.js";

const recalculo = resolve(process.env.RECALCULO ?? join(root, "build/gcc/tools/recalculo/recalculo"));
const folder = mkdtempSync(join(tmpdir(), "recalculo-planner-"));
const native = (...parameters) => execFileSync(recalculo, parameters, { encoding: "utf8", maxBuffer: 2 ** 28, stdio: ["ignore", "pipe", "ignore"] });
const small = join(examples, "small.json");
const medium = join(examples, "medium.json");

let browser;
before(async () => { browser = await openBrowser(); });
after(async () => {
    await browser.close();
    rmSync(folder, { recursive: true });
});

const at = (name, use, { before: prepare = () => {}, ...more } = {}) => test(name, () => {
    prepare();
    return visit(browser, use, more);
});

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
        const copied = await page.evaluate(() => {
            const data = new DataTransfer();
            document.activeElement.dispatchEvent(new ClipboardEvent("copy", { clipboardData: data, bubbles: true }));
            return data.getData("text/plain");
        });
        const lines = copied.split("\n").map((line) => line.split("\t"));
        assert.equal(lines.length, 13);
        assert.deepEqual(lines[0].slice(0, 3), ["LCN", "Name", "Ask for"]);
        lines[1][1] = "Canal Primero";
        const added = [...lines[12]];
        added[0] = "99";
        added[lines[0].indexOf("SID")] = "99";
        const text = [...lines, added].map((line) => line.join("\t")).join("\n");
        await settled(page, () => page.evaluate((pasted) => {
            const data = new DataTransfer();
            data.setData("text/plain", pasted);
            document.activeElement.dispatchEvent(new ClipboardEvent("paste", { clipboardData: data, bubbles: true }));
        }, text));
        assert.match(await page.locator("#messages").innerText(), /1 service new, 12 changed/);
        assert.equal(await grid(page, "Services").getAttribute("aria-rowcount"), "14");
        await grid(page, "Services").getByText("Canal Primero").waitFor();
    });
});

describe("See and ask", () => {
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

    at("a proposal of sizing is taken over", async (page) => {
        await openFiles(page, small);
        await see(page, "Ask");
        await page.getByRole("button", { name: "Size" }).click();
        await page.getByRole("button", { name: "Take over" }).first().waitFor();
        await settled(page, () => page.getByRole("button", { name: "Take over" }).first().click());
        assert.equal(await placed(page), "12 of 12");
        await page.getByRole("button", { name: "Bound" }).click();
        await page.locator("#panel-ask pre").getByText("12").first().waitFor();
    });

    at("a choice is searched, stopped, searched again and taken over", async (page) => {
        await openFiles(page, join(examples, "medium.json"));
        await see(page, "Ask");
        await page.getByRole("spinbutton", { name: "Seconds to search" }).fill("60");
        await page.getByRole("button", { name: "Choose" }).click();
        await page.getByRole("button", { name: "Stop" }).click();
        await page.getByText("Stopped.").waitFor();
        await page.getByRole("spinbutton", { name: "Seconds to search" }).fill("1");
        await page.getByRole("button", { name: "Choose" }).click();
        await settled(page, () => page.getByRole("button", { name: "Take over" }).first().click());
        await see(page, "Overview");
        assert.match(await page.locator("#undo").getAttribute("title"), /Ask for what was chosen/);
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

    at("names with markup are names", async (page) => {
        const hostile = ["<script>alert(1)</script>", "</title></style></script><img src=x onerror=alert(1)>", "\"&' onmouseover=alert(1) x='", "{{x}} ${1}"];
        const services = hostile.map((name, index) => ({ lcn: index + 1, name, onid: 1, tsid: 1, sid: index + 1 }));
        await openFiles(page, made("</script>.json", { name: hostile[1], modules: [{ mac: hostile[0], label: hostile[1], controller: true, inputs: 1, outputs: [20000], pids_max: 0 }], services }));
        await edit(page, "Services");
        await grid(page, "Services").getByText(hostile[0]).waitFor();
        for (const view of ["Modules", "Diagram", "Changes", "Overview"]) await see(page, view);
        assert.equal(await page.locator("img").count(), 0);
    });
});

describe("Take it along", () => {
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

    test("a page that is not there is told, and where it was looked for", () => {
        const lonely = join(folder, "recalculo");
        copyFileSync(recalculo, lonely);
        const { status: code, stderr } = spawnSync(lonely, ["run", small, "--live", file], { encoding: "utf8", env: { ...process.env, LD_LIBRARY_PATH: join(root, "build/gcc") } });
        assert.equal(code, 2);
        assert.match(stderr, /--live: the page of the planner is in neither .*share\/recalculo\/recalculo\.html nor/);
    });
});

describe("Large", () => {
    const services = Array.from({ length: 10000 }, (one, index) => ({ lcn: index + 1, name: `Channel ${index + 1}`, onid: 1, tsid: 1 + Math.floor(index / 7), sid: index + 1, bitrate: 3000 }));
    const modules = Array.from({ length: 380 }, (one, index) => ({ mac: `02:00:00:00:${String(index).padStart(4, "0")}`, ...(index === 0 ? { controller: true } : {}), inputs: 4, outputs: [38000, 38000, 38000], pids_max: 0 }));

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
        for (const view of ["Modules", "Changes", "Diagram"]) await see(page, view);
    });

    at("a run is cancelled at once, and the next one answers", async (page) => {
        await openFiles(page, small);
        // One that takes seconds: many that fit nowhere.
        const slow = {
            modules: modules.map((module) => ({ ...module, outputs: [38000, 9000] })),
            services: Array.from({ length: 40000 }, (one, index) => ({ lcn: index + 1, name: `Channel ${index + 1}`, onid: 1, tsid: 1 + Math.floor(index / 7), sid: index + 1, bitrate: 3000 + (index % 7) * 900 })),
        };
        await page.locator("input[type=file]").setInputFiles([made("slow.json", slow)]);
        await page.locator("#cancel").waitFor();
        await page.locator("#cancel").click();
        await page.locator("#status").getByText("Cancelled.").waitFor();
        await openFiles(page, medium);
        assert.equal(await placed(page), "79 of 80");
    });
});

describe("For everybody", () => {
    for (const colorScheme of ["light", "dark"])
        test(`axe finds nothing, ${colorScheme}`, () => visit(browser, async (page) => {
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
            for (const view of ["Overview", "Modules", "Changes", "Diagram", "Ask"]) {
                await see(page, view);
                if (view === "Modules") await page.locator("details.module summary").first().click();
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
        for (const view of ["Overview", "Modules", "Changes", "Diagram", "Ask"]) {
            await see(page, view);
            if (view === "Modules") await page.locator("details.module summary").first().click();
            const { scrollWidth, clientWidth } = await page.evaluate(() => document.documentElement);
            assert.ok(await page.evaluate(() => document.documentElement.scrollWidth <= document.documentElement.clientWidth), `${view}: ${scrollWidth} ${clientWidth}`);
        }
    }, { options: { viewport: { width: 320, height: 640 } } });

    at("the summary prints on one sheet", async (page) => {
        await openFiles(page, medium);
        const pdf = await page.pdf({ format: "A4" });
        assert.equal(pdf.toString("latin1").match(/\/Type\s*\/Page\b/g).length, 1);
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
