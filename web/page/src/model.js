// The model as objects to be drawn, by the numbers of their nodes.

import { Box3 } from "three";
import { GLTFLoader } from "three/examples/jsm/loaders/GLTFLoader.js";
import { picturesFromBytes } from "./pictures.js";

const pointSize = 3; // Pixels.
const mostLights = 8;

export class Model {
    /** @param nodes the numbers of all nodes that are wanted, coarser levels included */
    static async load(glb, nodes) {
        const gltf = await new GLTFLoader().register(picturesFromBytes).parseAsync(glb, "");
        const objects = new Map();
        for (const node of nodes)
            objects.set(node, await gltf.parser.getDependency("node", node));
        return new Model(gltf.scene, objects);
    }

    constructor(root, objects) {
        this.root = root;
        this.objects = objects;
        this.nodes = new Map([...objects].map(([node, object]) => [object, node]));
        root.updateMatrixWorld(true);
        this.keepFewLights();
        for (const material of this.materials())
            if (material.isPointsMaterial)
                material.size = pointSize * window.devicePixelRatio;
    }

    /** Graphics cards know only so many lights at once. */
    keepFewLights() {
        const lights = [];
        this.root.traverse((object) => object.isLight && lights.push(object));
        lights.slice(mostLights).forEach((light) => light.removeFromParent());
    }

    /** The number of the node that an object belongs to. */
    nodeOf(object) {
        for (let above = object; above !== null; above = above.parent)
            if (this.nodes.has(above))
                return this.nodes.get(above);
        return undefined;
    }

    /** The number of the node above a node. */
    above(node) { return this.nodeOf(this.objects.get(node).parent); }

    /** The box around all that is drawn below an object, or that could be. */
    boxOf(object) {
        object.updateWorldMatrix(true, true);
        return new Box3().setFromObject(object);
    }

    /** The box around what is to be seen; around everything if that is nothing. */
    seenBox() {
        const box = new Box3();
        const waiting = [this.root];
        while (waiting.length > 0) {
            const object = waiting.pop();
            if (!object.visible)
                continue;
            if (object.geometry !== undefined) {
                object.geometry.boundingBox ?? object.geometry.computeBoundingBox();
                box.union(object.geometry.boundingBox.clone().applyMatrix4(object.matrixWorld));
            }
            waiting.push(...object.children);
        }
        return box.isEmpty() ? this.boxOf(this.root) : box;
    }

    /** All materials, each once. */
    materials() {
        const found = new Set();
        this.root.traverse((object) => {
            if (object.material !== undefined)
                found.add(object.material);
        });
        return found;
    }
}
