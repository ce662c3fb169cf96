// Levels of detail: by the distance from the eye as the file says, or all finest, or all coarsest.

import { element } from "./dom.js";
import { sphereOf } from "./eye.js";
import { section } from "./panel.js";

const spread = Math.tan(Math.PI / 6); // Of the half picture that coverage counts on.
const modes = [["distance", "By the distance from the eye"], ["finest", "The finest"], ["coarsest", "The coarsest"]];

export class Levels {
    /** @param ask asks for a picture */
    constructor(description, model, visibility, ask) {
        this.visibility = visibility;
        this.ask = ask;
        this.mode = modes[0][0];
        this.chains = [];
        (description.nodes ?? []).forEach((node, number) => {
            const levels = [number, ...node.extensions?.MSFT_lod?.ids ?? []].filter((each) => model.objects.has(each));
            if (levels.length < 2)
                return;
            const [finest, ...coarser] = levels.map((each) => model.objects.get(each));
            if (finest.parent !== null)
                finest.parent.add(...coarser);
            this.chains.push({ levels, coverage: node.extras?.MSFT_screencoverage ?? [],
                sphere: sphereOf(model.boxOf(finest)) });
        });
    }

    /** Before each picture. */
    follow(camera) {
        for (const chain of this.chains) {
            const wanted = this.wantedOf(chain, camera.position);
            chain.levels.forEach((node, level) => this.visibility.setAside(node, level !== wanted));
        }
    }

    wantedOf({ levels, coverage, sphere }, eye) {
        if (this.mode === "finest")
            return 0;
        if (this.mode === "coarsest")
            return levels.length - 1;
        const covered = Math.min(1, (sphere.radius / (eye.distanceTo(sphere.center) * spread)) ** 2);
        return levels.findIndex((_, level) => covered >= (coverage[level] ?? 0));
    }

    section() {
        if (this.chains.length === 0)
            return null;
        const take = (event) => {
            this.mode = event.target.value;
            this.ask();
        };
        return section("Levels of detail", this.chains.length, ...modes.map(([mode, text]) =>
            element("label", { class: "line" }, element("input",
                { type: "radio", name: "levels", value: mode, checked: mode === this.mode, change: take }), text)));
    }
}
