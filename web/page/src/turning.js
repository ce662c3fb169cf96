// Faces that turn to the eye.

import { Matrix4, Vector3 } from "three";
import { turningOf } from "./extras.js";

const up = new Vector3(0, 0, 1);

export class TurningFaces {
    constructor(description, objects) {
        this.all = [];
        (description.nodes ?? []).forEach((node, number) => {
            const turning = objects.has(number) ? turningOf(node) : null;
            if (turning !== null)
                this.all.push({ ...turning, object: objects.get(number) });
        });
    }

    /** Before each picture. */
    follow(camera) {
        const eye = new Vector3();
        const basis = new Matrix4();
        for (const { object, isAboutPoint } of this.all) {
            object.parent.updateWorldMatrix(true, false);
            object.parent.worldToLocal(eye.copy(camera.position)).sub(object.position);
            if (!isAboutPoint)
                eye.z = 0;
            if (eye.lengthSq() === 0)
                continue;
            // Its -y goes to the eye, its x to the right of that.
            const back = eye.normalize().negate();
            const right = new Vector3().crossVectors(back, up);
            if (right.lengthSq() === 0)
                right.set(1, 0, 0);
            right.normalize();
            basis.makeBasis(right, back, new Vector3().crossVectors(right, back));
            object.quaternion.setFromRotationMatrix(basis);
        }
    }
}
