// What the test opens in a browser: a globe without a picture of the earth, which loads a tileset and tells what stands
// where.

import { TilesRenderer } from "3d-tiles-renderer";
import { AmbientLight, PerspectiveCamera, Scene, Vector3, WebGLRenderer } from "three";

const renderer = new WebGLRenderer({ preserveDrawingBuffer: true });
renderer.setSize(960, 540);
renderer.setClearColor(0x88aadd);
document.body.append(renderer.domElement);
const scene = new Scene();
const tiles = new TilesRenderer(new URL("/globe/tileset.json", location).href);
const camera = new PerspectiveCamera(60, 960 / 540, 1, 1e7);
tiles.setCamera(camera);
scene.add(tiles.group, new AmbientLight(0xffffff, 3));

/** Looks from one place to another, both from the middle of the earth, until all that is needed is loaded. */
window.look = async (from, to, up) => {
    camera.position.set(...from);
    camera.up.set(...up);
    camera.lookAt(new Vector3(...to));
    camera.updateMatrixWorld();
    tiles.setResolution(camera, 1920, 1080); // what errors are seen in; the picture is a smaller one
    let quiet = 0;
    for (let round = 0; round < 2000 && quiet < 10; ++round) {
        tiles.update();
        await new Promise((resolve) => setTimeout(resolve, 20));
        const busy = tiles.stats.downloading + tiles.stats.parsing > 0 || tiles.stats.inFrustum === 0;
        quiet = busy ? 0 : quiet + 1;
    }
    renderer.render(scene, camera);
    return quiet >= 10;
};

/** The files that are drawn: their names, their zeros and what goes up there, and the corners of their triangles. */
window.drawn = () => {
    const list = [];
    for (const tile of tiles.visibleTiles) {
        const model = tile.engineData?.scene ?? tile.cached?.scene;
        if (!model)
            continue;
        model.updateWorldMatrix(true, true);
        const matrix = model.matrixWorld.elements;
        const corners = [];
        model.traverse((object) => {
            const positions = object.isMesh ? object.geometry.attributes.position : undefined;
            const point = new Vector3();
            for (let i = 0; positions && i < positions.count; ++i)
                corners.push(point.fromBufferAttribute(positions, i).applyMatrix4(object.matrixWorld).toArray());
        });
        list.push({ uri: tile.content.uri, matrix: [...matrix], corners });
    }
    return list;
};
document.body.dataset.state = "ready";
