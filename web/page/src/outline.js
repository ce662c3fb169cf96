// The tree of nodes as people read it, from the description alone: it is there without any 3D graphics.

import { kindOf } from "./extras.js";

/**
 * A node of the tree.
 * @typedef {{node: number, name: string, kind: string, parent: ?Item, children: Item[], depth: number,
 * place: number}} Item
 */

/** The items at the top, with everything below them. */
export class Outline {
    constructor(description) {
        this.nodes = description.nodes ?? [];
        this.items = new Map(); // By the number of the node.
        const scene = description.scenes?.[description.scene ?? 0];
        this.top = { node: -1, name: "", kind: "", parent: null, children: [], depth: -1 };
        this.addAll(scene?.nodes ?? []);
    }

    addAll(roots) {
        const open = [[roots, this.top]]; // Without recursion: a tree can be as deep as it likes.
        while (open.length > 0) {
            const [numbers, parent] = open.pop();
            for (const number of numbers) {
                const node = this.nodes[number];
                if (node === undefined || this.items.has(number))
                    continue;
                this.add(number, node, parent, open);
                // Coarser levels stand beside the finest one.
                for (const level of node.extensions?.MSFT_lod?.ids ?? [])
                    if (this.nodes[level] !== undefined && !this.items.has(level))
                        this.add(level, this.nodes[level], parent, open);
            }
        }
    }

    add(number, node, parent, open) {
        const kind = kindOf(node);
        const item = { node: number, name: node.name || `(${kind})`, kind, parent, children: [],
            depth: parent.depth + 1, place: parent.children.length + 1 };
        parent.children.push(item);
        this.items.set(number, item);
        if (node.children !== undefined)
            open.push([node.children, item]);
    }
}
