// How much of everything a model holds, counted from its description: a renderer counts what it draws, which is some
// faces twice and others not at all.

const trianglesMode = 4;
const stripMode = 5;

function trianglesOf(primitive, accessors) {
    const mode = primitive.mode ?? trianglesMode;
    const count = accessors[primitive.indices ?? primitive.attributes.POSITION]?.count ?? 0;
    if (mode === trianglesMode)
        return Math.floor(count / 3);
    return mode >= stripMode ? Math.max(0, count - 2) : 0;
}

/** Triangles, meshes and so on, as they are drawn with everything shown: a shared mesh at each of its places. */
export function figuresOf(description) {
    const { nodes = [], meshes = [], accessors = [], materials = [], textures = [], images = [] } = description;
    const perMesh = meshes.map((mesh) => ({
        triangles: mesh.primitives.reduce((sum, primitive) => sum + trianglesOf(primitive, accessors), 0),
        vertices: mesh.primitives.reduce((sum, each) => sum + (accessors[each.attributes.POSITION]?.count ?? 0), 0),
    }));
    let [triangles, places] = [0, 0];
    for (const node of nodes) {
        if (node.mesh === undefined)
            continue;
        const attributes = node.extensions?.EXT_mesh_gpu_instancing?.attributes ?? {};
        const copies = accessors[Object.values(attributes)[0]]?.count ?? 1;
        triangles += copies * (perMesh[node.mesh]?.triangles ?? 0);
        places += copies;
    }
    return {
        triangles,
        places,
        nodes: nodes.length,
        vertices: perMesh.reduce((sum, mesh) => sum + mesh.vertices, 0),
        meshes: meshes.length,
        materials: materials.length,
        textures: textures.length,
        pictures: images.length,
    };
}
