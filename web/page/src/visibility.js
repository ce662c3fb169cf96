// What is to be seen: one place decides it for each node.

/**
 * A node is drawn if it is shown (by the file, a switch, or whoever looks at it), if nothing sets it aside at the
 * moment (levels and frames that aren't on), and if all of that is so for what stands above it.
 */
export class Visibility {
    /**
     * @param description of the model
     * @param objects by the numbers of their nodes
     */
    constructor(description, objects) {
        this.objects = objects;
        this.shown = (description.nodes ?? []).map((node) => node.extensions?.KHR_node_visibility?.visible ?? true);
        this.aside = new Set();
        this.listeners = [];
        this.shown.forEach((_, node) => this.apply(node));
    }

    /** Has a function called after nodes were shown or hidden. */
    onChange(listener) { this.listeners.push(listener); }

    isShown(node) { return this.shown[node]; }

    /** Shows or hides nodes, each with all below it. */
    show(nodes, on) {
        for (const node of nodes) {
            this.shown[node] = on;
            this.apply(node);
        }
        this.listeners.forEach((listener) => listener());
    }

    /** Sets a node aside for the moment, or takes it back; nobody is told. */
    setAside(node, on) {
        if (on)
            this.aside.add(node);
        else
            this.aside.delete(node);
        this.apply(node);
    }

    apply(node) {
        const object = this.objects.get(node);
        if (object !== undefined)
            object.visible = this.shown[node] && !this.aside.has(node);
    }
}
