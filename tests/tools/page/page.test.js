// Pages of `recalculo run --html` and `recalculo compare --html` in a browser, as people use them: with and without scripts, in light and dark, by
// keyboard, on paper, on a phone. RECALCULO is the program; LINEUP, if set, a folder with a channels.conf.

import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { mkdtempSync, rmSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { join, resolve } from "node:path";
import { pathToFileURL } from "node:url";
import { after, before, describe, test } from "node:test";
import axe from "axe-core";
import { openBrowser } from "./browser.js";

const root = resolve(import.meta.dirname, "../../..");
const recalculo = resolve(process.env.RECALCULO ?? join(root, "build/gcc/tools/recalculo/recalculo"));
const examples = join(root, "examples");
const folder = mkdtempSync(join(tmpdir(), "recalculo-page-"));
const wide = { width: 1280, height: 900 };

const run = (...parameters) => execFileSync(recalculo, parameters, { encoding: "utf8", maxBuffer: 2 ** 28 });

/// What could leave the text it stands in, if something let it.
const hostileNames = [
    "<script>alert(1)</script>",
    "</title></style></script><img src=x onerror=alert(1)>",
    "\"&' onmouseover=alert(1) x='",
    "&lt;b&gt; is no tag",
    "{{code}} {{{style}}} {{>swatch}}",
    "back\u202Ewards",
    "\u0007bell\u001B[31m",
    "NameWithoutAnyPlaceToBreakItAtThatGoesOnAndOnAndOnForMoreThanAPhoneIsWide",
    "",
];

const hostileHeadend = () => {
    const services = hostileNames.map((name, index) => ({
        lcn: index + 1, name, output_name: hostileNames[(index + 1) % hostileNames.length],
        onid: 1, tsid: index % 2 ? 1 : 65535, sid: index + 1, bitrate: index % 2 ? 4294967295 : 3000,
    }));
    const file = join(folder, "hostile-head-end.json");
    writeFileSync(file, JSON.stringify({
        name: hostileNames[1],
        modules: [
            { mac: "<b onclick='alert(1)'>&\"", controller: true, inputs: 3, outputs: [38000, 0], pids_max: 1 },
            { mac: "plain", inputs: 0, outputs: [], pids_max: 0 },
        ],
        services,
    }));
    return file;
};

const sources = { small: join(examples, "small.json"), medium: join(examples, "medium.json"), hostile: hostileHeadend() };
if (process.env.LINEUP) {
    sources.lineup = join(folder, "lineup.json");
    run("import", join(process.env.LINEUP, "channels.conf"), "--modules", join(examples, "modules-8-tight.json"),
        "-o", sources.lineup);
}
const pages = Object.entries(sources).map(([name, source]) => {
    const file = join(folder, `${name}.html`);
    return { name, url: pathToFileURL(file).href, result: JSON.parse(run("run", source, "--json", "--html", file)) };
});
const urlOf = (name) => pages.find((page) => page.name === name).url;

const compared = (name, before, after) => {
    const file = join(folder, `${name}.html`);
    const comparison = JSON.parse(run("compare", before, after, "--json", "--html", file));
    return { name, url: pathToFileURL(file).href, comparison };
};
/// The second side has changes, as --set takes them.
const comparedWith = (name, source, ...changes) => {
    const file = join(folder, `${name}-after.json`);
    writeFileSync(file, run("run", source, "--json", ...changes.flatMap((change) => ["--set", change])));
    return compared(name, source, file);
};
const comparisons = [
    comparedWith("small with more inputs", sources.small, "modules[2].inputs=2"),
    comparedWith("medium with fewer inputs", sources.medium, "modules[0].inputs=1", "name=Elsewhere"),
    compared("two head-ends", sources.small, sources.medium),
    compared("hostile names", sources.hostile, sources.small),
    compared("the same", sources.small, sources.small),
];
if (sources.lineup) {
    const larger = join(folder, "lineup-16.json");
    run("import", join(process.env.LINEUP, "channels.conf"), "--modules", join(examples, "modules-16.json"), "-o", larger);
    comparisons.push(compared("the line-up on more modules", sources.lineup, larger));
}
const comparisonUrlOf = (name) => comparisons.find((page) => page.name === name).url;

/// Every service that a result lists, wherever it stands.
const servicesOf = (result) => [
    ...result.modules.flatMap((module) => [...module.inputs.flatMap((input) => input.services), ...module.without_input]),
    ...result.left_out.flatMap((stream) => stream.services),
    ...result.clones_waiting,
];
const shown = (name) => name.replace(/[\p{Cc}\u202A-\u202E\u2066-\u2069]/gu, "\uFFFD");

let browser;
before(async () => { browser = await openBrowser(); });
after(async () => {
    await browser.close();
    rmSync(folder, { recursive: true });
});

/// Opens a page, calls `look` and is sure that nothing was complained of and nothing fetched.
const visit = async (url, options, look) => {
    const context = await browser.newContext({ viewport: wide, ...options });
    const page = await context.newPage();
    const complaints = [];
    const requests = [];
    page.on("console", (message) => complaints.push(message.text()));
    page.on("pageerror", (error) => complaints.push(String(error)));
    page.on("dialog", (dialog) => { complaints.push(dialog.message()); return dialog.dismiss(); });
    context.on("request", (request) => requests.push(request.url()));
    await page.goto(url);
    await look(page);
    assert.deepEqual(complaints, []);
    assert.deepEqual(requests.map((request) => request.split("#")[0]), [url]);
    await context.close();
};

/// The names in the rows of services, from the top of the page to its end; the lists for installers have them again.
const namesOn = (page) => page.$$eval("main > :not(#service-lists) tbody tr:not(.group) td:nth-child(2) > bdi",
    (names) => names.map((name) => name.textContent));
const visibleRows = (page) => page.locator(".module tr:not(.group):visible td:nth-child(2) > bdi, " +
    "#left-out tbody tr:not(.group):visible td:nth-child(2) > bdi").allTextContents();

/// What holds for every page.
const looksWell = (url) => {
    for (const colorScheme of ["light", "dark"])
        test(`is accessible in ${colorScheme}`, async () => {
            await visit(url, { colorScheme }, async (page) => {
                // What is off the screen is to be looked at, too.
                await page.$$eval(".module", (modules) => {
                    for (const module of modules)
                        module.style.contentVisibility = "visible";
                });
                await page.evaluate(axe.source);
                const { violations, passes } = await page.evaluate(() => window.axe.run({
                    runOnly: ["wcag2a", "wcag2aa", "wcag21a", "wcag21aa", "wcag22aa", "best-practice"],
                }));
                assert.deepEqual(violations.map(({ id, nodes }) => [id, nodes[0].html, nodes[0].failureSummary]), []);
                for (const rule of ["color-contrast", "heading-order", "page-has-heading-one", "skip-link"])
                    assert.ok(passes.some(({ id }) => id === rule), `${rule} was not looked at`);
            });
        });

    test("does not scroll sideways on a phone", async () => {
        for (const width of [320, 360, 640, 900])
            await visit(url, { viewport: { width, height: 700 } }, async (page) => {
                const widest = await page.evaluate(() => {
                    for (const module of document.querySelectorAll(".module"))
                        module.style.contentVisibility = "visible";
                    // A module cuts off what it cannot hold: look inside, too.
                    const boxes = [...document.querySelectorAll("table, li, p, svg.bar")];
                    return Math.max(document.documentElement.scrollWidth,
                        ...boxes.map((box) => box.getBoundingClientRect().right));
                });
                assert.ok(widest <= width, `${widest} on ${width}`);
            });
    });
};

for (const { name, url, result } of pages) {
    describe(`the page of ${name}`, () => {
        test("has every service, without and with scripts", async () => {
            const expected = servicesOf(result).map((service) => shown(service.name)).sort();
            for (const javaScriptEnabled of [false, true])
                await visit(url, { javaScriptEnabled }, async (page) => {
                    assert.deepEqual((await namesOn(page)).sort(), expected);
                });
        });

        test("begins with the causes, each with links to the services that it keeps out", async () => {
            for (const javaScriptEnabled of [false, true])
                await visit(url, { javaScriptEnabled }, async (page) => {
                    const rows = await page.$$eval("#causes tbody tr", (all) => all.map((row) => ({
                        number: Number(row.cells[0].textContent.replaceAll(",", "")),
                        sentence: row.cells[1].firstChild.textContent,
                        // The LCN of the row that each link leads to, and that of the link.
                        links: [...row.querySelectorAll("a")].map((link) => [link.textContent.split(" ")[0],
                            document.getElementById(link.hash.slice(1))?.cells[0].textContent]),
                    })));
                    assert.deepEqual(rows.map(({ number, sentence }) => [number, sentence]),
                        result.causes.map(({ services, sentence }) => [services, sentence]));
                    for (const { number, links } of rows) {
                        assert.equal(links.length, number);
                        for (const [from, to] of links)
                            assert.equal(from, to);
                    }
                });
        });

        looksWell(url);
    });
}

for (const { name, url, comparison } of comparisons) {
    describe(`the comparison of ${name}`, () => {
        test("has every service that is not where it was, without and with scripts", async () => {
            const expected = [...comparison.gained, ...comparison.lost, ...comparison.added, ...comparison.removed,
                ...comparison.moved]
                .map((service) => shown(service.name));
            for (const javaScriptEnabled of [false, true])
                await visit(url, { javaScriptEnabled }, async (page) => {
                    assert.deepEqual(await page.$$eval(".changes td:nth-child(2) > bdi",
                        (names) => names.map((name) => name.textContent)), expected);
                    assert.equal(await page.locator("form.search").isVisible(), javaScriptEnabled);
                    assert.equal(await page.locator("tbody tr").locator("visible=false").count(), 0);
                });
        });

        test("tells inputs, limits and modules", async () => {
            const lengths = (...lists) => lists.reduce((sum, list) => sum + comparison[list].length, 0);
            const expected = {
                inputs: lengths("inputs_freed", "inputs_taken", "inputs_retuned"),
                limits: lengths("became_tight", "relaxed"),
                modules: lengths("modules_gone", "modules_new"),
            };
            await visit(url, {}, async (page) => {
                for (const [section, rows] of Object.entries(expected))
                    assert.equal(await page.locator(`#${section} tbody tr:not(.group)`).count(), rows, section);
            });
        });

        looksWell(url);
    });
}

describe("a comparison", () => {
    const search = (text, expected, count) => test(`is searched for ${text}`, async () => {
        await visit(comparisonUrlOf("two head-ends"), {}, async (page) => {
            await page.getByRole("searchbox", { name: "Find a service" }).fill(text);
            await page.getByRole("status").filter({ hasText: count }).waitFor({ timeout: 5000 });
            assert.deepEqual(await page.locator(".changes tbody tr:visible td:nth-child(2) > bdi").allTextContents(), expected);
            assert.equal(await page.locator("#sides").isVisible(), false);
            assert.equal(await page.locator("#modules").isVisible(), false);
            await page.getByRole("searchbox").press("Escape");
            assert.equal(await page.locator("#sides").isVisible(), true);
            assert.equal(await page.locator("tbody tr").locator("visible=false").count(), 0);
        });
    });
    search("clasico", ["Gran Cine Clásico", "Cine Clásico"], "2 of 90 match: 1 added, 1 removed");
    search("02:00:00:00:00:02 cine", ["Cine Clásico", "Cine Estrella"], "2 of 90 match: 2 removed");
    search("2/8", ["Radio Mar", "Radio Sierra"], "2 of 90 match: 2 removed");

    test("is sorted by where services were", async () => {
        await visit(comparisonUrlOf("two head-ends"), {}, async (page) => {
            const header = page.locator("#removed").getByRole("columnheader", { name: "Before" });
            await header.getByRole("button").press("Enter");
            await header.getByRole("button").press("Enter");
            assert.equal(await header.getAttribute("aria-sort"), "descending");
            const places = await page.locator("#removed tbody td:nth-child(5)").allTextContents();
            assert.deepEqual(places, [...places].sort().reverse());
        });
    });

    test("has its sections, and links to each", async () => {
        await visit(comparisonUrlOf("two head-ends"), {}, async (page) => {
            const links = await page.$$eval("nav a", (all) => all.map((link) => link.getAttribute("href")));
            const sections = await page.$$eval("main > section", (all) => all.map((section) => `#${section.id}`));
            assert.deepEqual(links, sections);
        });
    });
});

test("the structure says what is what", async () => {
    await visit(urlOf("medium"), {}, async (page) => {
        assert.equal(await page.locator("h1").count(), 1);
        assert.equal(await page.locator("html").getAttribute("lang"), "en");
        const tables = await page.locator("table").count();
        assert.ok(tables > 8);
        assert.equal(await page.locator("table > caption").count(), tables);
        assert.equal(await page.locator("th:not([scope])").count(), 0);
        const bars = await page.locator(".module svg.bar").evaluateAll((all) => all.map((bar) => bar.getAttribute("aria-label")));
        assert.match(bars[0], /^Output 1: 30,548 of 38,000 kbit\/s, stream \w+ [\d,]+/);
    });
});

test("the sections are reached by their links, and not hidden under the search", async () => {
    await visit(urlOf("medium"), {}, async (page) => {
        const links = page.locator("nav a");
        assert.deepEqual(await links.allTextContents(),
            ["Why services are not placed", "At a glance 8", "Modules 8", "Left out 1", "Clones waiting 1", "Streams 14",
                "Service lists of the outputs 12", "Notes 2", "Cautions 2"]);
        for (const link of await links.all()) {
            await link.click();
            const section = new URL(page.url()).hash;
            const isInSight = await page.locator(`${section} h2`).evaluate((title) => {
                const { left, top, bottom } = title.getBoundingClientRect();
                return title.contains(document.elementFromPoint(left + 5, (top + bottom) / 2));
            });
            assert.ok(isInSight, section);
        }
    });
});

test("every stream has a mark of its own, and the marks are those of the legend", async () => {
    await visit(urlOf("medium"), {}, async (page) => {
        const marks = await page.$$eval("#streams tbody .mark", (all) => all.map((mark) => mark.textContent));
        assert.equal(new Set(marks).size, marks.length);
        const looks = await page.$$eval("#streams tbody .swatch", (all) => all.map((swatch) =>
            [...swatch.children].map((rectangle) => getComputedStyle(rectangle).fill).join()));
        assert.equal(new Set(looks).size, looks.length);
        const legend = await page.$$eval(".legend .mark", (all) => all.map((mark) => mark.textContent));
        assert.deepEqual(legend, marks.slice(0, legend.length));
    });
});

test("the policy lets nothing pass but the page's own style and script", async () => {
    const context = await browser.newContext();
    const page = await context.newPage();
    await page.goto(urlOf("small"));
    const outcome = await page.evaluate(async () => {
        const refused = [];
        document.addEventListener("securitypolicyviolation", (event) => refused.push(event.effectiveDirective));
        const script = document.createElement("script");
        script.textContent = "window.intruder = true";
        document.body.append(script);
        const image = document.createElement("img");
        image.src = "data:image/gif;base64,R0lGODlhAQABAAAAACw=";
        document.body.append(image);
        const fetched = await fetch("data:,x").then(() => true, () => false);
        await new Promise((done) => setTimeout(done, 100));
        return { intruder: window.intruder ?? false, fetched, refused: refused.sort() };
    });
    assert.deepEqual(outcome, { intruder: false, fetched: false, refused: ["connect-src", "img-src", "script-src-elem"] });
    await context.close();
});

describe("without scripts", () => {
    test("everything is there but the search and the sorting", async () => {
        await visit(urlOf("small"), { javaScriptEnabled: false }, async (page) => {
            assert.equal(await page.locator("form.search").isVisible(), false);
            assert.equal(await page.locator("button").count(), 0);
            assert.equal(await page.locator(".module").first().isVisible(), true);
            assert.equal(await page.locator("tbody tr").locator("visible=false").count(), 0);
        });
    });
});

describe("the search", () => {
    const search = (text, expected, count) => test(`finds ${text}`, async () => {
        await visit(urlOf("small"), {}, async (page) => {
            await page.getByRole("searchbox", { name: "Find a service" }).fill(text);
            await page.getByRole("status").filter({ hasText: count }).waitFor({ timeout: 5000 });
            assert.deepEqual(await visibleRows(page), expected);
        });
    });
    search("clasico", ["Cine Clásico"], "1 of 13 matches: 1 on 1 module");
    search("CANAL hd", ["Canal Uno HD", "Canal Dos HD"], "2 of 13 match: 2 on 1 module");
    search("bienvenida", ["Canal Uno"], "1 of 13 matches: 1 on 1 module");
    search("1", ["Canal Uno", "Canal Uno"], "2 of 13 match: 2 on 1 module");
    search("24", ["Noticias 24"], "1 of 13 matches: 1 on 1 module");
    search("2/8", ["Radio Mar", "Radio Sierra"], "2 of 13 match: 2 on 1 module");
    search("00:02", ["Cine Estrella", "Cine Clásico", "Noticias 24", "Télévision du Sud"], "4 of 13 match: 4 on 1 module");
    search("canal", ["Canal Uno HD", "Canal Dos HD", "Canal Uno", "Canal Uno", "Canal Dos", "Canal Lejano"],
        "6 of 13 match: 5 on 1 module, 1 not placed");
    search("lejano", ["Canal Lejano"], "1 of 13 matches: 1 not placed");
    search("nothing of the kind", [], "0 of 13 match");

    test("hides the modules without a match and brings all back with Escape", async () => {
        await visit(urlOf("small"), {}, async (page) => {
            const all = await visibleRows(page);
            const box = page.getByRole("searchbox");
            await box.fill("radio");
            await page.getByRole("status").filter({ hasText: "2 of 13" }).waitFor({ timeout: 5000 });
            assert.equal(await page.locator(".module:visible").count(), 1);
            assert.equal(await page.locator("#glance").isVisible(), false);
            await box.press("Escape");
            assert.equal(await box.inputValue(), "");
            assert.equal(await page.getByRole("status").textContent(), "");
            assert.deepEqual(await visibleRows(page), all);
            assert.equal(await page.locator(".module:visible").count(), 3);
            assert.equal(await page.locator("#glance").isVisible(), true);
        });
    });

    test("tells its count to those who do not see it", async () => {
        await visit(urlOf("small"), {}, async (page) => {
            assert.equal(await page.locator("#found").getAttribute("aria-live"), "polite");
        });
    });
});

describe("the keyboard", () => {
    test("sorts a table, up and down", async () => {
        await visit(urlOf("medium"), {}, async (page) => {
            const table = page.locator("#glance table");
            const header = (name) => table.getByRole("columnheader", { name });
            const column = async (number) => table.locator(`tbody tr > :nth-child(${number})`).allTextContents();
            const ascending = (await column(3)).map(Number).sort((a, b) => a - b);

            await header("Services").getByRole("button").focus();
            await page.keyboard.press("Enter");
            assert.equal(await header("Services").getAttribute("aria-sort"), "ascending");
            assert.deepEqual((await column(3)).map(Number), ascending);
            await page.keyboard.press("Space");
            assert.equal(await header("Services").getAttribute("aria-sort"), "descending");
            assert.deepEqual((await column(3)).map(Number), ascending.reverse());

            await header("Module").getByRole("button").press("Enter");
            assert.equal(await header("Services").getAttribute("aria-sort"), null);
            const macs = await column(1);
            assert.deepEqual(macs, [...macs].sort());
        });
    });

    test("sorts the services of each input by themselves", async () => {
        await visit(urlOf("small"), {}, async (page) => {
            const table = page.locator("#module-1 table");
            const button = table.getByRole("columnheader", { name: "kbit/s" }).getByRole("button");
            await button.press("Enter");
            await button.press("Enter");
            const rows = await table.locator("tbody tr > :first-child").allTextContents();
            assert.deepEqual(rows.map((row) => row.replace(/\s+/g, " ").match(/^Input \d|^\d+/)[0]),
                ["Input 1", "13", "11", "12", "Input 2", "1", "2", "1"]);
        });
    });

    test("reaches everything in the order of the page, and shows where it is", async () => {
        await visit(urlOf("small"), {}, async (page) => {
            // What a closed box holds is not to be reached.
            const expected = await page.$$eval("a[href]:not(details:not([open]) a), button, input, summary", (all) => all.map((element, index) => {
                element.dataset.place = index;
                return String(index);
            }));
            assert.ok(expected.length > 30);
            const walk = async (key) => {
                const reached = [];
                for (let step = 0; step < expected.length; ++step) {
                    await page.keyboard.press(key);
                    const { place, outline, isInSight } = await page.evaluate(() => {
                        const element = document.activeElement;
                        const { left, right, top, bottom } = element.getBoundingClientRect();
                        // Neither off the screen nor under the search, which stays at the top.
                        const atItsPlace = document.elementFromPoint((left + right) / 2, (top + bottom) / 2);
                        return {
                            place: element.dataset.place,
                            outline: getComputedStyle(element).outlineStyle,
                            isInSight: element.contains(atItsPlace),
                        };
                    });
                    assert.equal(outline, "solid");
                    assert.ok(isInSight, `place ${place} with ${key}`);
                    reached.push(place);
                }
                return reached;
            };
            assert.deepEqual(await walk("Tab"), expected);
            // Past the end of the page, and back.
            await page.keyboard.press("Tab");
            assert.deepEqual(await walk("Shift+Tab"), expected.reverse());
        });
    });

    test("skips to the plan", async () => {
        await visit(urlOf("small"), {}, async (page) => {
            await page.keyboard.press("Tab");
            await page.keyboard.press("Enter");
            await page.keyboard.press("Tab");
            assert.equal(await page.evaluate(() => document.activeElement.closest("main") !== null), true);
        });
    });
});

test("on paper it keeps its colours, in light, and lets boxes break", async () => {
    await visit(urlOf("medium"), { colorScheme: "dark" }, async (page) => {
        await page.emulateMedia({ media: "print", colorScheme: "dark" });
        assert.equal(await page.locator("form.search").isVisible(), false);
        assert.equal(await page.locator("nav").isVisible(), false);
        const look = await page.locator(".module").first().evaluate((module) => {
            const style = getComputedStyle(module);
            const bar = getComputedStyle(module.querySelector(".bar rect"));
            return [style.breakInside, style.contentVisibility, style.backgroundColor, bar.printColorAdjust,
                getComputedStyle(document.documentElement).colorScheme];
        });
        assert.deepEqual(look, ["auto", "visible", "rgb(255, 255, 255)", "exact", "light"]);
        assert.ok((await page.pdf({ preferCSSPageSize: true })).length > 20000);
    });
});

/// A head-end of which one module takes more than a sheet, and so do the services left out.
const longHeadend = () => {
    const file = join(folder, "long.json");
    const services = Array.from({ length: 300 }, (_, index) => ({
        lcn: index + 1, name: `Canal ${index + 1}`, onid: 1, tsid: index < 150 ? 1 : 2, sid: index + 1, bitrate: 100,
    }));
    writeFileSync(file, JSON.stringify({
        modules: [{ mac: "02:00:00:00:00:01", controller: true, inputs: 1, outputs: [38000, 38000], pids_max: 0 }], services,
    }));
    const page = join(folder, "long.html");
    run("run", file, "--html", page);
    return pathToFileURL(page).href;
};

const sheetsOf = (pdf) => pdf.toString("latin1").match(/\/Type \/Page\b(?!s)/g).length;

test("on paper the summary has a sheet of its own, and the heads of tables keep their captions", async () => {
    for (const url of [urlOf("medium"), comparisonUrlOf("two head-ends")])
        await visit(url, {}, async (page) => {
            await page.emulateMedia({ media: "print" });
            const first = await page.$$eval("main > section", (sections) =>
                sections.findIndex((section) => getComputedStyle(section).breakBefore === "page"));
            assert.ok(first > 0);
        });
    await visit(longHeadend(), {}, async (page) => {
        assert.ok(await page.locator("thead button").count() > 5);
        await page.emulateMedia({ media: "print" });
        // As text and no button, which is not painted again on the next sheet.
        assert.deepEqual(await page.$$eval("thead button", (all) =>
            [...new Set(all.map((button) => getComputedStyle(button).display))]), ["contents"]);
        // The long box begins where the heading of the modules stands, not on the next sheet.
        const options = { format: "A4", preferCSSPageSize: true };
        const sheets = sheetsOf(await page.pdf(options));
        const kept = await page.evaluate(() => {
            const style = new CSSStyleSheet();
            style.replaceSync("@media print { .module { break-before: page } }");
            document.adoptedStyleSheets = [style];
        }).then(() => page.pdf(options));
        assert.ok(sheetsOf(kept) > sheets, `${sheetsOf(kept)} and ${sheets} sheets`);
    });
});

test("on a phone the bars stay, each under its figures", async () => {
    for (const name of ["medium", "hostile"])
        await visit(urlOf(name), { viewport: { width: 320, height: 700 } }, async (page) => {
            const rows = await page.$$eval("#glance tbody tr", (all) => all.map((row) => {
                const bars = [...row.querySelectorAll("svg.bar")].map((bar) => bar.getBoundingClientRect());
                const texts = [...row.children].filter((cell) => !cell.classList.contains("wide")).map((cell) => {
                    const range = document.createRange();
                    range.selectNodeContents(cell);
                    return range.getBoundingClientRect().bottom;
                });
                const { left, right, top, bottom } = row.getBoundingClientRect();
                return {
                    bars: bars.length,
                    width: bars.reduce((sum, bar) => sum + bar.width, 0),
                    within: bars.every((bar) => bar.left >= left && bar.right <= right + 0.5 && bar.top >= top &&
                        bar.bottom <= bottom + 0.5 && bar.height > 5),
                    under: bars.every((bar) => bar.top >= Math.max(...texts) - 0.5),
                };
            }));
            assert.ok(rows.some((row) => row.bars > 0));
            for (const row of rows.filter((one) => one.bars > 0)) {
                assert.ok(row.width > 150, JSON.stringify(row));
                assert.ok(row.within && row.under, JSON.stringify(row));
            }
        });
});
