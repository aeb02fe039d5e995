// Elements in one call. Texts are set as texts, never as markup: names of services may hold any.

const svgNamespace = "http://www.w3.org/2000/svg";

const there = (children) => children.flat(2).filter((child) => child !== undefined && child !== null && child !== false && child !== "");

const fill = (element, properties, children) => {
    for (const [name, value] of Object.entries(properties)) {
        if (value === undefined || value === null || value === false) continue;
        if (name.startsWith("on")) element.addEventListener(name.slice(2), value);
        else if (name === "style") Object.assign(element.style, value);
        else if (name === "data") Object.assign(element.dataset, value);
        else element.setAttribute(name, value === true ? "" : value);
    }
    element.append(...there(children));
    return element;
};

/// An HTML element: properties are attributes, `on...` listeners, `style` and `data` objects.
export const h = (tag, properties = {}, ...children) => fill(document.createElement(tag), properties, children);

/// An SVG element.
export const svg = (tag, properties = {}, ...children) =>
    fill(document.createElementNS(svgNamespace, tag), properties, children);

/// Gives an element other children.
export const put = (element, ...children) => element.replaceChildren(...there(children));

const made = new WeakMap();

/// Gives an element children, each as [what it shows, as a text, and how it is made]. Those that show the same as before
/// are not made anew, nor is where they stand touched: the browser then has little to lay out and to paint.
export const renew = (element, children) => {
    const before = made.get(element) ?? new Map();
    const now = new Map();
    const shown = children.filter(Boolean).map(([text, make]) => {
        const child = before.get(text)?.shift() ?? make();
        if (now.has(text)) now.get(text).push(child);
        else now.set(text, [child]);
        return child;
    });
    for (const gone of [...before.values()].flat()) gone.remove();
    let next = element.firstChild;
    for (const child of shown)
        if (child === next) next = next.nextSibling;
        else element.insertBefore(child, next);
    made.set(element, now);
};

/// A name from outside: it keeps its direction of writing to itself.
export const name = (text) => h("bdi", {}, text);

/// A button that does something.
export const button = (text, onclick, properties = {}) => h("button", { type: "button", onclick, ...properties }, text);

/// Says whether what stands in a field is wrong. An attribute without a value would mean that it is not.
export const markWrong = (field, isWrong) => {
    if (isWrong) field.setAttribute("aria-invalid", "true");
    else field.removeAttribute("aria-invalid");
};

/// A number with its thousands apart.
export const grouped = (number) => number.toLocaleString("en");

/// "1 service", "2 services".
export const counted = (number, thing) => `${grouped(number)} ${thing}${number === 1 ? "" : "s"}`;

/// Without marks and case, for searching.
export const folded = (text) => text.normalize("NFD").replace(/\p{M}/gu, "").toLowerCase();
