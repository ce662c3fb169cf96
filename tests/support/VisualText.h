#pragma once

#include "visual/FltVisualNode.h"

#include <string>

/// A visual as indented lines for exact comparison: what each node is, its name, how many transformations it
/// has, and how many corners each mesh has.
class VisualText
{
public:
    static std::string of(FltVisualNode const& node) { return VisualText().print(node, ""); }

private:
    std::string print(FltVisualNode const& node, std::string const& indent)
    {
        std::string text = indent + kindOf(node) + (node.name.empty() ? "" : ' ' + node.name);
        for (std::size_t i = 0; i < node.transform.size(); ++i)
            text += " matrix";
        text += '\n';
        for (std::shared_ptr<FltVisualNode> const& child : node.children)
            text += child != nullptr ? print(*child, indent + "  ") : indent + "  nothing\n";
        for (FltMesh const& mesh : node.meshes)
            text += indent + "  mesh of " + std::to_string(mesh.positions.size()) + '\n';
        return text;
    }

    static std::string kindOf(FltVisualNode const& node)
    {
        char const* const kinds[] = {"group",   "level", "levels", "switch", "joint", "copies",
                                     "turning", "scale", "light",  "text",   "file",  "flip-book"};
        return kinds[node.content.index()];
    }
};
