// node planner_figures.js PAGE.html: how long it takes from a key to the placement on the screen, as a table for
// docs/browser.md. The first row is the channels.conf in the folder LINEUP, if that is set, on the modules of
// examples/modules-8-tight.json.
//
// A change is Space on "Ask for" in the table of services, with the overview at the right: figures, difference, what is
// broken, causes, cautions and the services left out. The clock starts with the key's event and stops when a frame with
// all of it is drawn. Beside it the engine's own time, as the worker takes it, and the tool on the same head-end right
// after, its start included.

import { spawnSync } from "node:child_process";
import { mkdtempSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { openBrowser } from "./browser.js";
import { edit, examples, made, native, openFiles, press, recalculo, settled, visit } from "./planner_page.js";

const changes = 12;
const file = process.argv[2];
const list = process.env.LINEUP && join(process.env.LINEUP, "channels.conf");
const folder = mkdtempSync(join(tmpdir(), "recalculo-figures-"));

/// As satellites have it: streams of six to ten services, a third of them HD, half of them scrambled.
const generated = (number, modules) => {
    let seed = 1;
    const below = (most) => {
        seed = (Math.imul(seed, 1664525) + 1013904223) >>> 0;
        return Math.floor((seed / 2 ** 32) * most);
    };
    const services = [];
    for (let tsid = 1; services.length < number; ++tsid)
        for (let left = 6 + below(5); left > 0 && services.length < number; --left) {
            const sid = services.length + 1;
            const isHD = below(3) === 0;
            services.push({ lcn: sid, name: `Channel ${sid}`, onid: 1, tsid, sid, bitrate: isHD ? 6000 + below(5000) : 2000 + below(3000),
                ...(isHD ? { video_format: 4 } : {}), ...(below(2) === 0 ? { descramble: true, ca_pids: 3 } : {}) });
        }
    return { name: `${number} services`, services, modules: Array.from({ length: modules }, (one, at) => ({ mac: `02:00:00:00:${String(at >> 8).padStart(2, "0")}:${(at & 255).toString(16).toUpperCase().padStart(2, "0")}`,
        controller: at === 0, inputs: 4, outputs: [38000, 38000, 38000, 38000], pids_max: 40 })) };
};

const median = (numbers) => {
    const sorted = [...numbers].sort((one, other) => one - other);
    return (sorted[(sorted.length - 1) >> 1] + sorted[sorted.length >> 1]) / 2;
};

/// Marks, in the page, when a key is pressed and when what follows of it has been drawn.
const watch = () => {
    const told = { times: [] };
    globalThis.figures = told;
    addEventListener("keydown", (event) => { told.pressed = event.timeStamp; }, true);
    const { port1, port2 } = new MessageChannel();
    port1.onmessage = () => told.times.push(performance.now() - told.pressed);
    new MutationObserver(() => requestAnimationFrame(() => port2.postMessage(0))).observe(document.documentElement, { attributeFilter: ["data-drawn"] });
};

const figuresOf = async (page, headend) => {
    await openFiles(page, headend);
    await edit(page, "Services");
    await press(page, "ArrowRight", "ArrowRight", "ArrowRight");
    // What follows the first changes is translated anew by the browser.
    for (let time = 0; time < 4; ++time) await settled(page, () => press(page, "Space", "ArrowDown"));
    await page.evaluate(watch);
    const engine = [];
    for (let time = 0; time < changes; ++time) {
        await settled(page, () => press(page, "Space"));
        await page.waitForFunction((number) => globalThis.figures.times.length >= number, time + 1);
        engine.push(Number(/(\d+) ms/.exec(await page.locator("#status").textContent())[1]));
        await press(page, "ArrowDown");
        await page.waitForTimeout(100);
    }
    const { times } = await page.evaluate(() => globalThis.figures);
    return { times, engine };
};

const toolTimes = (headend) => {
    const saved = join(folder, "headend.json");
    writeFileSync(saved, headend.buffer);
    return Array.from({ length: 5 }, () => {
        const begin = performance.now();
        spawnSync(recalculo, ["run", saved, "--json", "--trials", "0"], { stdio: "ignore" });
        return performance.now() - begin;
    });
};

const lineUp = () => {
    const out = join(folder, "line-up.json");
    native("import", list, "--modules", join(examples, "modules-8-tight.json"), "-o", out);
    return JSON.parse(readFileSync(out, "utf8"));
};

const browser = await openBrowser();
console.log("| services | modules | engine in the page | key to result | quickest | `recalculo run --json` |\n|---:|---:|---:|---:|---:|---:|");
for (const headend of [...(list ? [lineUp()] : []), generated(1234, 48), generated(4400, 160), generated(10000, 400)])
    await visit(browser, async (page) => {
        const opened = made("figures.json", headend);
        const { times, engine } = await figuresOf(page, opened);
        const milliseconds = (number) => `${Math.round(number)} ms`;
        console.log(`| ${headend.services.length.toLocaleString("en")} | ${headend.modules.length} | ${[median(engine), median(times), Math.min(...times), median(toolTimes(opened))].map(milliseconds).join(" | ")} |`);
    }, { file });
await browser.close();
rmSync(folder, { recursive: true });
