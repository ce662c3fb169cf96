#include "support/FieldDatabase.h"

#include "writer/FltMeshRecords.h"

#include <algorithm>

namespace
{

using Fields = FltWriter::Fields;
using K = FltKind;
using Mesh = FltMeshRecords;

constexpr int revision = 1580;
constexpr unsigned packed = 0x10000000;

/// The layouts of records that only the complete conversion reads.
std::vector<FltField> const loops = {
    {"loopCount", K::i32}, {"loopDuration", K::f32}, {"lastFrameDuration", K::f32}};
std::vector<FltField> const pool = {{"numberOfVertices", K::u32}, {"attributeMask", K::u32}};
std::vector<FltField> const primitive = {
    {"primitiveType", K::i16}, {"indexSize", K::i16}, {"indexCount", K::u32}};
std::vector<FltField> const maskName = {{"index", K::u32}, {"text", K::chars, FltField::rest}};
std::vector<FltField> const pointAppearance = {{"", K::i32},
                                               {"name", K::chars, 256},
                                               {"paletteIndex", K::i32},
                                               {"surfaceMaterial", K::i16},
                                               {"featureID", K::i16},
                                               {"backColor", K::bytes, 4},
                                               {"displayMode", K::i32},
                                               {"frontIntensity", K::f32},
                                               {"backIntensity", K::f32},
                                               {"minDefocus", K::f32},
                                               {"maxDefocus", K::f32},
                                               {"fadeMode", K::i32},
                                               {"fogPunchMode", K::i32},
                                               {"directionalMode", K::i32},
                                               {"rangeMode", K::i32},
                                               {"minPixelSize", K::f32},
                                               {"maxPixelSize", K::f32},
                                               {"actualPixelSize", K::f32}};
std::vector<FltField> const indexedPoints = {{"idASCII", K::chars, 8}, {"appearanceIndex", K::i32}};

FltLayout const& layoutNamed(std::string_view name)
{
    auto const& layouts = fltLayouts();
    return *std::find_if(layouts.begin(), layouts.end(),
                         [&](FltLayout const& layout) { return layout.name == name; });
}

/// A layout after so many bytes of another one.
std::vector<FltField> behind(int bytes, std::vector<FltField> const& fields)
{
    std::vector<FltField> layout = {{"", K::bytes, bytes}};
    layout.insert(layout.end(), fields.begin(), fields.end());
    return layout;
}

/// The entry of number 3, with points of a size.
std::string pointPalette(double size)
{
    return std::string(4, '\0') + "bright" + std::string(250, '\0') + FltWriter::big32(3) +
           std::string(52, '\0') + FltWriter::bigFloat(size);
}

Fields joined(Fields fields, Fields const& more)
{
    fields.insert(fields.end(), more.begin(), more.end());
    return fields;
}

} // namespace

FieldDatabase::FieldDatabase() : flt(revision, {{"vertexCoordinateUnits", 4}, {"id", "db"}})
{
    note("Header", layoutNamed("Header").fields);
    palettes();
    vertices();
    flt.push();
    groups();
    groupsInPlace();
    faces();
    oldFaces();
    meshes();
    nodes();
    lightPoints();
    flt.pop();
}

std::set<std::string> FieldDatabase::records() const
{
    std::set<std::string> names;
    for (Field const& field : all)
        names.insert(field.record);
    return names;
}

std::string FieldDatabase::referencedBytes()
{
    FltWriter child(revision);
    child.add("ColorPalette", {{"color", std::vector<double>(1024, 0xff00ff00)}});
    child.add("Material", {{"index", 0}, {"diffuse", {0, 1, 0}}, {"alpha", 1}});
    child.add("TexturePattern", {{"fileName", "child.rgb"}, {"patternIndex", 0}});
    child.add("LightSourcePalette", {{"paletteIndex", 0}, {"diffuseRed", 1}});
    child.addRaw(128, pointPalette(9));
    child.add("LineStylePalette", {{"lineStyleIndex", 1}, {"lineWidth", 9}});
    child.vertexPalette();
    std::vector<double> corners;
    for (auto const& [x, y] : {std::pair(0, 0), {1, 0}, {1, 1}})
        corners.push_back(child.vertex("VertexColorUv", x, y, 0, {{"flags", 0}, {"vertexColorIndex", 5}}));
    child.push().add("Object").push();
    child.face(corners, {{"materialIndex", 0}, {"texturePatternIndex", 0}, {"lightMode", 3}});
    child.face(corners, {{"drawType", 3}, {"lineStyleIndex", 1}});
    child.pop().add("LightSource", {{"flags", {0x80, 0, 0, 0}}});
    child.addRaw(130, std::string(8, '\0') + FltWriter::big32(3));
    child.push().add("VertexList", {{"offsets", corners}}).pop().pop();
    return child.bytes();
}

FltWriter& FieldDatabase::add(std::string_view record, Fields const& fields)
{
    flt.add(record, fields);
    note(std::string(record), layoutNamed(record).fields);
    return flt;
}

void FieldDatabase::addRaw(std::string const& record, int opcode, std::vector<FltField> const& layout,
                           std::string const& body)
{
    flt.addRaw(opcode, body);
    note(record, layout);
}

/// Notes where the fields of the last record stand.
void FieldDatabase::note(std::string const& record, std::vector<FltField> const& layout)
{
    std::size_t const begin = flt.lastOffset(), end = flt.bytes().size();
    std::size_t offset = begin + 4;
    for (FltField const& field : layout) {
        if (revision < field.fromRevision || revision >= field.belowRevision)
            continue;
        auto const size = static_cast<std::size_t>(sizeOf(field.kind));
        std::size_t const left = (end - std::min(offset, end)) / size;
        std::size_t const count =
            field.count == FltField::rest ? left : std::min(left, static_cast<std::size_t>(field.count));
        if (!field.name.empty() && count > 0)
            all.push_back({record, field, begin, end - begin, offset, count});
        offset += count * size;
    }
}

void FieldDatabase::palettes()
{
    std::vector<double> colors;
    for (int i = 0; i < 1024; ++i)
        colors.push_back(0xff000000U + static_cast<unsigned>(i) * 0x1357U);
    std::string const name = FltWriter::big32(1) + FltWriter::big16(12) + FltWriter::big16(0) +
                             FltWriter::big16(7) + FltWriter::big16(0) + "red";
    add("ColorPalette", {{"color", colors}, {"names", name + std::string(1, '\0')}});
    std::string entries;
    for (int word = 0; word < 64 * 46; ++word)
        entries += word % 46 < 14 ? FltWriter::bigFloat(word % 46 == 12 ? 64 : 0.5) : std::string(4, '\0');
    add("OLDMaterialPalette", {{"entries", entries}});
    add("Material", {{"index", 2},
                     {"name", "concrete"},
                     {"ambient", {0.5, 0.5, 0.5}},
                     {"diffuse", {0.5, 0.5, 0.5}},
                     {"shininess", 64},
                     {"alpha", 0.5}});
    add("TexturePattern", {{"fileName", "wall.rgb"}, {"patternIndex", 0}});
    add("ShortTexturePattern", {{"fileName", "roof.rgb"}, {"patternIndex", 1}});
    add("NamePalette", {{"numberOfNames", 1},
                        {"entries", FltWriter::big32(10) + FltWriter::big16(1) + std::string("wall", 4)}});
    add("PutTextureMapping", {{"index", 1}, {"type", 1}});
    add("PointPutTextureMapping", {{"index", 2}, {"type", 2}, {"lastWords", {1, 2}}});
    add("SphericalTextureMapping", {{"index", 3}, {"type", 4}});
    add("RadialTextureMapping", {{"index", 4}, {"type", 5}});
    add("WarpedTextureMapping", {{"index", 5}, {"type", 6}, {"warpedFlag", 1}});
    add("TextureMappingPalette", {{"index", 6}, {"type", 3}, {"block", "of no type"}});
    for (int const type : {0, 1, 2})
        addLight(type);
    add("LineStylePalette", {{"lineStyleIndex", 1}, {"patternMask", 0x7fff}, {"lineWidth", 3}});
    add("SoundPaletteTable",
        {{"maxNumber", 4}, {"actualNumber", 1}, {"totalLength", 6}, {"entries", {1, 0, 0}}});
    add("SoundPaletteNames", {{"dataLength", 6}, {"packedData", std::string("a.wav\0", 6)}});
    add("EyePointTrackPlane");
    add("EyePointTrackPlaneAsTrackPlane");
    addRaw("LightPointAppearancePalette", 128, pointAppearance, pointPalette(5));
}

/// An entry of the light source table, with all of its reserved bytes: the writer leaves out as many as the
/// class of the record does.
void FieldDatabase::addLight(int type)
{
    constexpr int left = 30;
    std::vector<FltField> layout = layoutNamed("LightSourcePalette").fields;
    std::size_t before = 0;
    auto reserved = layout.begin();
    for (; reserved->name != "lightType"; ++reserved)
        before += static_cast<std::size_t>(sizeOf(reserved->kind) * reserved->count);
    before += static_cast<std::size_t>(sizeOf(reserved->kind));
    layout.insert(reserved + 1, {"", K::bytes, left});
    std::string body = FltWriter(revision)
                           .add("LightSourcePalette", {{"paletteIndex", type},
                                                       {"lightType", type},
                                                       {"lightSourceName", "lamp"},
                                                       {"diffuseRed", 0.5},
                                                       {"spotCutoffAngle", 30},
                                                       {"constantAttenuationCoefficient", 1}})
                           .lastRecord()
                           .substr(4);
    body.insert(before, left, '\0');
    addRaw("LightSourcePalette", 102, layout, body);
}

void FieldDatabase::vertices()
{
    flt.vertexPalette();
    note("VertexPalette", layoutNamed("VertexPalette").fields);
    int z = 0;
    auto const corners = [&](std::string const& form, unsigned flags) {
        Offsets offsets;
        ++z;
        for (auto const& [x, y] : {std::pair(0, 0), {4, 0}, {4, 4}, {0, 4}}) {
            Fields fields = {
                {"flags", flags}, {"packedColor", {255, 10, 20, 30}}, {"vertexColorIndex", 300 + z}};
            if (form.find("Normal") != std::string::npos)
                fields.push_back({"vertexNormal", {0.6, 0, 0.8}});
            offsets.push_back(flt.vertex(form, x, y, z, fields));
            if (offsets.size() == 1)
                note(form, layoutNamed(form).fields);
        }
        return offsets;
    };
    colored = corners("VertexColor", 0x1000);
    normal = corners("VertexColorNormal", 0x1000);
    textured = corners("VertexColorUv", 0x1000);
    whole = corners("VertexColorNormalUv", 0x1000);
    indexed = corners("VertexColor", 0);
    for (char const* const form : {"VertexColorNormal", "VertexColorUv", "VertexColorNormalUv"})
        for (double const offset : corners(form, 0))
            indexed.push_back(offset);
}

void FieldDatabase::face(Offsets const& corners, Fields const& fields, bool isMorph)
{
    add("Face",
        joined(
            {{"idField", "face"}, {"lightMode", 3}, {"flags", packed}, {"packedColor", {255, 100, 150, 200}}},
            fields));
    flt.push();
    Offsets offsets = corners;
    if (isMorph)
        offsets = {corners[0], colored[0], corners[1], colored[1], corners[2], colored[2]};
    add(isMorph ? "MorphVertexList" : "VertexList", {{"offsets", offsets}});
    flt.pop();
}

/// An Object that is only there to be seen.
void FieldDatabase::object(Offsets const& corners)
{
    flt.add("Object", {{"idASCII", "object"}}).push();
    flt.face(corners, {{"lightMode", 3}, {"flags", packed}, {"packedColor", {255, 100, 150, 200}}}).pop();
}

/// Groups with transformations, each with something in it.
void FieldDatabase::groups()
{
    std::vector<double> const moved = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 3, 4, 5, 1};
    auto const inGroup = [&](std::vector<std::pair<char const*, Fields>> const& records) {
        add("Group", {{"idASCII", "group"}});
        for (auto const& [record, fields] : records)
            add(record, fields);
        flt.push();
        object(normal);
        flt.pop();
    };
    inGroup({{"LongID", {{"idASCII", "a long name"}}},
             {"Comment", {{"textDescription", "a comment"}}},
             {"Matrix", {{"matrix", moved}}},
             {"Vector", {}},
             {"OldBoundingBox", {}},
             {"BoundingBox", {{"XcoordinateHighestCorner", 9}}},
             {"BoundingVolumeSphere", {{"radius", 9}}},
             {"BoundingVolumeCylinder", {}},
             {"BoundingVolumeCenter", {}},
             {"BoundingVolumeOrientation", {}}});
    inGroup({{"GeneralMatrix", {{"matrix", moved}}}});
    inGroup({{"Translate", {{"deltaX", 1}}}});
    inGroup({{"ScaleNonUniform", {{"XScaleFactor", 2}, {"YScaleFactor", 3}, {"ZScaleFactor", 4}}}});
    inGroup(
        {{"RotateAboutEdge", {{"XCenter2", 1}, {"YCenter2", 2}, {"ZCenter2", 3}, {"angleToRotate", 40}}}});
    inGroup(
        {{"RotateAboutPoint",
          {{"IAxisOfRotation", 1}, {"JAxisOfRotation", 2}, {"KAxisOfRotation", 3}, {"angleToRotate", 40}}}});
    inGroup({{"PutTransform",
              {{"XFromAlign", 1},
               {"YFromAlign", 0.5},
               {"XFromTrack", -0.5},
               {"YFromTrack", 1},
               {"ZFromTrack", 0.3},
               {"XToOrigin", 3},
               {"YToAlign", 1},
               {"ZToTrack", 2}}}});
    inGroup({{"Translate", {{"deltaX", 9}}}, {"Replicate", {{"numberOfReplications", 2}}}});
    inGroup({{"PushExtension", {}},
             {"ExtensionAttribute", {{"extensionData", "of a site"}}},
             {"PopExtension", {}}});
}

/// Groups and Objects in one plane, and a flip-book.
void FieldDatabase::groupsInPlace()
{
    for (int i = 0; i < 2; ++i) {
        add("Group", {{"idASCII", "plane"}});
        flt.push();
        object(colored);
        for (int priority = 0; priority < 2; ++priority) {
            add("Object", {{"idASCII", "part"}});
            flt.push().face(priority == 0 ? colored : normal, {{"lightMode", 3}}).pop();
        }
        flt.pop();
    }
    std::string const group =
        FltWriter(revision).add("Group", {{"flags", 0x40000000}}).lastRecord().substr(4);
    addRaw("AnimatedGroup", 2, behind(static_cast<int>(group.size()), loops),
           group + FltWriter::big32(1) + FltWriter::bigFloat(2) + FltWriter::bigFloat(1));
    flt.push();
    object(colored);
    object(normal);
    object(textured);
    flt.pop();
}

void FieldDatabase::faces()
{
    add("Object", {{"idASCII", "faces"}});
    flt.push();
    face(colored, {{"lightMode", 0}});
    face(colored, {{"lightMode", 0}});
    face(normal, {{"lightMode", 2}, {"materialIndex", 2}});
    face(normal, {{"lightMode", 2}, {"materialIndex", 3}});
    face(Offsets(indexed.begin(), indexed.begin() + 4),
         {{"flags", 0}, {"lightMode", 0}, {"primaryColorIndex", 300}});
    for (int i = 0; i < 4; ++i)
        face(Offsets(indexed.begin() + 4 * i, indexed.begin() + 4 * i + 4),
             {{"lightMode", 3}, {"texturePatternIndex", 0}});
    face(colored, {{"drawType", 4}, {"alternatePackedColor", {255, 1, 2, 3}}});
    face(colored, {{"drawType", 4}, {"flags", 0}, {"alternateColorIndex", 200}});
    face(colored, {{"drawType", 3}, {"lineStyleIndex", 1}});
    face(textured, {{"texturePatternIndex", 0}});
    face(whole, {{"texturePatternIndex", 1}, {"textureWhite", 1}, {"templateBillboard", 2}});
    face(whole, {});
    face(whole, {}, true);
    add("Face", {{"texturePatternIndex", 0}, {"lightMode", 1}});
    add("Multitexture", {{"attributeMask", 0x80000000}, {"layers", {1, 0, 0, 0}}});
    flt.push();
    add("VertexList", {{"offsets", textured}});
    add("UVList", {{"attributeMask", 0x80000000}, {"values", {0.25, 0.5}}});
    flt.pop();
    add("PushSubface");
    face(textured, {});
    add("PopSubface");
    flt.pop();
}

void FieldDatabase::oldFaces()
{
    add("Object", {{"idASCII", "old"}});
    flt.push();
    for (char const* const form :
         {"OldVertex", "OldVertexTextured", "OldVertexColor", "OldVertexColorTextured",
          "OldVertexColorNormal", "OldVertexColorNormalTextured"}) {
        add("Face", {{"texturePatternIndex", 0}, {"lightMode", 3}});
        flt.push();
        for (auto const& [x, y] : {std::pair(0, 0), {8, 0}, {0, 8}})
            add(form, {{"Xcoordinate", x}, {"Ycoordinate", y}});
        flt.pop();
    }
    flt.pop();
}

void FieldDatabase::meshes()
{
    add("Object", {{"idASCII", "meshes"}});
    flt.push();
    FltLayout const& ofFace = layoutNamed("Face");
    std::vector<FltField> ofMesh = {ofFace.fields.front(), {"", K::i32}};
    ofMesh.insert(ofMesh.end(), ofFace.fields.begin() + 1, ofFace.fields.end());
    for (int i = 0; i < 2; ++i) {
        std::string const body = FltWriter(revision)
                                     .add("Face", {{"flags", i == 0 ? packed : 0},
                                                   {"lightMode", 2 * i},
                                                   {"drawType", 4},
                                                   {"texturePatternIndex", i - 1}})
                                     .lastRecord()
                                     .substr(4);
        addRaw("Mesh", Mesh::meshOpcode, ofMesh, body.substr(0, 8) + std::string(4, '\0') + body.substr(8));
        addRaw("LocalVertexPool", Mesh::poolOpcode, pool,
               Mesh::pool({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}}));
        flt.push();
        addRaw("MeshPrimitive", Mesh::primitiveOpcode, primitive,
               Mesh::primitive(Mesh::triangleStrip, 1, {0, 1, 2, 3}));
        flt.pop();
    }
    flt.pop();
}

void FieldDatabase::nodes()
{
    for (auto const& [nearest, farthest] : {std::pair(0, 100), {100, 200}}) {
        add("LOD", {{"idASCII", "lod"}, {"switchOutDistance", nearest}, {"switchInDistance", farthest}});
        flt.push();
        object(colored);
        flt.pop();
    }
    std::string const level = FltWriter(revision).add("LOD").lastRecord().substr(4);
    addRaw("LongLOD", 73, behind(static_cast<int>(level.size()), {{"significantSize", K::f64}}),
           level + FltWriter::bigDouble(3));
    add("OLDLOD", {{"idASCII", "oldlod"}, {"switchInDistance", 400}});
    flt.push();
    object(colored);
    flt.pop();
    add("DOF", {{"idASCII", "dof"},
                {"XPointOnXAxisOfDOFLocalCoordinateSystem", 1},
                {"YPointOnXAxisOfDOFLocalCoordinateSystem", 0.5},
                {"XPointInXYPlaneOfDOFLocalCoordinateSystem", -1},
                {"YPointInXYPlaneOfDOFLocalCoordinateSystem", 1},
                {"ZPointInXYPlaneOfDOFLocalCoordinateSystem", 2}});
    flt.push();
    object(colored);
    flt.pop();
    add("Switch",
        {{"idASCII", "switch"}, {"numberOfMasks", 2}, {"numberOf32BitWordsPerMask", 1}, {"masks", {1, 2}}});
    addRaw("IndexedString", 132, maskName, FltWriter::big32(1) + std::string("on") + std::string(2, '\0'));
    flt.push();
    object(colored);
    object(normal);
    flt.pop();
    add("InstanceDefinition", {{"instanceDefinitionNumber", 1}});
    flt.push();
    object(colored);
    flt.pop();
    add("InstanceReference", {{"instanceDefinitionNumber", 1}});
    add("ExternalReference", {{"asciiPath", "child.flt"}});
    for (int const type : {0, 1, 2})
        add("LightSource",
            {{"idASCII", "light"}, {"indexIntoLightPalette", type}, {"flags", {0x80, 0, 0, 0}}});
    add("Text", {{"idASCII", "text"}, {"XupperRightCorner", 5}, {"ZupperRightCorner", 2}, {"color", 5}});
    add("Comment", {{"textDescription", "Gate 7"}});
    for (int const lying : {0, 1}) {
        Fields place = {{"idASCII", "text"}, {"justification", 2}, {"XupperRightCorner", 5}};
        place.push_back({lying == 0 ? "ZupperRightCorner" : "YupperRightCorner", 2});
        add("Text", place);
        add("Comment", {{"textDescription", "Gate 8"}});
    }
    add("Sound", {{"idASCII", "sound"}});
    add("ClipRegion", {{"idASCII", "clip"}});
    flt.push();
    object(colored);
    flt.pop();
}

void FieldDatabase::lightPoints()
{
    add("LightPoint", {{"idASCII", "lights"}, {"actualPixelSize", 4}});
    flt.push();
    add("VertexList", {{"offsets", colored}});
    flt.pop();
    addRaw("IndexedLightPoint", 130, indexedPoints, std::string("points\0\0", 8) + FltWriter::big32(3));
    flt.push();
    add("VertexList", {{"offsets", colored}});
    flt.pop();
}
