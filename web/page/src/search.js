// Searching the names.

import { countText } from "./dom.js";

/**
 * @param items an iterable of all items
 * @return {found: Set, shown: Set} the items whose names hold the text, and those with all that stand above them
 */
export function searchNames(items, text) {
    const wanted = text.toLowerCase();
    const found = new Set();
    const shown = new Set();
    for (const item of items) {
        if (!item.name.toLowerCase().includes(wanted))
            continue;
        found.add(item);
        for (let above = item; above !== null && !shown.has(above); above = above.parent)
            shown.add(above);
    }
    return { found, shown };
}

/** The field to type into: the tree shows what is found, and Enter goes to the first of it. */
export class SearchField {
    constructor(input, status, outline, tree) {
        input.addEventListener("input", () => {
            const text = input.value.trim();
            const result = text === "" ? null : searchNames(outline.items.values(), text);
            status.textContent = result === null ? "" : countText(result.found.size, "name");
            tree.setFilter(result);
        });
        input.addEventListener("keydown", (event) => {
            if (event.key === "Enter" || event.key === "ArrowDown") {
                event.preventDefault();
                tree.chooseFound();
                tree.box.focus();
            }
        });
    }
}
