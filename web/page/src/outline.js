// The tree of nodes as people read it, from the description alone: it is there without any 3D graphics.

import { kindOf } from "./extras.js";

/**
 * A node of the tree.
 * @typedef {{node: number, outer: number, name: string, kind: string, parent: ?Item, children: Item[], depth: number,
 * place: number}} Item  outer is the outermost of the nodes that it stands for
 */

export class Outline {
    constructor(description) {
        this.nodes = description.nodes ?? [];
        this.items = new Map(); // By the number of the node: of those that it stands for, the one with the name.
        this.drawn = new Set(); // The numbers of all nodes in the scene.
        const scene = description.scenes?.[description.scene ?? 0];
        this.top = { node: -1, outer: -1, name: "", kind: "", parent: null, children: [], depth: -1 };
        const open = [[scene?.nodes ?? [], this.top]]; // Without recursion: a tree can be as deep as it likes.
        while (open.length > 0) {
            const [numbers, parent] = open.pop();
            for (const number of numbers)
                // Coarser levels stand beside the finest one.
                for (const level of [number, ...this.nodes[number]?.extensions?.MSFT_lod?.ids ?? []])
                    this.add(level, parent, open);
        }
    }

    add(outer, parent, open) {
        let number = outer;
        while (this.take(number) && isFrameOf(this.nodes[number]))
            number = this.nodes[number].children[0];
        const node = this.nodes[number];
        if (node === undefined || this.items.has(number) || isPlainMesh(node))
            return;
        let inner = node; // What matrices inside of it lead to.
        while (inner.children?.length === 1 && isPlainGroup(this.nodes[inner.children[0]]) && this.take(inner.children[0]))
            inner = this.nodes[inner.children[0]];
        const kind = kindOf(node);
        const item = { node: number, outer, name: node.name || `(${kind})`, kind, parent, children: [],
            depth: parent.depth + 1, place: parent.children.length + 1 };
        parent.children.push(item);
        this.items.set(number, item);
        if (inner.children !== undefined)
            open.push([inner.children, item]);
    }

    /** @return false if a node isn't there, or stands somewhere already */
    take(number) {
        if (this.nodes[number] === undefined || this.drawn.has(number))
            return false;
        this.drawn.add(number);
        return true;
    }

    /** Whatever has a name around a node. @param above gives the number of the node above one */
    itemAround(number, above) {
        while (number !== undefined && !this.items.has(number))
            number = above(number);
        return this.items.get(number);
    }
}

const isPlainGroup = (node) => node !== undefined && node.name === undefined && node.mesh === undefined
    && kindOf(node) === "group" && node.extras?.child === undefined && node.extensions === undefined;

/** Whether a node is only there to place what stands in it. */
const isFrameOf = (node) => node.name === undefined && node.mesh === undefined && kindOf(node) === "group"
    && node.children?.length === 1;

/** Whether a node is a part of what stands above it, and nothing else. */
const isPlainMesh = (node) => node.name === undefined && node.mesh !== undefined && node.children === undefined
    && node.extensions?.KHR_node_visibility === undefined && node.extras?.child === undefined;
