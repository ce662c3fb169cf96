// What nodes tell of themselves in `extras`. Whatever stands there is checked: a page is as good as its model.

const listOf = (value) => (Array.isArray(value) ? value : []);

/** What a node is, in a word. */
export function kindOf(node) {
    const { extras = {}, extensions = {} } = node;
    const told = ["switch", "joint", "flipBook", "text", "reference", "turning"].find((word) => extras[word] !== undefined);
    if (told !== undefined)
        return { flipBook: "flip-book", turning: "turning face" }[told] ?? told;
    if (extensions.MSFT_lod !== undefined || extras.levels !== undefined)
        return "levels";
    if (extensions.KHR_lights_punctual !== undefined)
        return "light";
    return node.mesh === undefined ? "group" : "mesh";
}

/** The comments of the database's people, each as one text. */
export const commentsOf = (node) => listOf(node.extras?.comments).map((lines) => listOf(lines).join("\n"));

/** Where a node comes from. @return undefined if no record made it */
export function recordOf(node) {
    const offset = node.extras?.record?.offset;
    return offset === undefined ? undefined : `byte ${offset}`;
}

/** The numbers of the nodes that a node chooses from, by the numbers of its children. */
function choicesOf(node, nodes) {
    let inner = node;
    const isChoice = (number) => nodes[number]?.extras?.child !== undefined;
    while (inner?.children?.length === 1 && !isChoice(inner.children[0]))
        inner = nodes[inner.children[0]];
    return new Map(listOf(inner?.children).filter(isChoice).map((number) => [nodes[number].extras.child, number]));
}

/** @return {name, current, masks: [{name, children}], choices: nodes by the numbers of children}, or null */
export function switchOf(node, nodes) {
    const told = node.extras?.switch;
    const masks = listOf(told?.masks);
    if (masks.length === 0)
        return null;
    const nameOf = (mask) => told.maskNames?.[mask] || `Mask ${mask}`;
    return { name: node.name || "switch", current: told.current ?? 0, choices: choicesOf(node, nodes),
        masks: masks.map((children, mask) => ({ name: nameOf(mask), children: listOf(children) })) };
}

// The ranges of a joint: where they are told, and what they are called here.
const ranges = [
    { path: ["yaw"], name: "yaw", label: "Yaw", unit: "degrees" },
    { path: ["pitch"], name: "pitch", label: "Pitch", unit: "degrees" },
    { path: ["roll"], name: "roll", label: "Roll", unit: "degrees" },
    ...["x", "y", "z"].map((axis) => ({ path: ["translation", axis], name: axis, label: `Move along ${axis}`, unit: "metres" })),
    ...["x", "y", "z"].map((axis) =>
        ({ path: ["scale", axis], name: `scale${axis.toUpperCase()}`, label: `Scale along ${axis}`, unit: "times" })),
];

/** @return {node, name, ranges: [{name, label, unit, minimum, maximum, current, step, isLimited}]}, or null */
export function jointOf(node, number) {
    const told = node.extras?.joint;
    if (told === undefined)
        return null;
    return { node: number, name: node.name || "joint", ranges: ranges.map(({ path, ...range }) => {
        const values = path.reduce((at, word) => at?.[word], told) ?? {};
        const value = (word) => (Number.isFinite(values[word]) ? values[word] : 0);
        const current = range.unit === "times" ? value("current") || 1 : value("current");
        return { ...range, minimum: value("minimum"), maximum: value("maximum"), current, step: Math.abs(value("step")),
            isLimited: values.isLimited === true };
    }) };
}

/** @return {isAboutPoint}, or null */
export function turningOf(node) {
    const told = node.extras?.turning;
    return told === undefined ? null : { isAboutPoint: told === "point" };
}

/** @return {name, frames: nodes by the numbers of frames, steps: [{frame, seconds}], loops}, or null */
export function flipBookOf(node, nodes) {
    const told = node.extras?.flipBook;
    const steps = listOf(told?.frames).map((frame, step) => ({ frame, seconds: Number(told.seconds?.[step]) }))
        .filter(({ seconds }) => seconds > 0);
    return steps.length === 0 ? null : { name: node.name, frames: choicesOf(node, nodes), steps, loops: told.loops ?? 0 };
}

/** @return {lines, place, size, isLying, alignment, color}, or null */
export function textOf(node) {
    const told = node.extras?.text;
    return told === undefined || listOf(told.lines).length === 0 ? null : told;
}
