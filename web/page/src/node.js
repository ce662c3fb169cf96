// What is to be known about the selected node.

import { element, numberText } from "./dom.js";
import { commentsOf, recordOf } from "./extras.js";
import { figuresOf } from "./figures.js";
import { section, textList, valueList } from "./panel.js";

export class NodeSection {
    constructor(description) {
        this.description = description;
        this.box = section("Selected");
        this.inside = this.box.lastElementChild;
        this.inside.append(element("p", { class: "quiet" },
            "Click a name or a part of the model. A double click or Enter on a name fits it into the picture."));
    }

    show(item) {
        const node = this.description.nodes[item.node];
        const { triangles } = figuresOf({ ...this.description, nodes: nodesBelow(this.description.nodes, item.node) });
        const comments = commentsOf(node);
        this.inside.replaceChildren(element("h2", {}, item.name),
            valueList([["Kind", item.kind], ["Triangles in it", numberText(triangles)],
                ["Children", item.children.length || ""], ["Record", recordOf(node)]]),
            ...comments.length > 0 ? [textList(comments)] : []);
    }
}

function nodesBelow(nodes, top) {
    const found = [];
    const waiting = [top];
    while (waiting.length > 0) {
        const node = nodes[waiting.pop()];
        if (node === undefined)
            continue;
        found.push(node);
        waiting.push(...node.children ?? []);
    }
    return found;
}
