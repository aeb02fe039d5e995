// Asking for more than a placement, and taking over what the answers propose. PAGE is the page, RECALCULO the program.

import assert from "node:assert/strict";
import { join } from "node:path";
import { describe } from "node:test";
import { activeCell, downloaded, edit, examples, grid, made, medium, native, openFiles, placed, press, see, settled, setUp, small } from "./planner_page.js";

const { at } = setUp();

describe("Ask", () => {
    at("an explanation that is open lets one type on while it follows the changes", async (page) => {
        await openFiles(page, small);
        await edit(page, "Services");
        await press(page, "ArrowRight", "ArrowRight", "Enter");
        await page.locator(".explanation pre").waitFor();
        await edit(page, "Modules");
        await press(page, "ArrowRight", "ArrowRight", "ArrowRight", "ArrowRight");
        await settled(page, async () => { await press(page, "4", "Enter", "7"); });
        await page.waitForTimeout(300);
        await settled(page, () => press(page, "8", "Enter"));
        const { text } = await downloaded(page, () => press(page, "Control+s"));
        assert.deepEqual(JSON.parse(text).modules.slice(0, 2).map(({ inputs }) => inputs), [4, 78]);
    });

    at("an explanation that the engine refuses says so in its box, which closes when the service is gone", async (page) => {
        await openFiles(page, medium);
        await openFiles(page, small);
        await edit(page, "Services");
        await press(page, "ArrowRight", "ArrowRight", "Enter");
        const box = page.locator(".explanation");
        await box.locator("pre").waitFor();
        await edit(page, "Modules");
        await press(page, "ArrowRight", "ArrowRight", "ArrowRight", "Space");
        await page.getByRole("alert").getByText(/no module is the controller/).waitFor();
        await edit(page, "Services");
        await press(page, "ArrowDown", "Enter");
        await box.getByText(/no module is the controller/).waitFor();
        assert.equal(await box.locator("pre").count(), 0);
        await settled(page, () => press(page, "Control+z"));
        await box.locator("pre").waitFor();
        await edit(page, "Services");
        await press(page, "Control+z");
        await box.waitFor({ state: "hidden" });
        assert.equal(await page.locator("#messages").isVisible(), false);
        assert.equal(await page.evaluate(() => document.activeElement.getAttribute("aria-label")), "Services");
    });

    at("an explanation leads to the table where there is one", async (page) => {
        const leads = async () => {
            await page.locator(".left-out .link").first().click();
            await page.locator(".explanation").getByRole("button", { name: "Close" }).waitFor();
            return page.locator(".explanation").getByRole("button", { name: "In the table" }).isVisible();
        };
        await openFiles(page, small);
        assert.equal(await leads(), true);
        await page.getByRole("button", { name: "In the table" }).click();
        const name = await page.locator(".explanation h2").textContent();
        await grid(page, "Services").locator("[role=row]:has(.active)", { hasText: name }).waitFor();
        await press(page, "ArrowRight");
        assert.equal(await activeCell(page, "Services"), name);
        await openFiles(page, made("small.result.json", native("run", small, "--json", "--trials", "0")));
        assert.equal(await leads(), false);
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

    at("an answer is taken over into the plan that it is of, and into no other", async (page) => {
        await openFiles(page, small);
        await see(page, "Ask");
        await page.getByRole("button", { name: "Size" }).click();
        const take = page.getByRole("button", { name: "Take over" }).first();
        await take.waitFor();
        const isTold = () => page.getByText("The plan has changed since this was asked.").isVisible();
        assert.deepEqual([await take.isEnabled(), await isTold()], [true, false]);
        await edit(page, "Services");
        await press(page, "ArrowRight");
        await settled(page, async () => { await page.keyboard.type("Renamed"); await press(page, "Enter"); });
        assert.deepEqual([await take.isEnabled(), await isTold()], [false, true]);
        await settled(page, () => press(page, "Control+z"));
        assert.deepEqual([await take.isEnabled(), await isTold()], [true, false]);
        await settled(page, () => press(page, "Control+Shift+z"));
        await page.getByRole("button", { name: "Ask again" }).click();
        await page.locator("button:enabled", { hasText: "Take over" }).first().waitFor();
        assert.equal(await isTold(), false);
        await settled(page, () => take.click());
        assert.equal(await placed(page), "12 of 12");
        await grid(page, "Services").getByText("Renamed").waitFor();
        await settled(page, () => press(page, "Control+z"));
        assert.equal(await take.isEnabled(), true);
        await openFiles(page, medium);
        assert.deepEqual([await take.isEnabled(), await isTold()], [false, true]);
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

    at("while a choice is searched the plan is saved and a service explained, and the question asked last can be stopped", async (page) => {
        await openFiles(page, medium);
        await see(page, "Ask");
        const seconds = page.getByRole("spinbutton", { name: "Seconds to search" });
        const stop = page.getByRole("button", { name: "Stop" });
        await seconds.fill("1");
        await page.getByRole("button", { name: "Choose" }).click();
        await seconds.fill("60");
        await page.getByRole("button", { name: "Choose" }).click();
        await downloaded(page, () => press(page, "Control+s"));
        await edit(page, "Services");
        await press(page, "ArrowRight", "ArrowRight", "Enter");
        await page.locator(".explanation pre").waitFor();
        await page.waitForTimeout(1500);
        await stop.click();
        await page.getByText("Stopped.").waitFor();
        assert.equal(await stop.isVisible(), false);
    });

    at("what fails is drilled, with the streams and without", async (page) => {
        await openFiles(page, small);
        await see(page, "Ask");
        await page.getByRole("button", { name: "Drill" }).click();
        await page.locator("#panel-ask pre").getByText(/inputs taken out one by one/).waitFor();
        await page.getByRole("checkbox", { name: "Each stream, too" }).check();
        await page.getByRole("button", { name: "Drill" }).click();
        await page.locator("#panel-ask pre").getByText(/streams taken out one by one/).waitFor();
    });

    at("a choice moves as little as may be from the placement now", async (page) => {
        await openFiles(page, small);
        await see(page, "Ask");
        await page.getByRole("spinbutton", { name: "Seconds to search" }).fill("1");
        await page.getByRole("checkbox", { name: "and move as little as may be" }).check();
        await page.getByRole("button", { name: "Choose" }).click();
        await page.locator("#panel-ask pre").getByText(/the placement now/).waitFor();
    });
});
