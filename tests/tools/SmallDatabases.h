#pragma once

#include "support/SceneTraversal.h"
#include "writer/FltWriter.h"

#include <Inventor/SoDB.h>
#include <Inventor/SoInput.h>
#include <Inventor/nodes/SoSeparator.h>
#include <string>
#include <vector>

/// A database of one triangle in a group, and of references to other databases.
/// @param references their names as stored
inline FltWriter triangleDatabase(std::vector<std::string> const& references = {})
{
    FltWriter flt;
    flt.vertexPalette();
    double const a = flt.vertex("VertexColor", 0, 0, 0), b = flt.vertex("VertexColor", 1, 0, 0),
                 c = flt.vertex("VertexColor", 0, 1, 0);
    flt.push().add("Group", {{"idASCII", "g1"}}).push();
    flt.add("Object", {{"idASCII", "o1"}}).push().face({a, b, c}).pop().pop();
    for (std::string const& reference : references)
        flt.add("ExternalReference", {{"asciiPath", reference}});
    flt.pop();
    return flt;
}

/// How many triangles the toolkit draws of a scene file and of those that it includes; -1 if it can't read it.
inline int trianglesIn(std::string const& file)
{
    SoInput input;
    SoSeparator* const root = input.openFile(file.c_str(), TRUE) ? SoDB::readAll(&input) : nullptr;
    if (root == nullptr)
        return -1;
    root->ref();
    int const count = countTriangles(root);
    root->unref();
    return count;
}
