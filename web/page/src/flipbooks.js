// Flip-books: of the children of a node one shows at a time, each for its time.

import { element } from "./dom.js";
import { flipBookOf } from "./extras.js";
import { section } from "./panel.js";

export class FlipBooks {
    /** @param ask asks for a picture */
    constructor(description, visibility, ask) {
        this.visibility = visibility;
        this.ask = ask;
        this.all = (description.nodes ?? []).map((node, _, nodes) => flipBookOf(node, nodes)).filter((book) => book !== null);
        this.timer = undefined;
        this.elapsed = 0; // Seconds that were played.
        for (const book of this.all)
            visibility.show([...book.frames.values()], true); // Frames are set aside instead.
    }

    get isPlaying() { return this.timer !== undefined; }

    play(on) {
        clearTimeout(this.timer);
        this.timer = undefined;
        if (this.all.length === 0)
            return;
        const begin = performance.now() / 1000 - this.elapsed;
        const next = () => {
            this.elapsed = performance.now() / 1000 - begin;
            const wait = this.show(this.elapsed);
            if (on && Number.isFinite(wait))
                this.timer = setTimeout(next, Math.max(wait * 1000, 15));
        };
        if (on)
            next();
        else
            this.show(this.elapsed);
    }

    /** Shows what is on at a time. @return seconds until something changes */
    show(time) {
        let wait = Infinity;
        for (const { frames, steps, loops } of this.all) {
            const loop = steps.reduce((sum, { seconds }) => sum + seconds, 0);
            const isOver = loops > 0 && time >= loops * loop;
            let left = time % loop;
            let step = isOver ? steps.length - 1 : 0;
            while (!isOver && step + 1 < steps.length && left >= steps[step].seconds)
                left -= steps[step++].seconds;
            frames.forEach((node, frame) => this.visibility.setAside(node, frame !== steps[step].frame));
            if (!isOver)
                wait = Math.min(wait, steps[step].seconds - left);
        }
        this.ask();
        return wait;
    }

    section() {
        if (this.all.length === 0)
            return null;
        const button = element("button", { type: "button", "aria-pressed": String(this.isPlaying), click: () => {
            this.play(!this.isPlaying);
            button.setAttribute("aria-pressed", String(this.isPlaying));
        } }, "Play");
        return section("Flip-books", this.all.length, button);
    }
}
