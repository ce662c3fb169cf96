// A frame around what is selected, and what lies under the pointer.

import { Box3, Box3Helper, Color, Raycaster, Vector2 } from "three";

const frameColour = new Color(0xff8a00);
const clickDistance = 4; // Pixels: a longer way is a drag.

export class Selection {
    constructor(stage, model) {
        this.stage = stage;
        this.model = model;
        this.frame = new Box3Helper(new Box3(), frameColour);
        this.frame.visible = false;
        this.object = null;
        stage.scene.add(this.frame);
    }

    /** @param object null for none */
    mark(object) {
        this.object = object;
        this.update();
    }

    /** After something has moved. */
    update() {
        this.frame.visible = false;
        if (this.object !== null) {
            this.frame.box.copy(this.model.boxOf(this.object));
            this.frame.visible = !this.frame.box.isEmpty();
        }
        this.stage.ask();
    }

    /** Has a function called with the number of the node that is clicked. */
    onPick(listener) {
        const { canvas } = this.stage;
        let start = null;
        canvas.addEventListener("pointerdown", (event) => { start = event.isPrimary ? event : null; });
        canvas.addEventListener("pointerup", (event) => {
            if (start === null || Math.hypot(event.clientX - start.clientX, event.clientY - start.clientY) > clickDistance)
                return;
            const node = this.nodeAt(event);
            if (node !== undefined)
                listener(node);
        });
    }

    nodeAt(event) {
        const box = this.stage.canvas.getBoundingClientRect();
        const place = new Vector2((event.clientX - box.left) / box.width * 2 - 1, 1 - (event.clientY - box.top) / box.height * 2);
        const ray = new Raycaster();
        ray.setFromCamera(place, this.stage.camera);
        const hit = ray.intersectObject(this.model.root).find(({ object }) => isSeen(object));
        return hit === undefined ? undefined : this.model.nodeOf(hit.object);
    }
}

function isSeen(object) {
    for (let above = object; above !== null; above = above.parent)
        if (!above.visible)
            return false;
    return true;
}
