// node build.mjs ENGINE.js ENGINE.wasm SCRIPT.js PAGE.html: puts the page into one file. The engine is packed, the
// script and the style are named by their hashes in the page's security policy.

import { execFileSync } from "node:child_process";
import { createHash } from "node:crypto";
import { readFileSync, writeFileSync } from "node:fs";
import { dirname, join } from "node:path";
import { fileURLToPath } from "node:url";

const here = dirname(fileURLToPath(import.meta.url));
const root = join(here, "..");
const [glueFile, wasmFile, scriptFile, pageFile] = process.argv.slice(2);
const read = (...path) => readFileSync(join(...path), "utf8");

/// Text within <script> ends at nothing but its own end.
const inScript = (text) => text.replaceAll(/<(?=\/script|!--|script)/gi, "\\x3C");
const inData = (text) => JSON.stringify(JSON.parse(text)).replaceAll("<", "\\u003C");
/// The same in fewer characters.
const minified = (text, loader) => execFileSync("esbuild", ["--minify", "--charset=utf8", "--target=es2022", `--loader=${loader}`], { input: text, encoding: "utf8" });
const hash = (text) => `sha256-${createHash("sha256").update(text).digest("base64")}`;

const version = /^#define RECALCULO_VERSION "([^"]+)"/m.exec(read(root, "include/tRec_Version.h"))?.[1] ??
    ["MAJOR", "MINOR", "PATCH"].map((part) => new RegExp(`RECALCULO_VERSION_${part} (\\d+)`).exec(read(root, "include/tRec_Version.h"))[1]).join(".");

/// Of the sources as they are; in a tarball, of the release.
const built = () => {
    try {
        return execFileSync("git", ["describe", "--always", "--dirty", "--abbrev=9"], { cwd: root, encoding: "utf8", stdio: ["ignore", "pipe", "ignore"] }).trim();
    } catch {
        return `${version} as released`;
    }
};

const escaped = (text) => text.replaceAll("&", "&amp;").replaceAll("<", "&lt;");
const script = inScript(readFileSync(scriptFile, "utf8"));
// The palette is that of the tool's own pages.
const style = minified(read(root, "tools/recalculo/report/page/palette.css") + read(here, "page/style.css"), "css");
const parts = {
    version, style, script, built: built(), "script-hash": hash(script), "style-hash": hash(style),
    schema: inData(read(root, "docs/headend.schema.json")), "sample-small": inData(read(root, "examples/small.json")),
    "sample-medium": inData(read(root, "examples/medium.json")), "sample-modules": inData(read(root, "examples/modules-16.json")),
    worker: inScript(minified(`${readFileSync(glueFile, "utf8")}\n${read(here, "page/worker.js")}`, "js")),
    // A quarter smaller than with gzip; page/unpack.js reads it.
    engine: execFileSync("xz", ["--format=lzma", "-9e", "--stdout", wasmFile], { maxBuffer: 2 ** 28 }).toString("base64"), "engine-size": readFileSync(wasmFile).length, licences: escaped(read(here, "licences.txt")),
};
const page = read(here, "page/index.html").replaceAll(/@([a-z-]+)@/g, (whole, key) => {
    if (!(key in parts)) throw new Error(`index.html asks for ${whole}`);
    return parts[key];
});
const most = 1_000_000;
if (page.length > most) throw new Error(`the page has ${page.length} bytes, and at most ${most} are wanted`);
writeFileSync(pageFile, page);
