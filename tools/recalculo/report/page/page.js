// Search and sorting. The page is whole without them, so what belongs to them is shown or made here.
"use strict";
(() => {
    const folded = (text) => text.normalize("NFD").replace(/\p{M}/gu, "").toLowerCase();
    const grouped = (number) => number.toLocaleString("en");

    // Sorting

    const value = (row, column) => {
        const text = row.cells[column].textContent.trim();
        const number = Number.parseFloat(text.replaceAll(",", ""));
        return { text, number: Number.isNaN(number) ? -1 : number };
    };

    const sort = (header) => {
        const table = header.closest("table");
        const column = header.cellIndex;
        const numeric = header.classList.contains("number");
        // Z comes before AA.
        const shortFirst = header.classList.contains("code");
        const sign = header.getAttribute("aria-sort") === "ascending" ? -1 : 1;
        for (const other of table.tHead.rows[0].cells)
            other.removeAttribute("aria-sort");
        header.setAttribute("aria-sort", sign > 0 ? "ascending" : "descending");
        for (const body of table.tBodies) {
            const rows = [...body.rows].filter((row) => !row.classList.contains("group"));
            const keyed = rows.map((row) => ({ row, key: value(row, column) }));
            keyed.sort(({ key: a }, { key: b }) =>
                sign * ((numeric && a.number - b.number) || (shortFirst && a.text.length - b.text.length) ||
                    a.text.localeCompare(b.text, "en", { numeric: true })));
            body.append(...keyed.map(({ row }) => row));
        }
    };

    for (const header of document.querySelectorAll("table.sortable thead th:not(.unsorted)")) {
        const button = document.createElement("button");
        button.type = "button";
        button.append(...header.childNodes);
        button.addEventListener("click", () => sort(header));
        header.append(button);
    }

    // Search

    const form = document.querySelector("form.search");
    const query = document.getElementById("query");
    const found = document.getElementById("found");
    form.hidden = false;

    /// Everything that can be hidden: rows in bodies in boxes, a box being a module or a section. Stream and MACs are
    /// those of the row, or of what it stands in.
    let boxes;
    const index = () => {
        const row_of = (element) => ({
            element,
            lcn: element.cells[0].textContent,
            names: folded([...element.querySelectorAll("bdi")].map((name) => name.textContent).join("\n")),
            stream: element.closest("[data-stream]")?.dataset.stream ?? "",
            mac: folded(element.closest("[data-mac]")?.dataset.mac ?? ""),
        });
        boxes = [...document.querySelectorAll(".searched")].map((box) => ({
            element: box,
            found: box.dataset.found,
            bodies: [...box.querySelectorAll("tbody")].map((body) => ({
                element: body,
                rows: [...body.rows].filter((row) => !row.classList.contains("group")).map(row_of),
            })),
        }));
    };

    /// A number is an LCN or part of a name; anything else may also be a stream or part of a MAC.
    const matches = (row, word) =>
        row.lcn === word || row.names.includes(word) || (word.includes("/") && row.stream.startsWith(word)) ||
        (!/^\d+$/.test(word) && row.mac.includes(word));

    /// What matches, by what the boxes call it: how many rows, in how many boxes.
    const summary = (matching, total) => {
        const sum = [...matching.values()].reduce((all, { rows }) => all + rows, 0);
        const where = [...matching].map(([name, { rows, boxes: number }]) => name === "module"
            ? `${grouped(rows)} on ${grouped(number)} ${number === 1 ? "module" : "modules"}`
            : `${grouped(rows)} ${name}`);
        return `${grouped(sum)} of ${grouped(total)} ${sum === 1 ? "matches" : "match"}` +
            (sum > 0 ? `: ${where.join(", ")}` : "");
    };

    const filter = () => {
        if (!boxes)
            index();
        const words = folded(query.value).split(/\s+/).filter(Boolean);
        const matching = new Map();
        let total = 0;
        for (const box of boxes) {
            let inBox = 0;
            for (const body of box.bodies) {
                let inBody = 0;
                for (const row of body.rows) {
                    const isMatch = words.every((word) => matches(row, word));
                    row.element.hidden = !isMatch;
                    inBody += isMatch;
                }
                body.element.hidden = words.length > 0 && inBody === 0;
                inBox += inBody;
                total += body.rows.length;
            }
            box.element.hidden = words.length > 0 && inBox === 0;
            if (inBox > 0) {
                const sum = matching.get(box.found) ?? { rows: 0, boxes: 0 };
                matching.set(box.found, { rows: sum.rows + inBox, boxes: sum.boxes + 1 });
            }
        }
        document.body.classList.toggle("searching", words.length > 0);
        found.textContent = words.length === 0 ? "" : summary(matching, total);
    };

    let waiting;
    query.addEventListener("input", () => {
        clearTimeout(waiting);
        waiting = setTimeout(filter, 120);
    });
    query.addEventListener("keydown", (event) => {
        if (event.key !== "Escape")
            return;
        clearTimeout(waiting);
        query.value = "";
        filter();
    });
    form.addEventListener("submit", (event) => event.preventDefault());
    // Going back in the browser may bring the old query with it.
    if (query.value)
        filter();
})();
