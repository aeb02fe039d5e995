// node planner_screenshot.js PAGE.html HEADEND.json PICTURE.png: the planner at work, for the documents.

import { openBrowser } from "./browser.js";
import { edit, grid, openFiles, press, see, settled, visit } from "./planner_page.js";

const [file, headend, picture] = process.argv.slice(2);
const browser = await openBrowser();
await visit(browser, async (page) => {
    await openFiles(page, headend);
    await settled(page, () => page.getByRole("button", { name: "New variant" }).click());
    await edit(page, "Modules");
    await press(page, "ArrowRight", "ArrowRight", "ArrowRight", "ArrowRight");
    await settled(page, () => press(page, "4", "Enter"));
    await edit(page, "Services");
    await grid(page, "Services").getByText("left out").first().waitFor();
    await see(page, "Modules");
    await page.locator("details.module summary").nth(1).click();
    await page.screenshot({ path: picture });
}, { file, options: { viewport: { width: 1280, height: 800 }, colorScheme: "light" } });
await browser.close();
