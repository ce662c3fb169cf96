#pragma once

#include "obj/FltObj.h"
#include "support/ScratchFolder.h"
#include "support/Text.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

/// A visual that a test puts together, written as OBJ.
class ObjOfVisual
{
public:
    using Node = std::shared_ptr<FltVisualNode>;

    /// A face with three corners that no light changes.
    static FltMesh triangle()
    {
        FltMesh mesh;
        mesh.isLit = false;
        mesh.positions = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
        mesh.indices = {0, 1, 2, FltMesh::end};
        mesh.colors = {0xff0000ff};
        return mesh;
    }

    /// Adds a node of these meshes.
    Node add(std::vector<FltMesh> meshes, std::string name = "part")
    {
        auto node = std::make_shared<FltVisualNode>();
        node->name = std::move(name);
        node->meshes = std::move(meshes);
        root->children.push_back(node);
        return node;
    }

    FltGltfReport write()
    {
        visual.root = root;
        return FltObj::write(visual, folder / (name + ".obj"), options);
    }

    std::string text() const { return contentsOf(folder / (name + ".obj")); }
    std::string materials() const { return contentsOf(folder / (name + ".mtl")); }

    FltVisual visual;
    Node root = std::make_shared<FltVisualNode>();
    FltGltfOptions options;
    std::string name = "m";
    ScratchFolder folder;
};
