// How the model is drawn: as it is or as its edges, and before what.

const backgrounds = ["sky", "light", "dark"];

export class Style {
    constructor(stage, model) {
        this.stage = stage;
        this.model = model;
        this.box = stage.canvas.parentElement;
        this.isWire = false;
        this.background = 0;
    }

    /** @return whether edges alone are drawn now */
    switchWire() {
        this.isWire = !this.isWire;
        for (const material of this.model.materials())
            material.wireframe = this.isWire;
        this.stage.ask();
        return this.isWire;
    }

    /** The next background. @return its name */
    nextBackground() {
        this.background = (this.background + 1) % backgrounds.length;
        this.box.style.background = "";
        this.box.dataset.background = backgrounds[this.background];
        return backgrounds[this.background];
    }

    /** @param colour "#rrggbb" */
    paint(colour) { this.box.style.background = colour; }
}
