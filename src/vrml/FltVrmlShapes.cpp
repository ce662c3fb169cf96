#include "vrml/FltVrmlShapes.h"

#include "visual/FltLiftedFaces.h"
#include "vrml/FltOpacityParts.h"

#include <Inventor/SbBox3f.h>
#include <algorithm>
#include <cstddef>
#include <utility>

namespace
{

constexpr std::uint32_t white = 0xffffff;
constexpr std::uint32_t opaque = 255;
constexpr double quarterTurn = 1.5707963267948966;

SbVec3f colorOf(std::uint32_t packed)
{
    SbColor color;
    float transparency = 0;
    color.setPackedValue(packed, transparency);
    return color;
}

bool isWhite(FltMesh const& part)
{
    return std::all_of(part.colors.begin(), part.colors.end(),
                       [](std::uint32_t color) { return color >> 8 == white; });
}

double sumOf(SbVec3f const& color)
{
    return static_cast<double>(color[0]) + static_cast<double>(color[1]) + static_cast<double>(color[2]);
}

/// How strong ambient light is, beside the colour in other light.
double ambientIntensityOf(FltMesh const& part)
{
    double colors = 0;
    for (std::uint32_t const color : part.colors)
        colors += sumOf(colorOf(color)) / static_cast<double>(part.colors.size());
    return colors > 0 ? std::min(sumOf(part.material.ambient) / colors, 1.0) : 0;
}

double sizeOf(std::vector<SbVec3f> const& positions)
{
    SbBox3f box;
    for (SbVec3f const& position : positions)
        box.extendBy(position);
    return box.isEmpty() ? 0 : static_cast<double>((box.getMax() - box.getMin()).length());
}

/// As they are drawn: what lies on other faces is a little in front of them.
std::vector<SbVec3f> drawnPositions(FltMesh const& part, double metresPerUnit)
{
    constexpr double partOfSize = 1.0 / 5000; // so large that readers tell the faces apart
    return FltLiftedFaces::positions(
        part, FltLiftedFaces::liftOfALevel(sizeOf(part.positions), partOfSize, metresPerUnit));
}

template <class Values>
void writeList(VrmlText& text, std::string_view field, Values const& values)
{
    text.beginList(field);
    for (auto const& value : values)
        text.item(value);
    text.endList();
}

} // namespace

FltVrmlShapes::FltVrmlShapes(VrmlText& text, VrmlNames& names, FltVrmlPictures& pictures, Lose lose)
    : text(text), names(names), pictures(pictures), lose(std::move(lose))
{
}

void FltVrmlShapes::write(FltMesh const& mesh, FltVrmlPlace place)
{
    tellWhatIsLost(mesh);
    SbDPMatrix origin = SbDPMatrix::identity();
    origin.setTranslate(mesh.origin);
    FltOpacityParts const byOpacity(mesh);
    if (byOpacity.levelledOut != 0)
        lose("faces and lines that are clear in part", byOpacity.levelledOut);
    if (mesh.isHidden) {
        text.begin("Switch", names.take("hidden"));
        text.field("whichChoice", "-1");
        text.beginList("choice");
        FltVrmlPlace::beginGroup(text, "");
    }
    int const nodes = place.begin(text, origin, "");
    for (FltMesh const& part : byOpacity.parts)
        writeShape(part, place);
    FltVrmlPlace::end(text, nodes);
    if (mesh.isHidden)
        FltVrmlPlace::end(text, 2);
}

void FltVrmlShapes::tellWhatIsLost(FltMesh const& mesh)
{
    if (mesh.kind != FltMesh::Kind::faces && mesh.size > 0)
        lose(mesh.kind == FltMesh::Kind::lines ? "widths of lines" : "sizes of points", 1);
    if (hasTexture(mesh) && pictures.environmentOf(mesh) != FltTextureAttributes::Environment::modulate)
        lose("textures that don't modulate", 1);
    if (!mesh.layers.empty())
        lose("further texture layers", mesh.layers.size());
}

bool FltVrmlShapes::hasTexture(FltMesh const& part) const
{
    return part.kind == FltMesh::Kind::faces && part.texture != FltMesh::none;
}

/// What is clear in all has to be lit where it has a texture, since that is where transparencies stand.
bool FltVrmlShapes::isLit(FltMesh const& part) const
{
    bool const isClear = FltOpacityParts::of(part) != opaque;
    return part.kind == FltMesh::Kind::faces && (part.isLit || (isClear && hasTexture(part)));
}

void FltVrmlShapes::writeShape(FltMesh const& part, FltVrmlPlace const& place)
{
    if (part.positions.empty())
        return;
    if (isLit(part) && !part.isLit)
        lose("unlit shapes with a texture and a transparency, which are lit", 1);
    if (pictures.componentsOf(part) > 2 && hasTexture(part) && !isWhite(part))
        lose("shapes with a colour over a coloured texture, which readers may pass over", 1);
    text.begin("Shape");
    writeAppearance(part);
    writeGeometry(part, place);
    text.end();
}

/// An unlit shape of one colour shines with it. Others have no material, which means the same, and have the
/// transparency in a texture.
void FltVrmlShapes::writeAppearance(FltMesh const& part)
{
    bool const isFaces = part.kind == FltMesh::Kind::faces;
    bool const hasOneColor = part.colors.size() <= 1;
    bool const isClear = FltOpacityParts::of(part) != opaque;
    text.begin("appearance Appearance");
    if (isLit(part) || !isFaces || (hasOneColor && !hasTexture(part)))
        writeMaterial(part);
    else if (isClear)
        FltVrmlPictures::writeOpacity(text, FltOpacityParts::of(part));
    if (hasTexture(part))
        pictures.write(text, names, part);
    text.end();
}

void FltVrmlShapes::writeMaterial(FltMesh const& part)
{
    SbVec3f const color = colorOf(part.colors.empty() ? ~0U : part.colors.front());
    std::uint32_t const opacity = FltOpacityParts::of(part);
    text.begin("material Material");
    if (isLit(part)) {
        text.field("diffuseColor", color);
        text.field("ambientIntensity", {part.isLit ? ambientIntensityOf(part) : 1.0});
        text.field("shininess", {part.material.shininess});
        if (part.material.isFromPalette) {
            text.field("specularColor", part.material.specular);
            text.field("emissiveColor", part.material.emissive);
        }
    } else {
        text.field("ambientIntensity", {0.0});
        text.field("diffuseColor", SbVec3f(0, 0, 0));
        text.field("emissiveColor", color);
    }
    if (opacity != opaque)
        text.field("transparency", {1 - static_cast<float>(opacity) / static_cast<float>(opaque)});
    text.end();
}

void FltVrmlShapes::writeGeometry(FltMesh const& part, FltVrmlPlace const& place)
{
    switch (part.kind) {
    case FltMesh::Kind::faces:
        text.begin("geometry IndexedFaceSet");
        text.flag("solid", !part.isTwoSided);
        if (place.isMirrored)
            text.flag("ccw", false);
        break;
    case FltMesh::Kind::lines:
        text.begin("geometry IndexedLineSet");
        break;
    case FltMesh::Kind::points:
        text.begin("geometry PointSet");
        break;
    }
    writeCorners(part, place);
    if (part.kind != FltMesh::Kind::points)
        writeList(text, "coordIndex", part.indices);
    text.end();
}

void FltVrmlShapes::writeCorners(FltMesh const& part, FltVrmlPlace const& place)
{
    text.begin("coord Coordinate");
    text.beginList("point");
    for (SbVec3f const& position : drawnPositions(part, place.scale))
        text.item(place.written(position));
    text.endList();
    text.end();

    bool const isTinted = hasTexture(part) && !isLit(part) && !isWhite(part);
    if (part.colors.size() > 1 || isTinted) {
        text.begin("color Color");
        text.beginList("color");
        for (std::size_t i = 0; i < part.positions.size(); ++i)
            text.item(colorOf(part.colors.size() > 1 ? part.colors[i] : part.colors.front()));
        text.endList();
        text.end();
        // Readers are known that ask for these, though the points' own are meant without them.
        if (part.kind == FltMesh::Kind::lines)
            writeList(text, "colorIndex", part.indices);
    }
    if (isLit(part) && !part.normals.empty()) {
        text.begin("normal Normal");
        text.beginList("vector");
        for (SbVec3f const& normal : part.normals)
            text.item(place.written(normal));
        text.endList();
        text.end();
    }
    if (hasTexture(part) && !part.uvs.empty()) {
        text.begin("texCoord TextureCoordinate");
        writeList(text, "point", part.uvs);
        text.end();
    }
}

/// The first line stands at the origin of the text, and the others below it.
void FltVrmlShapes::write(FltVisualText const& written, FltVrmlPlace place)
{
    using Alignment = FltVisualText::Alignment;
    if (place.isMirrored)
        lose("mirrored texts, which aren't turned", 1);
    SbVec3d origin(written.place);
    origin[written.isLying ? 1 : 2] +=
        static_cast<double>(written.size) * (static_cast<double>(written.lines.size()) - 1);
    text.begin("Transform");
    text.field("translation", place.written(origin));
    if (!written.isLying)
        text.field("rotation", {1.0, 0.0, 0.0, quarterTurn});
    text.beginList("children");
    text.begin("Shape");
    FltMesh look;
    look.isLit = false;
    look.colors = {written.color};
    writeAppearance(look);
    text.begin("geometry Text");
    text.texts("string", written.lines);
    text.begin("fontStyle FontStyle");
    text.field("size", {written.size});
    text.texts("family", {"SANS"});
    text.texts("justify", {written.alignment == Alignment::right    ? "END"
                           : written.alignment == Alignment::center ? "MIDDLE"
                                                                    : "BEGIN",
                           "FIRST"});
    text.end();
    text.end();
    text.end();
    FltVrmlPlace::end(text, 1);
}
