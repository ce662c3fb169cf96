// Reads VRML97 files by three.js's VRMLLoader, and prints what is in each as a line of JSON: what is drawn, and what
// the language says of it.
//
//     second_reader.js THREE FILE.wrl...
//
// THREE is the folder of Debian's libjs-three. The loader builds no node for a level of detail, a switch, what turns
// to the eye and an inlined file: they are handed to it as groups of what they show. Pictures aren't loaded, but
// have to be there.
"use strict";

const fs = require("fs");
const path = require("path");
const toolkit = require(path.join(__dirname, "parser_toolkit.js"));

const [folder, ...files] = process.argv.slice(2);
const THREE = require(path.join(folder, "build", "three.js"));
THREE.TextureLoader.prototype.load = () => new THREE.Texture();

const fieldOf = (node, name) => node.fields.find((field) => field.name === name);
const valuesOf = (node, name) => (fieldOf(node, name) ?? { values: [] }).values;

// What the loader shall take a node for.
const groups = {
    Billboard: (node) => fieldOf(node, "children"),
    LOD: (node) => first(fieldOf(node, "level")),
    Switch: (node) => (valuesOf(node, "whichChoice")[0] < 0 ? undefined : first(fieldOf(node, "choice"))),
};

function first(field) {
    return field === undefined ? undefined : { ...field, values: field.values.slice(0, 1) };
}

// Goes through the nodes of a file, once each, and gathers what the loader doesn't tell of its shapes.
class Survey {
    constructor() {
        this.shapes = []; // Each with the node, and whether it turns.
        this.counts = { billboards: 0, lods: 0, switches: 0, lights: 0, texts: 0, inlines: 0 };
        this.names = [];
        this.urls = [];
    }

    take(node, turns) {
        if (node.DEF !== undefined)
            this.names.push(node.DEF);
        const kinds = { Billboard: "billboards", LOD: "lods", Switch: "switches", Text: "texts", Inline: "inlines",
            DirectionalLight: "lights", PointLight: "lights", SpotLight: "lights" };
        if (kinds[node.name] !== undefined)
            ++this.counts[kinds[node.name]];
        if (node.name === "ImageTexture")
            this.urls.push(valuesOf(node, "url")[0]);
        if (node.name === "Shape")
            this.shapes.push({ node, turns });
        const below = turns || node.name === "Billboard";
        for (const field of node.fields)
            if (field.type === "node")
                for (const child of field.values)
                    this.take(child, below);
        if (groups[node.name] !== undefined) {
            const children = groups[node.name](node);
            node.name = "Group";
            node.fields = children === undefined ? [] : [{ ...children, name: "children" }];
        }
    }
}

// By the rules of the language: without a material, or by what it shines with alone.
function isUnlit(shape) {
    const appearance = valuesOf(shape, "appearance")[0];
    const material = appearance && valuesOf(appearance, "material")[0];
    return !material || (valuesOf(material, "diffuseColor").join(" ") === "0 0 0" &&
        valuesOf(material, "emissiveColor").length === 3);
}

// What stands for its picture: an address, or the name of the node with the pixels. A single pixel has no name: it
// stands for a transparency.
function pictureOf(shape) {
    const appearance = valuesOf(shape, "appearance")[0];
    const texture = appearance && valuesOf(appearance, "texture")[0];
    return !texture ? undefined : texture.USE ?? texture.DEF ?? valuesOf(texture, "url")[0];
}

const plainVisit = toolkit.Parser.prototype.getBaseCstVisitorConstructor().prototype.visit;

// The loader, with the tree of a file's nodes shown to a function before it is built.
function makeLoader(onTree) {
    const source = fs.readFileSync(path.join(folder, "examples", "js", "loaders", "VRMLLoader.js"), "utf8");
    const module = { exports: {} };
    const Visitor = toolkit.Parser.prototype.getBaseCstVisitorConstructor();
    Visitor.prototype.visit = function (node) {
        const tree = plainVisit.call(this, node);
        if (tree !== undefined && tree.routes !== undefined)
            onTree(tree);
        return tree;
    };
    new Function("exports", "module", "require", source)(module.exports, module,
        (name) => (name === "./three" ? THREE : { chevrotain: toolkit }));
    return new module.exports.VRMLLoader();
}

const rounded = (number) => Number(number.toPrecision(9));

function read(file) {
    const survey = new Survey();
    const loader = makeLoader((tree) => tree.nodes.forEach((node) => survey.take(node, false)));
    const scene = loader.parse(fs.readFileSync(file, "utf8"), path.dirname(file) + "/");
    const shapeOf = new Map();
    for (const shape of survey.shapes)
        if (shape.node.build !== undefined && shape.node.build.geometry !== undefined)
            shapeOf.set(shape.node.build.geometry, shape);
    const drawn = { triangles: 0, unlit: 0, textured: 0, turning: 0, lines: 0, points: 0 };
    const pictures = new Set();
    const box = new THREE.Box3();
    const point = new THREE.Vector3();
    scene.updateMatrixWorld(true);
    scene.traverse((object) => {
        if (!object.isMesh && !object.isLine && !object.isPoints)
            return;
        const shape = shapeOf.get(object.geometry);
        const positions = object.geometry.attributes.position;
        for (let i = 0; i < positions.count && !shape.turns; ++i)
            box.expandByPoint(point.fromBufferAttribute(positions, i).applyMatrix4(object.matrixWorld));
        if (object.isPoints)
            drawn.points += positions.count;
        if (object.isLine)
            drawn.lines += positions.count / 2;
        if (!object.isMesh)
            return;
        const triangles = positions.count / 3;
        drawn.triangles += triangles;
        drawn.unlit += isUnlit(shape.node) ? triangles : 0;
        const picture = pictureOf(shape.node);
        drawn.textured += picture === undefined ? 0 : triangles;
        if (picture !== undefined)
            pictures.add(picture);
        drawn.turning += shape.turns ? triangles : 0;
    });
    const isThere = (url) => fs.existsSync(path.join(path.dirname(file), decodeURIComponent(url)));
    return { file, ...drawn, ...survey.counts, textures: pictures.size,
        missing: survey.urls.filter((url) => !isThere(url)),
        names: survey.names.every((name) => /^[A-Za-z_]\w*$/.test(name)) &&
            new Set(survey.names).size === survey.names.length,
        box: box.isEmpty() ? [] : [...box.min.toArray(), ...box.max.toArray()].map(rounded) };
}

for (const file of files) {
    try {
        console.log(JSON.stringify(read(file)));
    } catch (problem) {
        console.log(JSON.stringify({ file, problem: String(problem.message ?? problem) }));
    }
}
