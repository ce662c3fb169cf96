// Makes elements of the page. Texts of a database become text nodes, never markup.

/**
 * An element with attributes and children.
 * @param attributes functions are listeners, true an attribute without value, false and undefined none
 * @param children elements and texts
 */
export function element(tag, attributes = {}, ...children) {
    const made = document.createElement(tag);
    for (const [name, value] of Object.entries(attributes)) {
        if (typeof value === "function")
            made.addEventListener(name, value);
        else if (value !== false && value !== undefined)
            made.setAttribute(name, value === true ? "" : value);
    }
    made.append(...children);
    return made;
}

/** A number for people: grouped, and no finer than needed. */
export function numberText(value, digits = 2) {
    return value.toLocaleString("en", { maximumFractionDigits: digits });
}

/** A count with its noun: "1 switch", "3 switches". */
export function countText(count, one, many = one + "s") {
    return `${numberText(count)} ${count === 1 ? one : many}`;
}
