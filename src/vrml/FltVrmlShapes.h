#pragma once

#include "visual/FltMesh.h"
#include "visual/FltVisualNode.h"
#include "vrml/FltVrmlPictures.h"
#include "vrml/FltVrmlPlace.h"
#include "vrml/VrmlNames.h"
#include "vrml/VrmlText.h"

#include <cstdint>
#include <functional>
#include <string_view>

/// Writes the shapes of a VRML97 file: meshes and texts.
class FltVrmlShapes
{
public:
    /// Is told what a shape loses, and how often.
    using Lose = std::function<void(std::string_view kind, std::uint64_t count)>;

    /// All have to outlive this object.
    FltVrmlShapes(VrmlText& text, VrmlNames& names, FltVrmlPictures& pictures, Lose lose);

    /// Writes a mesh, one shape for each opacity in it.
    void write(FltMesh const& mesh, FltVrmlPlace place);

    /// Writes a text.
    void write(FltVisualText const& written, FltVrmlPlace place);

private:
    void writeShape(FltMesh const& part, FltVrmlPlace const& place);
    void writeAppearance(FltMesh const& part);
    void writeMaterial(FltMesh const& part);
    void writeGeometry(FltMesh const& part, FltVrmlPlace const& place);
    void writeCorners(FltMesh const& part, FltVrmlPlace const& place);
    void tellWhatIsLost(FltMesh const& mesh);
    bool hasTexture(FltMesh const& part) const;
    bool isLit(FltMesh const& part) const;

    VrmlText& text;
    VrmlNames& names;
    FltVrmlPictures& pictures;
    Lose lose;
};
