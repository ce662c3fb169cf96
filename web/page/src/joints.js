// Joints: parts that move, each by the values of its ranges.

import { Euler, MathUtils, Matrix4, Quaternion, Vector3 } from "three";
import { element } from "./dom.js";
import { jointOf } from "./extras.js";
import { part, section, slider } from "./panel.js";

// Of a joint that may go anywhere: how far its sliders go.
const freeRange = { degrees: 180, metres: 10, times: 3 };
const steps = 100; // From one end to the other, where the file gives none.

/** What the values of a joint do: a scale first, then a roll about y, a pitch about x, a yaw about z, then a way. */
export function motionOf(values) {
    const turn = new Euler(...["pitch", "roll", "yaw"].map((name) => MathUtils.degToRad(values[name])), "ZXY");
    return new Matrix4().compose(new Vector3(values.x, values.y, values.z), new Quaternion().setFromEuler(turn),
        new Vector3(...["scaleX", "scaleY", "scaleZ"].map((name) => values[name] || 1)));
}

export class Joints {
    /** @param moved is called after each move */
    constructor(description, objects, moved) {
        this.objects = objects;
        this.moved = moved;
        this.all = [];
        (description.nodes ?? []).forEach((node, number) => {
            const found = objects.has(number) ? jointOf(node, number) : null;
            if (found !== null)
                this.all.push({ ...found, values: valuesOf(found.ranges) });
        });
    }

    /** Moves a joint to its values. */
    move(joint) {
        const object = this.objects.get(joint.node);
        object.matrixAutoUpdate = false;
        object.matrix.copy(motionOf(joint.values));
        object.matrixWorldNeedsUpdate = true;
        this.moved();
    }

    section() {
        if (this.all.length === 0)
            return null;
        const parts = this.all.map((joint) => part(joint.name, () => this.fields(joint)));
        if (parts.length === 1)
            parts[0].open = true;
        return section("Joints", this.all.length, ...parts);
    }

    fields(joint) {
        const fields = movableOf(joint.ranges).map((range) => [range, this.field(joint, range)]);
        const reset = () => {
            joint.values = valuesOf(joint.ranges);
            fields.forEach(([range, field]) => field.setValue(range.current));
            this.move(joint);
        };
        return [...fields.map(([, field]) => field), element("button", { type: "button", click: reset }, "As stored")];
    }

    field(joint, range) {
        const unit = { degrees: "°", metres: " m", times: " ×" }[range.unit];
        const [least, most] = limitsOf(range);
        return slider(range.label, unit, { least, most, step: range.step || (most - least) / steps, value: range.current },
            (value) => {
                joint.values[range.name] = value;
                this.move(joint);
            });
    }
}

const valuesOf = (ranges) => Object.fromEntries(ranges.map(({ name, current }) => [name, current]));

/** The ranges that the file lets move; all if it says nothing of any. */
function movableOf(ranges) {
    const told = ranges.filter(({ minimum, maximum }) => maximum > minimum);
    return told.length > 0 ? told : ranges;
}

function limitsOf({ minimum, maximum, current, unit }) {
    if (maximum > minimum)
        return [Math.min(minimum, current), Math.max(maximum, current)];
    return unit === "times" ? [0.1, freeRange.times] : [current - freeRange[unit], current + freeRange[unit]];
}
