// How the eye moves: by mouse, fingers, keys, to a named side, to a place of the address.

import { MathUtils, Sphere, Spherical, Vector3 } from "three";
import { OrbitControls } from "three/examples/jsm/controls/OrbitControls.js";
import { fromDatabase, toDatabase } from "./places.js";

/** Degrees clockwise from north, and above the horizon. */
export const sides = {
    corner: { azimuth: 135, elevation: 30 },
    front: { azimuth: 180, elevation: 0 },
    right: { azimuth: 90, elevation: 0 },
    top: { azimuth: 180, elevation: 89.99 },
};

const turnByKey = MathUtils.degToRad(7.5);
const zoomByKey = 1.2;

export class Eye {
    constructor(stage) {
        this.stage = stage;
        this.controls = new OrbitControls(stage.camera, stage.canvas);
        this.controls.zoomToCursor = true;
        this.controls.addEventListener("change", () => stage.ask());
        stage.canvas.addEventListener("keydown", (event) => this.take(event));
    }

    /** Has a function called once, when the eye next moves. */
    onMove(listener) {
        const once = () => {
            this.controls.removeEventListener("change", once);
            listener();
        };
        this.controls.addEventListener("change", once);
    }

    /** Has a sphere fill the picture, from where the eye looks now. */
    fit(sphere) {
        const { camera } = this.stage;
        const away = camera.position.clone().sub(this.controls.target);
        this.lookAt(sphere, away.lengthSq() > 0 ? away.normalize() : new Vector3(0, 0, 1));
    }

    /** Has a sphere fill the picture, from a side. */
    fitFrom({ azimuth, elevation }, sphere) {
        const [turn, rise] = [azimuth, elevation].map(MathUtils.degToRad);
        this.lookAt(sphere, fromDatabase(Math.sin(turn) * Math.cos(rise), Math.cos(turn) * Math.cos(rise), Math.sin(rise)));
    }

    lookAt(sphere, direction) {
        const { camera } = this.stage;
        const half = MathUtils.degToRad(camera.fov) / 2;
        const narrow = Math.min(half, Math.atan(Math.tan(half) * camera.aspect));
        const radius = sphere.radius > 0 ? sphere.radius : 1;
        this.controls.target.copy(sphere.center);
        camera.position.copy(direction).multiplyScalar(radius / Math.sin(narrow)).add(sphere.center);
        this.controls.update();
        this.stage.ask();
    }

    /** @param numbers where it stands and what it looks at, as the database counts */
    stand(numbers) {
        this.stage.camera.position.copy(fromDatabase(...numbers.slice(0, 3)));
        this.controls.target.copy(fromDatabase(...numbers.slice(3)));
        this.controls.update();
        this.stage.ask();
    }

    /** Where it stands and what it looks at, as the database counts. */
    place() {
        return [...toDatabase(this.stage.camera.position), ...toDatabase(this.controls.target)];
    }

    take(event) {
        if (event.altKey || event.ctrlKey || event.metaKey)
            return;
        const key = (event.shiftKey ? this.movingKeys : this.turningKeys)[event.key] ?? this.zoomKeys[event.key];
        if (key === undefined)
            return;
        event.preventDefault();
        key.call(this);
        this.controls.update();
        this.stage.ask();
    }

    turningKeys = {
        ArrowLeft() { this.turn(-turnByKey, 0); },
        ArrowRight() { this.turn(turnByKey, 0); },
        ArrowUp() { this.turn(0, -turnByKey); },
        ArrowDown() { this.turn(0, turnByKey); },
    };

    movingKeys = {
        ArrowLeft() { this.move(-1, 0); },
        ArrowRight() { this.move(1, 0); },
        ArrowUp() { this.move(0, 1); },
        ArrowDown() { this.move(0, -1); },
    };

    zoomKeys = {
        "+"() { this.zoom(1 / zoomByKey); },
        "="() { this.zoom(1 / zoomByKey); },
        "-"() { this.zoom(zoomByKey); },
    };

    turn(around, down) {
        const { camera } = this.stage;
        const away = new Spherical().setFromVector3(camera.position.clone().sub(this.controls.target));
        away.theta += around;
        away.phi += down;
        camera.position.setFromSpherical(away.makeSafe()).add(this.controls.target);
    }

    move(right, up) {
        const { camera } = this.stage;
        const step = camera.position.distanceTo(this.controls.target) / 15;
        const way = new Vector3(right, up, 0).multiplyScalar(step).applyQuaternion(camera.quaternion);
        camera.position.add(way);
        this.controls.target.add(way);
    }

    zoom(factor) {
        const { camera } = this.stage;
        camera.position.sub(this.controls.target).multiplyScalar(factor).add(this.controls.target);
    }
}

/** The sphere around a box; one of radius 1 around zero if there is none. */
export function sphereOf(box) {
    return box.isEmpty() ? new Sphere(new Vector3(), 1) : box.getBoundingSphere(new Sphere());
}
