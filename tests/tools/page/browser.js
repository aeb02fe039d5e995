// The browser that the tests and the picture share: Debian's, headless, with everything off that would reach out.

import { chromium } from "playwright-core";

export const openBrowser = () => chromium.launch({
    executablePath: "/usr/bin/chromium",
    args: ["--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run", "--disable-background-networking",
        "--disable-component-update", "--disable-sync"],
});
