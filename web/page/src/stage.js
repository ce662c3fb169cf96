// The canvas: a scene, a camera with its lights, and a picture whenever something has changed, not otherwise.

import { AmbientLight, Color, DirectionalLight, PerspectiveCamera, Scene, Sphere, Vector3, WebGLRenderer } from "three";

// Lights of the camera: a sun over its left shoulder, weaker ones against it and from below, so that no side is black.
const headlights = [
    { from: [-0.62, 0.55, 0.56], strength: 2.4 },
    { from: [0.6, 0.2, 0.77], strength: 0.55 },
    { from: [-0.1, -0.8, 0.6], strength: 0.3 },
];
const ambientStrength = 0.35;
const fieldOfView = 32; // Degrees, from the lower edge to the upper: that of fltshot.

export class Stage {
    /** @throws if the browser has no 3D graphics */
    constructor(canvas) {
        this.canvas = canvas;
        this.renderer = new WebGLRenderer({ canvas, antialias: true, alpha: true, logarithmicDepthBuffer: true });
        this.renderer.setClearColor(new Color(0), 0); // The style of the page is the background.
        this.scene = new Scene();
        this.camera = new PerspectiveCamera(fieldOfView, 1, 0.1, 1000);
        this.bounds = new Sphere(new Vector3(), 1);
        this.before = []; // Called before each picture.
        this.isAsked = false;
        this.scene.add(this.camera, new AmbientLight(0xffffff, ambientStrength));
        for (const { from, strength } of headlights) {
            const light = new DirectionalLight(0xffffff, strength);
            light.position.set(...from);
            light.target.position.set(0, 0, 0);
            this.camera.add(light, light.target);
        }
        new ResizeObserver(() => this.fill()).observe(canvas.parentElement);
        canvas.addEventListener("webglcontextrestored", () => this.ask());
        this.fill();
    }

    /** Asks for a picture. */
    ask() {
        if (this.isAsked)
            return;
        this.isAsked = true;
        requestAnimationFrame(() => {
            this.isAsked = false;
            this.draw();
        });
    }

    draw() {
        this.setDepth();
        this.camera.updateMatrixWorld();
        this.before.forEach((prepare) => prepare(this.camera));
        this.renderer.render(this.scene, this.camera);
        this.canvas.dataset.pictures = Number(this.canvas.dataset.pictures ?? 0) + 1;
    }

    /** What is too near and too far to be drawn: nothing of the model, as far as that can be. */
    setDepth() {
        const distance = this.camera.position.distanceTo(this.bounds.center);
        const radius = this.bounds.radius;
        this.camera.near = Math.max(distance - radius, (distance + radius) * 1e-5);
        this.camera.far = (distance + radius) * 1.01;
        this.camera.updateProjectionMatrix();
    }

    fill() {
        const { clientWidth, clientHeight } = this.canvas.parentElement;
        if (clientWidth === 0 || clientHeight === 0)
            return;
        this.renderer.setPixelRatio(Math.min(window.devicePixelRatio, 2));
        this.renderer.setSize(clientWidth, clientHeight, false);
        this.camera.aspect = clientWidth / clientHeight;
        this.ask();
    }
}
