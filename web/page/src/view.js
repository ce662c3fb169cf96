// The view of a model, and everything that moves in it.

import { Eye, sides, sphereOf } from "./eye.js";
import { FlipBooks } from "./flipbooks.js";
import { Joints } from "./joints.js";
import { Levels } from "./levels.js";
import { Model } from "./model.js";
import { Selection } from "./selection.js";
import { Stage } from "./stage.js";
import { Style } from "./style.js";
import { Switches } from "./switches.js";
import { paintTexts } from "./texts.js";
import { TurningFaces } from "./turning.js";
import { Visibility } from "./visibility.js";

export class View {
    /** @throws if the browser has no 3D graphics */
    static async open(canvas, glb, description, outline) {
        const stage = new Stage(canvas);
        return new View(stage, await Model.load(glb, outline.drawn), description);
    }

    constructor(stage, model, description) {
        this.stage = stage;
        this.model = model;
        this.eye = new Eye(stage);
        this.visibility = new Visibility(description, model.objects);
        const ask = () => stage.ask();
        this.levels = new Levels(description, model, this.visibility, ask);
        this.switches = new Switches(description, this.visibility);
        this.turning = new TurningFaces(description, model.objects);
        this.flipBooks = new FlipBooks(description, this.visibility, ask);
        this.selection = new Selection(stage, model);
        this.joints = new Joints(description, model.objects, () => this.selection.update());
        this.style = new Style(stage, model);
        this.visibility.onChange(ask);
        paintTexts(description, model.objects);
        stage.scene.add(model.root);
        stage.bounds = sphereOf(model.boxOf(model.root));
        stage.before.push((camera) => this.levels.follow(camera), (camera) => this.turning.follow(camera));
        this.fitFrom(sides.corner);
        this.flipBooks.play(!matchMedia("(prefers-reduced-motion: reduce)").matches);
    }

    /** The sections of what can be set. */
    sections() {
        return [this.switches, this.levels, this.joints, this.flipBooks].map((part) => part.section())
            .filter((section) => section !== null);
    }

    /** Does what the address asks for. */
    obey(asked) {
        if (asked.camera !== null)
            this.eye.stand(asked.camera);
        if (asked.background !== null)
            this.style.paint(asked.background);
    }

    /** Says something until the eye moves. */
    tell(text) {
        const notice = document.getElementById("notice");
        notice.textContent = text;
        this.eye.onMove(() => { notice.textContent = ""; });
    }

    /** Frames a node. */
    select(node) { this.selection.mark(this.model.objects.get(node) ?? null); }

    /** Has a function called with the number of each node that is clicked. */
    onPick(listener) { this.selection.onPick(listener); }

    /** Has a node fill the picture. */
    fitNode(node) {
        const box = this.model.boxOf(this.model.objects.get(node));
        if (!box.isEmpty())
            this.eye.fit(sphereOf(box));
    }

    /** Has everything that is shown fill the picture. */
    fit() { this.eye.fit(sphereOf(this.model.seenBox())); }

    /** The same, from a side. */
    fitFrom(side) { this.eye.fitFrom(side, sphereOf(this.model.seenBox())); }
}
