// The sections beside the view.

import { countText, element, numberText } from "./dom.js";

/** A section that opens and shuts. @param count stands behind the title; undefined for none */
export function section(title, count, ...content) {
    return element("details", { open: true },
        element("summary", {}, title, count === undefined ? "" : element("span", { class: "count" }, numberText(count))),
        element("div", { class: "inside" }, ...content));
}

/** A part of a section, made when it is first opened: there may be thousands. */
export function part(title, make) {
    const inside = element("div", { class: "inside" });
    const made = element("details", {}, element("summary", {}, title), inside);
    made.addEventListener("toggle", () => {
        if (made.open && inside.childElementCount === 0)
            inside.append(...make());
    });
    return made;
}

/** Names and values side by side. @param pairs those without a value are left out */
export function valueList(pairs) {
    return element("dl", {}, ...pairs.filter(([, value]) => value !== undefined && value !== "")
        .flatMap(([name, value]) => [element("dt", {}, name), element("dd", {}, String(value))]));
}

const listedAtMost = 200;

/** Lines one below the other; of very many the first. */
export function textList(lines) {
    const shown = lines.slice(0, listedAtMost).map((line) => element("li", {}, line));
    if (lines.length > listedAtMost)
        shown.push(element("li", {}, `and ${numberText(lines.length - listedAtMost)} more`));
    return element("ul", {}, ...shown);
}

/** A choice with a label. @param choices pairs of value and text */
export function choice(label, choices, value, take) {
    const made = element("select", { "aria-label": label, change: () => take(made.value) },
        ...choices.map(([each, text]) => element("option", { value: each, selected: String(each) === String(value) }, text)));
    return made;
}

/** A number to be moved. @param range {least, most, step, value} @return an element with a method setValue */
export function slider(label, unit, range, take) {
    const shown = element("span", { class: "value", "aria-hidden": "true" });
    const input = element("input", { type: "range", min: range.least, max: range.most, step: "any", "aria-label": label });
    const say = () => {
        shown.textContent = `${numberText(Number(input.value))}${unit}`;
        input.setAttribute("aria-valuetext", shown.textContent);
    };
    input.addEventListener("input", () => {
        say();
        take(Number(input.value));
    });
    input.addEventListener("keydown", (event) => {
        const way = { ArrowLeft: -1, ArrowDown: -1, ArrowRight: 1, ArrowUp: 1 }[event.key];
        if (way === undefined)
            return;
        event.preventDefault();
        input.value = Number(input.value) + way * range.step;
        input.dispatchEvent(new Event("input"));
    });
    const made = element("div", { class: "field" }, element("span", {}, label, shown), input);
    made.setValue = (value) => {
        input.value = value;
        say();
    };
    made.setValue(range.value);
    return made;
}

/** What the line below the title says of a model. */
export function summaryOf(figures) {
    return [countText(figures.triangles, "triangle"), countText(figures.nodes, "node"),
        countText(figures.materials, "material"), countText(figures.pictures, "picture")].join(" · ");
}

/** The section of figures. */
export function figureSection(figures, description) {
    return section("Figures", undefined, valueList([
        ["Triangles", numberText(figures.triangles)], ["Vertices stored", numberText(figures.vertices)],
        ["Nodes", numberText(figures.nodes)], ["Meshes", numberText(figures.meshes)],
        ["Places of meshes", numberText(figures.places)], ["Materials", numberText(figures.materials)],
        ["Pictures", numberText(figures.pictures)], ["Made by", description.asset?.generator],
    ]));
}
