#pragma once

#include "support/DrawnScene.h"
#include "toolkit/SoNodeRef.h"
#include "writer/FltWriter.h"

#include <Inventor/SoDB.h>
#include <Inventor/SoInput.h>
#include <Inventor/nodes/SoSeparator.h>
#include <string>
#include <vector>

/// A database of one triangle in a group.
struct SmallDatabase {
    std::vector<std::string> references; ///< To other databases, their names as stored.
    std::string texture;                 ///< Of the triangle; empty for none.
    int units = 0;                       ///< 0 metres, 4 feet.

    FltWriter written() const
    {
        FltWriter flt(1570, {{"vertexCoordinateUnits", units}});
        if (!texture.empty())
            flt.add("TexturePattern", {{"fileName", texture}, {"patternIndex", 0}});
        flt.vertexPalette();
        double const a = flt.vertex("VertexColorUv", 0, 0, 0), b = flt.vertex("VertexColorUv", 1, 0, 0),
                     c = flt.vertex("VertexColorUv", 0, 1, 0);
        flt.push().add("Group", {{"idASCII", "g1"}}).push();
        flt.add("Object", {{"idASCII", "o1"}}).push();
        flt.face({a, b, c}, {{"texturePatternIndex", texture.empty() ? -1 : 0}, {"materialIndex", -1}});
        flt.pop().pop();
        for (std::string const& reference : references)
            flt.add("ExternalReference", {{"asciiPath", reference}});
        flt.pop();
        return flt;
    }
    std::string bytes() const { return written().bytes(); }
};

/// What the toolkit reads from a scene file; null if it can't.
inline SoNodeRef<SoSeparator> sceneIn(std::string const& file)
{
    SoInput input;
    return SoNodeRef<SoSeparator>(input.openFile(file.c_str(), TRUE) ? SoDB::readAll(&input) : nullptr);
}

/// How many triangles the toolkit draws of a scene file and of those that it includes; -1 if it can't read
/// it.
inline int trianglesIn(std::string const& file)
{
    SoNodeRef<SoSeparator> const root = sceneIn(file);
    return root.get() == nullptr ? -1 : static_cast<int>(DrawnScene(root.get()).triangles.size());
}
