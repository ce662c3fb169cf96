// Switches: each shows those of its children that one of its masks says.

import { element } from "./dom.js";
import { switchOf } from "./extras.js";
import { choice, part, section } from "./panel.js";

const openAtMost = 12; // Switches whose choices are there at once.

export class Switches {
    constructor(description, visibility) {
        this.visibility = visibility;
        this.all = [];
        (description.nodes ?? []).forEach((node, _, nodes) => {
            const found = switchOf(node, nodes);
            if (found !== null)
                this.all.push(found);
        });
    }

    /** Shows what a mask of a switch says. */
    choose({ masks, choices }, mask) {
        const on = new Set(masks[mask].children);
        for (const isOn of [true, false])
            this.visibility.show([...choices].filter(([child]) => on.has(child) === isOn).map(([, node]) => node), isOn);
    }

    section() {
        if (this.all.length === 0)
            return null;
        return section("Switches", this.all.length, ...this.all.map((each) => this.field(each)));
    }

    field(each) {
        const make = () => choice(each.name, each.masks.map(({ name }, mask) => [mask, name]), each.current,
            (mask) => this.choose(each, Number(mask)));
        if (this.all.length > openAtMost)
            return part(each.name, () => [make()]);
        return element("label", { class: "field" }, element("span", {}, each.name), make());
    }
}
