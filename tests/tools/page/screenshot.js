// node screenshot.js PAGE.html PICTURE.png: the top of a page, for the README.

import { pathToFileURL } from "node:url";
import { openBrowser } from "./browser.js";

const [page, picture] = process.argv.slice(2);
const browser = await openBrowser();
const tab = await browser.newPage({ viewport: { width: 1180, height: 1360 }, colorScheme: "light" });
await tab.goto(pathToFileURL(page).href);
await tab.screenshot({ path: picture });
await browser.close();
